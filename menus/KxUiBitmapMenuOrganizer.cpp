// The menu organizer: converts a frame's popups to bitmap menus while they are open, keeps the
// images per command and the recently-used sets, and saves those sets in the profile.
#include "KxUiBitmapMenuOrganizer.h"
#include "KxUiBitmapMenuPopupWnd.h"
#include <afxcmn.h>
#include <algorithm>
#include <memory>

IMPLEMENT_DYNAMIC(KxUiBitmapMenuOrganizer, CObject)

CMap<HWND, HWND, KxUiBitmapMenuOrganizer*, KxUiBitmapMenuOrganizer*> KxUiBitmapMenuOrganizer::m_allMenuOrganizers;
HHOOK KxUiBitmapMenuOrganizer::g_pfnOldMouseHookProc = nullptr;
HHOOK KxUiBitmapMenuOrganizer::g_pfnOldKeyboardHookProc = nullptr;
KxUiBitmapMenuOrganizer* KxUiBitmapMenuOrganizer::g_pHookOwner = nullptr;

namespace {

const wchar_t kDefaultCommandsSection[] = L"RecentlyUsedMenuItems";
const wchar_t kDefaultSubmenusSection[] = L"RecentlyUsedSubmenuItems";
const wchar_t kContentsEntry[] = L"RUContents";
const wchar_t kSizeEntry[] = L"RUItemsDataSize";
const UINT kTextBuffer = 300;

// Reads an item with every field; the text goes into sText.
bool ReadItem(HMENU hMenu, int pos, MENUITEMINFOW& mii, CString& sText)
{
    wchar_t buffer[kTextBuffer] = {};
    mii = MENUITEMINFOW{};
    mii.cbSize = sizeof(mii);
    mii.fMask = MIIM_STATE | MIIM_ID | MIIM_SUBMENU | MIIM_CHECKMARKS | MIIM_TYPE | MIIM_DATA;
    mii.dwTypeData = buffer;
    mii.cch = kTextBuffer;
    if (!::GetMenuItemInfoW(hMenu, pos, TRUE, &mii))
        return false;
    sText = (mii.fType & (MFT_SEPARATOR | MFT_BITMAP)) ? CString() : CString(buffer);
    if (mii.fType & MFT_OWNERDRAW) {
        // The text of an owner-drawn item is not given by MIIM_TYPE; ask for it alone.
        MENUITEMINFOW s{};
        s.cbSize = sizeof(s);
        s.fMask = MIIM_STRING;
        s.dwTypeData = buffer;
        s.cch = kTextBuffer;
        buffer[0] = 0;
        if (::GetMenuItemInfoW(hMenu, pos, TRUE, &s) && s.dwTypeData != nullptr)
            sText = buffer;
    }
    mii.dwTypeData = nullptr;
    mii.cch = 0;
    return true;
}

// A mask image list from a bitmap cut in images cx wide.
HIMAGELIST ListFromHBitmap(HBITMAP hBitmap, COLORREF crMask, int cx)
{
    BITMAP bm{};
    if (hBitmap == nullptr || !::GetObjectW(hBitmap, sizeof(bm), &bm) || bm.bmWidth <= 0 || bm.bmHeight <= 0)
        return nullptr;
    if (cx <= 0 || cx > bm.bmWidth)
        cx = bm.bmWidth;
    HIMAGELIST list = ImageList_Create(cx, bm.bmHeight, ILC_COLOR32 | ILC_MASK, bm.bmWidth / cx, 4);
    if (list == nullptr)
        return nullptr;
    // The list copies the bitmap; a copy is used since ImageList_AddMasked changes its input.
    HBITMAP copy = static_cast<HBITMAP>(::CopyImage(hBitmap, IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION));
    const int added = ImageList_AddMasked(list, copy != nullptr ? copy : hBitmap, crMask);
    if (copy != nullptr)
        ::DeleteObject(copy);
    if (added < 0) {
        ImageList_Destroy(list);
        return nullptr;
    }
    return list;
}

// The colour of a bitmap's top-left pixel, its transparent colour by convention.
COLORREF TopLeftColour(HBITMAP hBitmap)
{
    HDC dc = ::CreateCompatibleDC(nullptr);
    HGDIOBJ old = ::SelectObject(dc, hBitmap);
    const COLORREF c = ::GetPixel(dc, 0, 0);
    ::SelectObject(dc, old);
    ::DeleteDC(dc);
    return c;
}

}  // namespace

////////////////////////////////////////////////////////////////////////////
// Construction and attaching

KxUiBitmapMenuOrganizer::KxUiBitmapMenuOrganizer()
    : m_hook(this), m_hWndFrame(nullptr), m_pDefaultImageList(nullptr), m_bShowOnlyRecentlyUsed(FALSE),
      m_bCustomizationMode(FALSE), m_hWndCustomizeNotify(nullptr), m_bInMenuLoop(FALSE), m_bExpanding(FALSE),
      m_nActivePopupMenuCount(0), m_hLastPopup(nullptr)
{
}

KxUiBitmapMenuOrganizer::~KxUiBitmapMenuOrganizer()
{
    DetachFrameWnd();
    Empty(TRUE);
    // Menus converted by the application and never restored: their hidden items' records.
    POSITION pos = m_mapMenuToSavedItems.GetStartPosition();
    while (pos != nullptr) {
        KxUiBitmapMenu* menu;
        KxUiArrSavedMenuItem* saved;
        m_mapMenuToSavedItems.GetNextAssoc(pos, menu, saved);
        delete saved;
    }
    m_mapMenuToSavedItems.RemoveAll();
    if (g_pHookOwner == this)
        RemoveMenuHooks();
}

BOOL KxUiBitmapMenuOrganizer::AttachFrameWnd(CFrameWnd* pFrameWnd)
{
    HWND hWnd = pFrameWnd != nullptr ? pFrameWnd->GetSafeHwnd() : nullptr;
    if (hWnd == nullptr || !::IsWindow(hWnd) || m_hWndFrame != nullptr)
        return FALSE;
    KxUiBitmapMenuOrganizer* other = nullptr;
    if (m_allMenuOrganizers.Lookup(hWnd, other))
        return FALSE;
    if (!kxUiWndProcMgr().attach(hWnd, &m_hook))
        return FALSE;
    m_hWndFrame = hWnd;
    m_allMenuOrganizers.SetAt(hWnd, this);
    return TRUE;
}

CFrameWnd* KxUiBitmapMenuOrganizer::DetachFrameWnd()
{
    if (m_hWndFrame == nullptr)
        return nullptr;
    HWND hWnd = m_hWndFrame;
    CFrameWnd* frame = GetFrameWnd();
    RestoreAllMenus();
    if (g_pHookOwner == this)
        RemoveMenuHooks();
    m_allMenuOrganizers.RemoveKey(hWnd);
    m_hWndFrame = nullptr;
    if (::IsWindow(hWnd))
        kxUiWndProcMgr().sendDetachMessage(hWnd, &m_hook);
    m_bInMenuLoop = FALSE;
    m_nActivePopupMenuCount = 0;
    return frame;
}

CFrameWnd* KxUiBitmapMenuOrganizer::GetFrameWnd() const
{
    if (m_hWndFrame == nullptr)
        return nullptr;
    return DYNAMIC_DOWNCAST(CFrameWnd, CWnd::FromHandlePermanent(m_hWndFrame));
}

KxUiBitmapMenuOrganizer* PASCAL KxUiBitmapMenuOrganizer::FindOrganizer(HWND hWndFrame)
{
    KxUiBitmapMenuOrganizer* organizer = nullptr;
    return hWndFrame != nullptr && m_allMenuOrganizers.Lookup(hWndFrame, organizer) ? organizer : nullptr;
}

void KxUiBitmapMenuOrganizer::Empty(BOOL bRestoreMenus)
{
    if (bRestoreMenus)
        RestoreAllMenus();
    POSITION pos = m_mapImageInfo.GetStartPosition();
    while (pos != nullptr) {
        UINT id;
        KxUiImageInfo* info;
        m_mapImageInfo.GetNextAssoc(pos, id, info);
        delete info;
    }
    m_mapImageInfo.RemoveAll();
    pos = m_mapHotImageInfo.GetStartPosition();
    while (pos != nullptr) {
        UINT id;
        KxUiImageInfo* info;
        m_mapHotImageInfo.GetNextAssoc(pos, id, info);
        delete info;
    }
    m_mapHotImageInfo.RemoveAll();
    m_mapResourceLists.RemoveAll();
    m_arrOwnedLists.RemoveAll();
    m_pDefaultImageList = nullptr;
}

////////////////////////////////////////////////////////////////////////////
// Images

CImageList* KxUiBitmapMenuOrganizer::GetDefaultImageList()
{
    if (m_pDefaultImageList != nullptr)
        return m_pDefaultImageList;
    // One image: the system's check mark, black on a transparent ground, 16 pixels square.
    const int size = 16;
    auto list = std::make_unique<CImageList>();
    if (!list->Create(size, size, ILC_COLOR32 | ILC_MASK, 1, 1))
        return nullptr;
    HDC screen = ::GetDC(nullptr);
    HDC dc = ::CreateCompatibleDC(screen);
    HBITMAP bmp = ::CreateCompatibleBitmap(screen, size, size);
    ::ReleaseDC(nullptr, screen);
    HGDIOBJ old = ::SelectObject(dc, bmp);
    RECT all = {0, 0, size, size};
    ::FillRect(dc, &all, static_cast<HBRUSH>(::GetStockObject(WHITE_BRUSH)));
    const int check = std::min(size, ::GetSystemMetrics(SM_CXMENUCHECK));
    RECT mark = {(size - check) / 2, (size - check) / 2, (size - check) / 2 + check, (size - check) / 2 + check};
    ::DrawFrameControl(dc, &mark, DFC_MENU, DFCS_MENUCHECK);
    ::SelectObject(dc, old);
    ::DeleteDC(dc);
    ImageList_AddMasked(list->m_hImageList, bmp, RGB(255, 255, 255));
    ::DeleteObject(bmp);
    m_pDefaultImageList = list.get();
    m_arrOwnedLists.Add(list.release());
    return m_pDefaultImageList;
}

KxUiImageInfo* KxUiBitmapMenuOrganizer::GetMenuImage(UINT nCommandID) const
{
    KxUiImageInfo* info = nullptr;
    return m_mapImageInfo.Lookup(nCommandID, info) ? info : nullptr;
}

KxUiImageInfo* KxUiBitmapMenuOrganizer::ImageInfoFor(UINT nCommandID)
{
    KxUiImageInfo* info = nullptr;
    if (m_mapImageInfo.Lookup(nCommandID, info))
        return info;
    info = new KxUiImageInfo(GetDefaultImageList(), 0, TRUE, -1);
    m_mapImageInfo.SetAt(nCommandID, info);
    return info;
}

CString PASCAL KxUiBitmapMenuOrganizer::GetUniqueResourceString(UINT nResourceID, BOOL bHot)
{
    CString key;
    key.Format(L"\x7F%u", nResourceID);
    key += static_cast<wchar_t>(bHot ? 0x7F : 0xFF80);
    return key;
}

CString PASCAL KxUiBitmapMenuOrganizer::GetUniqueResourceString(LPCTSTR lpszResource, BOOL bHot)
{
    if (IS_INTRESOURCE(lpszResource))
        return GetUniqueResourceString(static_cast<UINT>(LOWORD(reinterpret_cast<UINT_PTR>(lpszResource))), bHot);
    CString key(lpszResource);
    key += static_cast<wchar_t>(bHot ? 0x7F : 0xFF80);
    return key;
}

CImageList* KxUiBitmapMenuOrganizer::ListFromBitmap(HBITMAP hBitmap, COLORREF crMask, int cx)
{
    HIMAGELIST h = ListFromHBitmap(hBitmap, crMask, cx);
    if (h == nullptr)
        return nullptr;
    auto list = std::make_unique<CImageList>();
    list->Attach(h);
    m_arrOwnedLists.Add(list.get());
    return list.release();
}

CImageList* KxUiBitmapMenuOrganizer::ListFromIcon(HICON hIcon, int cx, int cy)
{
    if (hIcon == nullptr)
        return nullptr;
    if (cx <= 0)
        cx = ::GetSystemMetrics(SM_CXSMICON);
    if (cy <= 0)
        cy = ::GetSystemMetrics(SM_CYSMICON);
    auto list = std::make_unique<CImageList>();
    if (!list->Create(cx, cy, ILC_COLOR32 | ILC_MASK, 1, 1) || list->Add(hIcon) < 0)
        return nullptr;
    m_arrOwnedLists.Add(list.get());
    return list.release();
}

CImageList* KxUiBitmapMenuOrganizer::ListFromResource(LPCTSTR lpszResource, BOOL bHot, BOOL bWhole, BOOL bIcon)
{
    if (lpszResource == nullptr)
        return nullptr;
    CString key = GetUniqueResourceString(lpszResource, bHot);
    // Whole bitmaps, strips and icons of one resource are different lists.
    key += bIcon ? L"i" : (bWhole ? L"w" : L"s");
    CImageList* list = nullptr;
    if (m_mapResourceLists.Lookup(key, list))
        return list;
    if (bIcon) {
        HINSTANCE inst = AfxFindResourceHandle(lpszResource, RT_GROUP_ICON);
        HICON icon = static_cast<HICON>(::LoadImageW(inst, lpszResource, IMAGE_ICON, ::GetSystemMetrics(SM_CXSMICON),
                                                     ::GetSystemMetrics(SM_CYSMICON), 0));
        if (icon == nullptr)
            return nullptr;
        list = ListFromIcon(icon, 0, 0);
        ::DestroyIcon(icon);
    } else {
        HINSTANCE inst = AfxFindResourceHandle(lpszResource, RT_BITMAP);
        HBITMAP bmp = static_cast<HBITMAP>(::LoadImageW(inst, lpszResource, IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION));
        if (bmp == nullptr)
            return nullptr;
        BITMAP bm{};
        ::GetObjectW(bmp, sizeof(bm), &bm);
        list = ListFromBitmap(bmp, TopLeftColour(bmp), bWhole ? bm.bmWidth : bm.bmHeight);
        ::DeleteObject(bmp);
    }
    if (list != nullptr)
        m_mapResourceLists.SetAt(key, list);
    return list;
}

BOOL KxUiBitmapMenuOrganizer::StoreImage(UINT nCommandID, CImageList* pList, int nIndex, int nHotIndex, BOOL bHot)
{
    if (pList == nullptr || nIndex < 0 || nIndex >= pList->GetImageCount())
        return FALSE;
    if (nHotIndex >= pList->GetImageCount())
        nHotIndex = -1;
    auto& map = bHot ? m_mapHotImageInfo : m_mapImageInfo;
    KxUiImageInfo* info = nullptr;
    if (map.Lookup(nCommandID, info))
        *info = KxUiImageInfo(pList, nIndex, FALSE, nHotIndex);
    else
        map.SetAt(nCommandID, new KxUiImageInfo(pList, nIndex, FALSE, nHotIndex));

    // A hot image from another list is copied into the normal image's list, where the
    // drawing code looks for it.
    KxUiImageInfo* normal = nullptr;
    KxUiImageInfo* hot = nullptr;
    if (m_mapImageInfo.Lookup(nCommandID, normal) && m_mapHotImageInfo.Lookup(nCommandID, hot) &&
        !normal->IsDefaultImgList() && normal->GetImageList() != nullptr && hot->GetImageList() != nullptr) {
        if (hot->GetImageList() == normal->GetImageList()) {
            normal->SetHotIndex(hot->GetIndex());
        } else {
            HICON icon = ImageList_GetIcon(hot->GetImageList()->m_hImageList, hot->GetIndex(), ILD_NORMAL);
            if (icon != nullptr) {
                const int added = ImageList_ReplaceIcon(normal->GetImageList()->m_hImageList, -1, icon);
                ::DestroyIcon(icon);
                if (added >= 0)
                    normal->SetHotIndex(added);
            }
        }
    }
    return TRUE;
}

BOOL KxUiBitmapMenuOrganizer::SetMenuImage(UINT nCommandID, LPCTSTR lpszResource, int nIndex, int nHotIndex)
{
    return StoreImage(nCommandID, ListFromResource(lpszResource, FALSE, FALSE, FALSE), nIndex, nHotIndex, FALSE);
}

BOOL KxUiBitmapMenuOrganizer::SetMenuImage(UINT nCommandID, HICON hIcon, int cx, int cy)
{
    return StoreImage(nCommandID, ListFromIcon(hIcon, cx, cy), 0, -1, FALSE);
}

BOOL KxUiBitmapMenuOrganizer::SetMenuImage(UINT nCommandID, CBitmap* pBitmap, COLORREF crMask, int nIndex,
                                           int nHotIndex)
{
    HBITMAP h = pBitmap != nullptr ? static_cast<HBITMAP>(pBitmap->GetSafeHandle()) : nullptr;
    BITMAP bm{};
    if (h == nullptr || !::GetObjectW(h, sizeof(bm), &bm))
        return FALSE;
    return StoreImage(nCommandID, ListFromBitmap(h, crMask, bm.bmHeight), nIndex, nHotIndex, FALSE);
}

BOOL KxUiBitmapMenuOrganizer::SetMenuHotImage(UINT nCommandID, LPCTSTR lpszResource, int nIndex)
{
    return StoreImage(nCommandID, ListFromResource(lpszResource, TRUE, FALSE, FALSE), nIndex, -1, TRUE);
}

BOOL KxUiBitmapMenuOrganizer::SetMenuHotImage(UINT nCommandID, HICON hIcon, int cx, int cy)
{
    return StoreImage(nCommandID, ListFromIcon(hIcon, cx, cy), 0, -1, TRUE);
}

BOOL KxUiBitmapMenuOrganizer::SetMenuHotImage(UINT nCommandID, CBitmap* pBitmap, COLORREF crMask, int nIndex)
{
    HBITMAP h = pBitmap != nullptr ? static_cast<HBITMAP>(pBitmap->GetSafeHandle()) : nullptr;
    BITMAP bm{};
    if (h == nullptr || !::GetObjectW(h, sizeof(bm), &bm))
        return FALSE;
    return StoreImage(nCommandID, ListFromBitmap(h, crMask, bm.bmHeight), nIndex, -1, TRUE);
}

BOOL KxUiBitmapMenuOrganizer::SetMenuBitmap(UINT nCommandID, LPCTSTR lpszResource)
{
    return StoreImage(nCommandID, ListFromResource(lpszResource, FALSE, TRUE, FALSE), 0, -1, FALSE);
}

BOOL KxUiBitmapMenuOrganizer::SetMenuHotBitmap(UINT nCommandID, LPCTSTR lpszResource)
{
    return StoreImage(nCommandID, ListFromResource(lpszResource, TRUE, TRUE, FALSE), 0, -1, TRUE);
}

BOOL KxUiBitmapMenuOrganizer::SetMenuIcon(UINT nCommandID, LPCTSTR lpszResource)
{
    return StoreImage(nCommandID, ListFromResource(lpszResource, FALSE, FALSE, TRUE), 0, -1, FALSE);
}

BOOL KxUiBitmapMenuOrganizer::SetMenuHotIcon(UINT nCommandID, LPCTSTR lpszResource)
{
    return StoreImage(nCommandID, ListFromResource(lpszResource, TRUE, FALSE, TRUE), 0, -1, TRUE);
}

BOOL KxUiBitmapMenuOrganizer::AutoSetMenuImage()
{
    if (m_hWndFrame == nullptr)
        return FALSE;
    BOOL any = FALSE;
    // Every tool bar among the frame's descendants lends its buttons' images.
    struct Search {
        KxUiBitmapMenuOrganizer* self;
        BOOL* any;
    } search{this, &any};
    ::EnumChildWindows(
        m_hWndFrame,
        [](HWND hWnd, LPARAM lParam) -> BOOL {
            auto* s = reinterpret_cast<Search*>(lParam);
            wchar_t cls[64] = {};
            ::GetClassNameW(hWnd, cls, 64);
            if (lstrcmpiW(cls, TOOLBARCLASSNAMEW) != 0)
                return TRUE;
            auto source = reinterpret_cast<HIMAGELIST>(::SendMessageW(hWnd, TB_GETIMAGELIST, 0, 0));
            const int buttons = static_cast<int>(::SendMessageW(hWnd, TB_BUTTONCOUNT, 0, 0));
            if (source == nullptr || buttons <= 0)
                return TRUE;
            HIMAGELIST copy = ImageList_Duplicate(source);
            if (copy == nullptr)
                return TRUE;
            auto list = std::make_unique<CImageList>();
            list->Attach(copy);
            CImageList* kept = list.get();
            s->self->m_arrOwnedLists.Add(list.release());
            for (int i = 0; i < buttons; ++i) {
                TBBUTTON button{};
                if (!::SendMessageW(hWnd, TB_GETBUTTON, i, reinterpret_cast<LPARAM>(&button)) ||
                    (button.fsStyle & BTNS_SEP) || button.idCommand == 0)
                    continue;
                if (s->self->StoreImage(static_cast<UINT>(button.idCommand), kept, button.iBitmap, -1, FALSE))
                    *s->any = TRUE;
            }
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&search));
    return any;
}

////////////////////////////////////////////////////////////////////////////
// Recently used sets

BOOL KxUiBitmapMenuOrganizer::AddToRecentlyUsed(int nCommandID)
{
    if (nCommandID == 0 || nCommandID == -1)
        return FALSE;
    int count = 0;
    m_mapRUCommands.Lookup(nCommandID, count);
    m_mapRUCommands.SetAt(nCommandID, count + 1);
    return TRUE;
}

BOOL KxUiBitmapMenuOrganizer::AddSubmenuToRecentlyUsed(HMENU hSubmenu)
{
    if (hSubmenu == nullptr || !::IsMenu(hSubmenu))
        return FALSE;
    int count = 0;
    m_mapRUSubmenus.Lookup(hSubmenu, count);
    m_mapRUSubmenus.SetAt(hSubmenu, count + 1);
    return TRUE;
}

BOOL KxUiBitmapMenuOrganizer::ExcludeFromRecentlyUsed(int nCommandID)
{
    return m_mapRUCommands.RemoveKey(nCommandID);
}

BOOL KxUiBitmapMenuOrganizer::ExcludeSubmenuFromRecentlyUsed(HMENU hSubmenu)
{
    return m_mapRUSubmenus.RemoveKey(hSubmenu);
}

BOOL KxUiBitmapMenuOrganizer::AddToRecentlyUsed(CMenu* pMenu, int nPos)
{
    if (pMenu == nullptr || pMenu->m_hMenu == nullptr || nPos < 0 || nPos >= ::GetMenuItemCount(pMenu->m_hMenu))
        return FALSE;
    if (HMENU sub = ::GetSubMenu(pMenu->m_hMenu, nPos))
        return AddSubmenuToRecentlyUsed(sub);
    return AddToRecentlyUsed(static_cast<int>(::GetMenuItemID(pMenu->m_hMenu, nPos)));
}

BOOL KxUiBitmapMenuOrganizer::ExcludeFromRecentlyUsed(CMenu* pMenu, int nPos)
{
    if (pMenu == nullptr || pMenu->m_hMenu == nullptr || nPos < 0 || nPos >= ::GetMenuItemCount(pMenu->m_hMenu))
        return FALSE;
    if (HMENU sub = ::GetSubMenu(pMenu->m_hMenu, nPos))
        return ExcludeSubmenuFromRecentlyUsed(sub);
    return ExcludeFromRecentlyUsed(static_cast<int>(::GetMenuItemID(pMenu->m_hMenu, nPos)));
}

BOOL KxUiBitmapMenuOrganizer::IsRecentlyUsed(int nCommandID) const
{
    int count = 0;
    return m_mapRUCommands.Lookup(nCommandID, count);
}

BOOL KxUiBitmapMenuOrganizer::IsSubmenuRecentlyUsed(HMENU hSubmenu) const
{
    int count = 0;
    return hSubmenu != nullptr && m_mapRUSubmenus.Lookup(hSubmenu, count);
}

BOOL KxUiBitmapMenuOrganizer::IsRecentlyUsed(CMenu* pMenu, int nPos) const
{
    if (pMenu == nullptr || pMenu->m_hMenu == nullptr || nPos < 0 || nPos >= ::GetMenuItemCount(pMenu->m_hMenu))
        return FALSE;
    if (HMENU sub = ::GetSubMenu(pMenu->m_hMenu, nPos))
        return IsSubmenuRecentlyUsed(sub);
    const UINT id = ::GetMenuItemID(pMenu->m_hMenu, nPos);
    if (id == 0 || LOWORD(id) == ID_KXUI_SHOWALL)
        return TRUE;
    return IsRecentlyUsed(static_cast<int>(id));
}

////////////////////////////////////////////////////////////////////////////
// Conversion

KxUiBitmapMenu* KxUiBitmapMenuOrganizer::FindBitmapMenu(HMENU hMenu) const
{
    for (INT_PTR i = 0; hMenu != nullptr && i < m_arrBitmapMenus.GetSize(); ++i) {
        if (m_arrBitmapMenus[i]->m_hMenu == hMenu)
            return m_arrBitmapMenus[i];
    }
    return nullptr;
}

void KxUiBitmapMenuOrganizer::ConvertBitmapMenu(KxUiBitmapMenu* pBitmapMenu, BOOL bShowOnlyRecentlyUsed)
{
    if (pBitmapMenu == nullptr || pBitmapMenu->m_hMenu == nullptr || !::IsMenu(pBitmapMenu->m_hMenu))
        return;
    HMENU hMenu = pBitmapMenu->m_hMenu;
    if (m_hWndFrame != nullptr)
        pBitmapMenu->m_hWndOrganizerFrame = m_hWndFrame;

    // An empty recently-used set means the application has not started recording yet:
    // hiding every item would leave nothing but the expansion item.
    const bool hide = bShowOnlyRecentlyUsed && !m_bExpanding && !m_bCustomizationMode && m_bShowOnlyRecentlyUsed &&
                      !m_mapRUCommands.IsEmpty();

    KxUiArrSavedMenuItem* saved = nullptr;
    if (!m_mapMenuToSavedItems.Lookup(pBitmapMenu, saved)) {
        saved = new KxUiArrSavedMenuItem;
        m_mapMenuToSavedItems.SetAt(pBitmapMenu, saved);
    }

    pBitmapMenu->m_KeyAccessMap.RemoveAll();
    CArray<int, int> toHide;
    bool lastKeptIsSeparator = true;  // nothing kept yet counts as a separator before
    const int count = ::GetMenuItemCount(hMenu);
    int keptPos = 0;
    for (int pos = 0; pos < count; ++pos) {
        MENUITEMINFOW mii;
        CString sText;
        if (!ReadItem(hMenu, pos, mii, sText))
            continue;
        const bool separator = (mii.fType & MFT_SEPARATOR) != 0;
        const bool expansion = !separator && mii.hSubMenu == nullptr && LOWORD(mii.wID) == ID_KXUI_SHOWALL &&
                               pBitmapMenu->GetItemInfo(pos) != nullptr;
        if (expansion) {
            ++keptPos;
            continue;
        }

        if (hide) {
            bool keep;
            if (separator)
                keep = !lastKeptIsSeparator;
            else if (mii.hSubMenu != nullptr)
                keep = IsSubmenuRecentlyUsed(mii.hSubMenu) != FALSE;
            else
                keep = IsRecentlyUsed(static_cast<int>(mii.wID)) != FALSE;
            if (!keep) {
                KxUiSavedMenuItem item;
                item.nPosition = pos;
                item.mii = mii;
                item.sText = sText;
                saved->Add(item);
                toHide.Add(pos);
                continue;
            }
            lastKeptIsSeparator = separator;
        }

        // Owner-drawn with its image; an item that already carries this menu's data only
        // gets its text refreshed.
        if (KxUiItemInfo* existing = pBitmapMenu->GetItemInfo(pos)) {
            existing->SetText(sText);
        } else if (!(mii.fType & MFT_OWNERDRAW)) {
            const UINT id = mii.hSubMenu != nullptr ? static_cast<UINT>(-1) : (separator ? 0u : mii.wID);
            auto* info = new KxUiItemInfo(ImageInfoFor(id), sText);
            pBitmapMenu->AddItemInfo(info);
            pBitmapMenu->m_mapOriginal.SetAt(info, mii.dwItemData);
            MENUITEMINFOW set{};
            set.cbSize = sizeof(set);
            set.fMask = MIIM_FTYPE | MIIM_DATA;
            set.fType = mii.fType | MFT_OWNERDRAW;
            set.dwItemData = reinterpret_cast<ULONG_PTR>(info);
            ::SetMenuItemInfoW(hMenu, pos, TRUE, &set);
        }

        const int amp = sText.Find(L'&');
        if (amp >= 0 && amp + 1 < sText.GetLength() && sText[amp + 1] != L'&') {
            const TCHAR ch = static_cast<TCHAR>(
                reinterpret_cast<UINT_PTR>(::CharLowerW(reinterpret_cast<LPWSTR>(static_cast<UINT_PTR>(sText[amp + 1])))));
            pBitmapMenu->m_KeyAccessMap.SetAt(ch, keptPos);
        }
        ++keptPos;
    }

    // Hidden runs may leave a separator at the end; it goes too.
    if (hide && lastKeptIsSeparator && keptPos > 0) {
        for (int pos = count - 1; pos >= 0; --pos) {
            bool hidden = false;
            for (INT_PTR i = 0; i < toHide.GetSize() && !hidden; ++i)
                hidden = toHide[i] == pos;
            if (hidden)
                continue;
            MENUITEMINFOW mii;
            CString sText;
            if (ReadItem(hMenu, pos, mii, sText) && (mii.fType & MFT_SEPARATOR)) {
                KxUiItemInfo* info = pBitmapMenu->GetItemInfo(pos);
                KxUiSavedMenuItem item;
                item.nPosition = pos;
                item.mii = mii;
                ULONG_PTR original = 0;
                if (info != nullptr && pBitmapMenu->m_mapOriginal.Lookup(info, original)) {
                    item.mii.dwItemData = original;
                    item.mii.fType &= ~MFT_OWNERDRAW;
                }
                item.sText = sText;
                saved->Add(item);
                toHide.Add(pos);
            }
            break;
        }
    }

    // Hidden items leave from the last to the first, so positions stay valid; their
    // submenus are kept aside, not destroyed, so the application's handles stay good.
    for (int pos = count - 1; pos >= 0; --pos) {
        bool hidden = false;
        for (INT_PTR i = 0; i < toHide.GetSize() && !hidden; ++i)
            hidden = toHide[i] == pos;
        if (hidden)
            ::RemoveMenu(hMenu, pos, MF_BYPOSITION);
    }

    // The expansion item, once, at the end.
    if (!saved->IsEmpty() && pBitmapMenu->m_hMenu != nullptr) {
        bool present = false;
        const int n = ::GetMenuItemCount(hMenu);
        for (int pos = 0; pos < n && !present; ++pos)
            present = LOWORD(::GetMenuItemID(hMenu, pos)) == ID_KXUI_SHOWALL && pBitmapMenu->GetItemInfo(pos) != nullptr;
        if (!present) {
            auto* info = new KxUiItemInfo(ImageInfoFor(ID_KXUI_SHOWALL), CString());
            pBitmapMenu->AddItemInfo(info);
            ::AppendMenuW(hMenu, MF_OWNERDRAW, ID_KXUI_SHOWALL, reinterpret_cast<LPCWSTR>(info));
        }
    }
}

void KxUiBitmapMenuOrganizer::RestoreBitmapMenu(KxUiBitmapMenu* pBitmapMenu, BOOL bRestoreText)
{
    if (pBitmapMenu == nullptr)
        return;
    HMENU hMenu = pBitmapMenu->m_hMenu;
    KxUiArrSavedMenuItem* saved = nullptr;
    m_mapMenuToSavedItems.Lookup(pBitmapMenu, saved);

    if (hMenu != nullptr && ::IsMenu(hMenu)) {
        // The expansion item goes, the owner-draw state and the data go back.
        for (int pos = ::GetMenuItemCount(hMenu) - 1; pos >= 0; --pos) {
            KxUiItemInfo* info = pBitmapMenu->GetItemInfo(pos);
            if (info == nullptr)
                continue;
            ULONG_PTR original = 0;
            if (!pBitmapMenu->m_mapOriginal.Lookup(info, original)) {
                ::RemoveMenu(hMenu, pos, MF_BYPOSITION);  // the expansion item
                continue;
            }
            MENUITEMINFOW mii{};
            mii.cbSize = sizeof(mii);
            mii.fMask = MIIM_FTYPE;
            ::GetMenuItemInfoW(hMenu, pos, TRUE, &mii);
            MENUITEMINFOW set{};
            set.cbSize = sizeof(set);
            set.fMask = MIIM_FTYPE | MIIM_DATA;
            set.fType = mii.fType & ~MFT_OWNERDRAW;
            set.dwItemData = original;
            CString text = info->GetText();
            if (bRestoreText && !(mii.fType & MFT_SEPARATOR)) {
                set.fMask |= MIIM_STRING;
                set.dwTypeData = text.GetBuffer();
            }
            ::SetMenuItemInfoW(hMenu, pos, TRUE, &set);
            text.ReleaseBuffer();
        }
        // Hidden items come back at the places they had, first to last.
        for (INT_PTR i = 0; saved != nullptr && i < saved->GetSize(); ++i) {
            KxUiSavedMenuItem item = saved->GetAt(i);
            MENUITEMINFOW mii = item.mii;
            mii.fMask = MIIM_STATE | MIIM_ID | MIIM_SUBMENU | MIIM_CHECKMARKS | MIIM_TYPE | MIIM_DATA;
            if (!(mii.fType & (MFT_SEPARATOR | MFT_BITMAP | MFT_OWNERDRAW))) {
                mii.dwTypeData = item.sText.GetBuffer();
                mii.cch = item.sText.GetLength();
            }
            ::InsertMenuItemW(hMenu, static_cast<UINT>(item.nPosition), TRUE, &mii);
            item.sText.ReleaseBuffer();
        }
    } else if (saved != nullptr) {
        // The menu is gone: the submenus kept aside belong to nobody now.
        for (INT_PTR i = 0; i < saved->GetSize(); ++i) {
            if (saved->GetAt(i).mii.hSubMenu != nullptr)
                ::DestroyMenu(saved->GetAt(i).mii.hSubMenu);
        }
    }
    if (saved != nullptr) {
        delete saved;
        m_mapMenuToSavedItems.RemoveKey(pBitmapMenu);
    }
    pBitmapMenu->m_ItemInfoArray.RemoveAll();
    pBitmapMenu->m_mapOriginal.RemoveAll();
    pBitmapMenu->m_KeyAccessMap.RemoveAll();
}

void KxUiBitmapMenuOrganizer::RestoreAllMenus()
{
    // Submenus are restored before the menus that hold them (they were opened later).
    for (INT_PTR i = m_arrBitmapMenus.GetSize() - 1; i >= 0; --i) {
        KxUiBitmapMenu* menu = m_arrBitmapMenus[i];
        RestoreBitmapMenu(menu, TRUE);
        if (menu->m_pPopupWnd != nullptr && ::IsWindow(menu->m_pPopupWnd->GetSafeHwnd()))
            continue;  // shown by a popup window, which owns its own copy
        m_arrBitmapMenus.RemoveAt(i);
    }
    m_hLastPopup = nullptr;
}

////////////////////////////////////////////////////////////////////////////
// Menu messages

void KxUiBitmapMenuOrganizer::UpdateActivePopupMenuCount(int nDelta)
{
    m_nActivePopupMenuCount = std::max(0, m_nActivePopupMenuCount + nDelta);
}

void KxUiBitmapMenuOrganizer::OnInitMenuPopup(CMenu* pPopupMenu, UINT /*nIndex*/, BOOL bSysMenu)
{
    if (bSysMenu || pPopupMenu == nullptr || pPopupMenu->m_hMenu == nullptr)
        return;
    HMENU hMenu = pPopupMenu->m_hMenu;
    UpdateActivePopupMenuCount(1);
    KxUiBitmapMenu* menu = FindBitmapMenu(hMenu);
    if (menu == nullptr) {
        menu = new KxUiBitmapMenu;
        if (CMenu::FromHandlePermanent(hMenu) == nullptr)
            menu->Attach(hMenu);
        else
            menu->m_hMenu = hMenu;  // someone else's object holds the handle; we only borrow it
        menu->m_bAttachedOnly = TRUE;
        m_arrBitmapMenus.Add(menu);
    }
    ConvertBitmapMenu(menu, TRUE);
    menu->CalcExtents();
    m_hLastPopup = hMenu;
    if (m_bShowOnlyRecentlyUsed)
        InstallMenuHooks();
}

LRESULT KxUiBitmapMenuOrganizer::OnMenuChar(UINT nChar, UINT /*nFlags*/, CMenu* pMenu)
{
    KxUiBitmapMenu* menu = pMenu != nullptr ? FindBitmapMenu(pMenu->m_hMenu) : nullptr;
    if (menu == nullptr)
        return 0;
    const int pos = menu->FindMnemonic(static_cast<TCHAR>(nChar));
    return pos >= 0 ? MAKELRESULT(pos, MNC_EXECUTE) : 0;
}

BOOL KxUiBitmapMenuOrganizer::OnMeasureItem(int /*nIDCtl*/, LPMEASUREITEMSTRUCT lpMIS)
{
    if (lpMIS == nullptr || lpMIS->CtlType != ODT_MENU)
        return FALSE;
    auto* info = reinterpret_cast<KxUiItemInfo*>(lpMIS->itemData);
    for (INT_PTR i = 0; i < m_arrBitmapMenus.GetSize(); ++i) {
        KxUiBitmapMenu* menu = m_arrBitmapMenus[i];
        for (INT_PTR j = 0; j < menu->m_ItemInfoArray.GetSize(); ++j) {
            if (menu->m_ItemInfoArray[j] == info) {
                menu->MeasureItem(lpMIS);
                return TRUE;
            }
        }
    }
    return FALSE;
}

BOOL KxUiBitmapMenuOrganizer::IsTopLevelPopupMenu(HMENU hMenu) const
{
    HMENU bar = m_hWndFrame != nullptr ? ::GetMenu(m_hWndFrame) : nullptr;
    if (bar == nullptr || hMenu == nullptr)
        return FALSE;
    const int n = ::GetMenuItemCount(bar);
    for (int i = 0; i < n; ++i) {
        if (::GetSubMenu(bar, i) == hMenu)
            return TRUE;
    }
    return FALSE;
}

BOOL PASCAL KxUiBitmapMenuOrganizer::FindPopupMenuPath(HMENU hSubmenu, HMENU hRootMenu, CArray<int, int>& path)
{
    if (hSubmenu == nullptr || hRootMenu == nullptr)
        return FALSE;
    const int n = ::GetMenuItemCount(hRootMenu);
    for (int i = 0; i < n; ++i) {
        HMENU sub = ::GetSubMenu(hRootMenu, i);
        if (sub == nullptr)
            continue;
        path.Add(i);
        if (sub == hSubmenu || FindPopupMenuPath(hSubmenu, sub, path))
            return TRUE;
        path.RemoveAt(path.GetSize() - 1);
    }
    return FALSE;
}

CMenu* PASCAL KxUiBitmapMenuOrganizer::OwnFindPopupMenuFromID(CMenu* pMenu, UINT nID)
{
    if (pMenu == nullptr || pMenu->m_hMenu == nullptr)
        return nullptr;
    const int n = ::GetMenuItemCount(pMenu->m_hMenu);
    for (int i = 0; i < n; ++i) {
        if (HMENU sub = ::GetSubMenu(pMenu->m_hMenu, i)) {
            if (CMenu* found = OwnFindPopupMenuFromID(CMenu::FromHandle(sub), nID))
                return found;
        } else if (::GetMenuItemID(pMenu->m_hMenu, i) == nID) {
            return pMenu;
        }
    }
    return nullptr;
}

HMENU PASCAL KxUiBitmapMenuOrganizer::CopyPopupMenu(HMENU hMenu)
{
    if (hMenu == nullptr || !::IsMenu(hMenu))
        return nullptr;
    HMENU copy = ::CreatePopupMenu();
    const int n = ::GetMenuItemCount(hMenu);
    for (int i = 0; i < n; ++i) {
        MENUITEMINFOW mii;
        CString sText;
        if (!ReadItem(hMenu, i, mii, sText))
            continue;
        if (mii.hSubMenu != nullptr)
            mii.hSubMenu = CopyPopupMenu(mii.hSubMenu);
        if (!(mii.fType & (MFT_SEPARATOR | MFT_BITMAP | MFT_OWNERDRAW))) {
            mii.dwTypeData = sText.GetBuffer();
            mii.cch = sText.GetLength();
        }
        ::InsertMenuItemW(copy, static_cast<UINT>(i), TRUE, &mii);
        sText.ReleaseBuffer();
    }
    return copy;
}

void KxUiBitmapMenuOrganizer::CollectSubmenusLeadingTo(UINT nID)
{
    // Every submenu on the way from the frame's menu to the command joins the set.
    HMENU bar = m_hWndFrame != nullptr ? ::GetMenu(m_hWndFrame) : nullptr;
    if (bar == nullptr)
        return;
    CMenu* holder = OwnFindPopupMenuFromID(CMenu::FromHandle(bar), nID);
    if (holder == nullptr || holder->m_hMenu == bar)
        return;
    CArray<int, int> path;
    if (!FindPopupMenuPath(holder->m_hMenu, bar, path))
        return;
    HMENU level = bar;
    for (INT_PTR i = 0; i < path.GetSize() && level != nullptr; ++i) {
        level = ::GetSubMenu(level, path[i]);
        // The top-level popups are always shown; only deeper submenus are hidden.
        if (i > 0 && level != nullptr && !IsSubmenuRecentlyUsed(level))
            AddSubmenuToRecentlyUsed(level);
    }
}

void KxUiBitmapMenuOrganizer::OnCommandChosen(UINT nID)
{
    if (nID == 0)
        return;
    if (m_bShowOnlyRecentlyUsed && !m_mapRUCommands.IsEmpty()) {
        AddToRecentlyUsed(static_cast<int>(nID));
        CollectSubmenusLeadingTo(nID);
    }
    for (INT_PTR i = 0; i < m_arrBitmapMenus.GetSize(); ++i) {
        KxUiBitmapMenuPopupWnd* popup = m_arrBitmapMenus[i]->m_pPopupWnd;
        if (popup != nullptr && ::IsWindow(popup->GetSafeHwnd()))
            popup->SendMessage(KXUI_WM_COMMANDCHOSEN, nID);
    }
}

void KxUiBitmapMenuOrganizer::OnExpansionCommand()
{
    // The chosen expansion item closed the menu; it is opened again with every item.
    m_bExpanding = TRUE;
    ::SendMessageW(m_hWndFrame, WM_KEYDOWN, VK_ESCAPE, 0x10001);
    RestoreAllMenus();
    ::SendMessageW(m_hWndFrame, WM_KEYDOWN, VK_RETURN, 0x1C0001);
}

int KxUiBitmapMenuOrganizer::OnFrameMessageBefore(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result)
{
    switch (message) {
    case WM_MEASUREITEM:
        if (OnMeasureItem(static_cast<int>(wParam), reinterpret_cast<LPMEASUREITEMSTRUCT>(lParam))) {
            result = TRUE;
            return 1;
        }
        break;
    case WM_DRAWITEM: {
        // Drawn here only when the handle's permanent object is someone else's, so the
        // frame's routing would not reach the bitmap menu.
        auto* dis = reinterpret_cast<LPDRAWITEMSTRUCT>(lParam);
        if (dis != nullptr && dis->CtlType == ODT_MENU) {
            HMENU h = reinterpret_cast<HMENU>(dis->hwndItem);
            KxUiBitmapMenu* menu = FindBitmapMenu(h);
            if (menu != nullptr && CMenu::FromHandlePermanent(h) != menu) {
                menu->DrawItem(dis);
                result = TRUE;
                return 1;
            }
        }
        break;
    }
    case WM_NCDESTROY:
        // The frame goes: the menus are put back while their handles still exist.
        RestoreAllMenus();
        if (g_pHookOwner == this)
            RemoveMenuHooks();
        m_allMenuOrganizers.RemoveKey(m_hWndFrame);
        m_hWndFrame = nullptr;
        break;
    default:
        break;
    }
    return 0;
}

void KxUiBitmapMenuOrganizer::OnFrameMessageAfter(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result)
{
    if (m_hWndFrame == nullptr || !::IsWindow(m_hWndFrame))
        return;
    switch (message) {
    case WM_INITMENUPOPUP:
        if (!HIWORD(lParam))
            OnInitMenuPopup(CMenu::FromHandle(reinterpret_cast<HMENU>(wParam)), LOWORD(lParam), FALSE);
        break;
    case WM_MENUCHAR:
        if (HIWORD(result) == MNC_IGNORE) {
            const LRESULT ours = OnMenuChar(LOWORD(wParam), HIWORD(wParam),
                                            CMenu::FromHandle(reinterpret_cast<HMENU>(lParam)));
            if (ours != 0)
                result = ours;
        }
        break;
    case WM_ENTERMENULOOP:
        if (wParam == 0)
            m_bInMenuLoop = TRUE;
        break;
    case WM_EXITMENULOOP:
        if (m_bExpanding && wParam == 0) {
            m_bExpanding = FALSE;
        }
        RestoreAllMenus();
        if (wParam == 0 || m_nActivePopupMenuCount > 0) {
            m_bInMenuLoop = FALSE;
            m_nActivePopupMenuCount = 0;
            if (g_pHookOwner == this)
                RemoveMenuHooks();
        }
        break;
    case WM_COMMAND:
        if (HIWORD(wParam) == 0) {
            const UINT id = LOWORD(wParam);
            if (id == ID_KXUI_SHOWALL)
                OnExpansionCommand();
            else if (id > 0)
                OnCommandChosen(id);
        }
        break;
    case KXUI_WM_SAVERUSUBMENUS:
        result = SaveRUSubmenusState(::GetMenu(m_hWndFrame), reinterpret_cast<LPCTSTR>(lParam));
        break;
    case KXUI_WM_LOADRUSUBMENUS:
        result = LoadRUSubmenusState(::GetMenu(m_hWndFrame), reinterpret_cast<LPCTSTR>(lParam));
        break;
    default:
        break;
    }
}

int KxUiBitmapMenuOrganizer::FrameHook::windowProc(HWND, UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result)
{
    try {
        return m_pOwner->OnFrameMessageBefore(message, wParam, lParam, result);
    } catch (CException* e) {
        e->Delete();
    } catch (...) {
    }
    return 0;
}

void KxUiBitmapMenuOrganizer::FrameHook::windowProcCallBack(HWND, UINT message, WPARAM wParam, LPARAM lParam,
                                                           LRESULT& result)
{
    try {
        m_pOwner->OnFrameMessageAfter(message, wParam, lParam, result);
    } catch (CException* e) {
        e->Delete();
    } catch (...) {
    }
}

////////////////////////////////////////////////////////////////////////////
// Thread hooks while a menu with hidden items is open

void KxUiBitmapMenuOrganizer::InstallMenuHooks()
{
    g_pHookOwner = this;
    if (g_pfnOldMouseHookProc == nullptr)
        g_pfnOldMouseHookProc = ::SetWindowsHookExW(WH_MOUSE, MenuMouseHookProc, nullptr, ::GetCurrentThreadId());
    if (g_pfnOldKeyboardHookProc == nullptr)
        g_pfnOldKeyboardHookProc =
            ::SetWindowsHookExW(WH_KEYBOARD, MenuKeyboardHookProc, nullptr, ::GetCurrentThreadId());
}

BOOL PASCAL KxUiBitmapMenuOrganizer::AreMenuHooksInstalled()
{
    return g_pfnOldMouseHookProc != nullptr || g_pfnOldKeyboardHookProc != nullptr;
}

void KxUiBitmapMenuOrganizer::RemoveMenuHooks()
{
    if (g_pfnOldMouseHookProc != nullptr)
        ::UnhookWindowsHookEx(g_pfnOldMouseHookProc);
    if (g_pfnOldKeyboardHookProc != nullptr)
        ::UnhookWindowsHookEx(g_pfnOldKeyboardHookProc);
    g_pfnOldMouseHookProc = nullptr;
    g_pfnOldKeyboardHookProc = nullptr;
    g_pHookOwner = nullptr;
}

LRESULT CALLBACK KxUiBitmapMenuOrganizer::MenuMouseHookProc(int nCode, WPARAM wParam, LPARAM lParam)
{
    // A double click in an open menu shows its hidden items, as choosing the expansion
    // item does.
    if (nCode == HC_ACTION && (wParam == WM_LBUTTONDBLCLK || wParam == WM_NCLBUTTONDBLCLK)) {
        KxUiBitmapMenuOrganizer* self = g_pHookOwner;
        if (self != nullptr && self->m_hWndFrame != nullptr && !self->m_mapMenuToSavedItems.IsEmpty())
            ::PostMessageW(self->m_hWndFrame, WM_COMMAND, ID_KXUI_SHOWALL, 0);
    }
    return ::CallNextHookEx(g_pfnOldMouseHookProc, nCode, wParam, lParam);
}

LRESULT CALLBACK KxUiBitmapMenuOrganizer::MenuKeyboardHookProc(int nCode, WPARAM wParam, LPARAM lParam)
{
    // Ctrl+Down in an open menu with hidden items shows them.
    if (nCode == HC_ACTION && wParam == VK_DOWN && !(lParam & 0x80000000) && (::GetKeyState(VK_CONTROL) & 0x8000)) {
        KxUiBitmapMenuOrganizer* self = g_pHookOwner;
        bool anyHidden = false;
        if (self != nullptr) {
            POSITION pos = self->m_mapMenuToSavedItems.GetStartPosition();
            while (pos != nullptr && !anyHidden) {
                KxUiBitmapMenu* menu;
                KxUiArrSavedMenuItem* saved;
                self->m_mapMenuToSavedItems.GetNextAssoc(pos, menu, saved);
                anyHidden = !saved->IsEmpty();
            }
        }
        if (anyHidden && self->m_hWndFrame != nullptr) {
            ::PostMessageW(self->m_hWndFrame, WM_COMMAND, ID_KXUI_SHOWALL, 0);
            return 1;
        }
    }
    return ::CallNextHookEx(g_pfnOldKeyboardHookProc, nCode, wParam, lParam);
}

////////////////////////////////////////////////////////////////////////////
// Customisation

void KxUiBitmapMenuOrganizer::SetCutomizationMode(BOOL bCustomize, HWND hWndNotify)
{
    m_bCustomizationMode = bCustomize;
    m_hWndCustomizeNotify = bCustomize ? hWndNotify : nullptr;
    for (INT_PTR i = 0; i < m_arrBitmapMenus.GetSize(); ++i)
        m_arrBitmapMenus[i]->SetCutomizationMode(bCustomize, hWndNotify);
}

////////////////////////////////////////////////////////////////////////////
// Persistence

namespace {

// Runs a storing function on an archive in memory and writes the bytes and their count.
template <class Fn>
BOOL WriteArchive(LPCTSTR lpszSection, Fn store)
{
    CWinApp* app = AfxGetApp();
    if (app == nullptr)
        return FALSE;
    CMemFile file(1024);
    try {
        CArchive ar(&file, CArchive::store, 4096);
        if (!store(ar)) {
            ar.Abort();
            return FALSE;
        }
        ar.Close();
    } catch (CException* e) {
        e->Delete();
        return FALSE;
    }
    const UINT size = static_cast<UINT>(file.GetLength());
    BYTE* data = file.Detach();
    const BOOL ok = app->WriteProfileBinary(lpszSection, kContentsEntry, data, size) &&
                    app->WriteProfileInt(lpszSection, kSizeEntry, static_cast<int>(size));
    free(data);
    return ok;
}

// Reads the stored bytes and runs a loading function on them; FALSE when nothing is stored,
// the two values disagree or the bytes cannot be read.
template <class Fn>
BOOL ReadArchive(LPCTSTR lpszSection, Fn load)
{
    CWinApp* app = AfxGetApp();
    if (app == nullptr)
        return FALSE;
    BYTE* raw = nullptr;
    UINT bytes = 0;
    if (!app->GetProfileBinary(lpszSection, kContentsEntry, &raw, &bytes) || raw == nullptr)
        return FALSE;
    std::unique_ptr<BYTE[]> data(raw);
    const int declared = static_cast<int>(app->GetProfileInt(lpszSection, kSizeEntry, -1));
    if (declared < 0 || static_cast<UINT>(declared) > bytes)
        return FALSE;
    CMemFile file(data.get(), static_cast<UINT>(declared));
    try {
        CArchive ar(&file, CArchive::load, 4096);
        const BOOL ok = load(ar);
        ar.Close();
        return ok;
    } catch (CException* e) {
        e->Delete();
        return FALSE;
    }
}

}  // namespace

BOOL KxUiBitmapMenuOrganizer::SaveRUCommandsContents(CArchive& ar)
{
    ar << static_cast<DWORD>(m_mapRUCommands.GetCount());
    POSITION pos = m_mapRUCommands.GetStartPosition();
    while (pos != nullptr) {
        int id, count;
        m_mapRUCommands.GetNextAssoc(pos, id, count);
        ar << static_cast<DWORD>(id);
    }
    return TRUE;
}

BOOL KxUiBitmapMenuOrganizer::LoadRUCommandsContents(CArchive& ar)
{
    m_mapRUCommands.RemoveAll();
    DWORD count = 0;
    ar >> count;
    for (DWORD i = 0; i < count; ++i) {
        DWORD id = 0;
        ar >> id;
        AddToRecentlyUsed(static_cast<int>(id));
    }
    return TRUE;
}

BOOL KxUiBitmapMenuOrganizer::SaveRUSubmenusContents(HMENU hRootMenu, CArchive& ar)
{
    ar << static_cast<DWORD>(m_mapRUSubmenus.GetCount());
    POSITION pos = m_mapRUSubmenus.GetStartPosition();
    while (pos != nullptr) {
        HMENU sub;
        int count;
        m_mapRUSubmenus.GetNextAssoc(pos, sub, count);
        CArray<int, int> path;
        if (::IsMenu(sub) && FindPopupMenuPath(sub, hRootMenu, path)) {
            for (INT_PTR i = 0; i < path.GetSize(); ++i)
                ar << static_cast<DWORD>(path[i]);
        }
        ar << static_cast<DWORD>(0xFFFFFFFF);
    }
    return TRUE;
}

BOOL KxUiBitmapMenuOrganizer::LoadRUSubmenusContents(HMENU hRootMenu, CArchive& ar)
{
    m_mapRUSubmenus.RemoveAll();
    DWORD count = 0;
    ar >> count;
    for (DWORD i = 0; i < count; ++i) {
        HMENU level = hRootMenu;
        bool any = false;
        for (;;) {
            DWORD step = 0;
            ar >> step;
            if (step == 0xFFFFFFFF)
                break;
            any = true;
            if (level != nullptr) {
                const int n = ::GetMenuItemCount(level);
                level = static_cast<int>(step) < n ? ::GetSubMenu(level, static_cast<int>(step)) : nullptr;
            }
        }
        if (any && level != nullptr && level != hRootMenu)
            AddSubmenuToRecentlyUsed(level);
    }
    return TRUE;
}

BOOL KxUiBitmapMenuOrganizer::SaveRUCommandsState(LPCTSTR lpszSection)
{
    const LPCTSTR section = (lpszSection != nullptr && *lpszSection) ? lpszSection : kDefaultCommandsSection;
    return WriteArchive(section, [this](CArchive& ar) { return SaveRUCommandsContents(ar); });
}

BOOL KxUiBitmapMenuOrganizer::LoadRUCommandsState(LPCTSTR lpszSection)
{
    const LPCTSTR section = (lpszSection != nullptr && *lpszSection) ? lpszSection : kDefaultCommandsSection;
    // A damaged record leaves the set as it was.
    CMap<int, int, int, int> before;
    POSITION pos = m_mapRUCommands.GetStartPosition();
    while (pos != nullptr) {
        int id, count;
        m_mapRUCommands.GetNextAssoc(pos, id, count);
        before.SetAt(id, count);
    }
    if (ReadArchive(section, [this](CArchive& ar) { return LoadRUCommandsContents(ar); }))
        return TRUE;
    m_mapRUCommands.RemoveAll();
    pos = before.GetStartPosition();
    while (pos != nullptr) {
        int id, count;
        before.GetNextAssoc(pos, id, count);
        m_mapRUCommands.SetAt(id, count);
    }
    return FALSE;
}

BOOL KxUiBitmapMenuOrganizer::SaveRUSubmenusState(HMENU hRootMenu, LPCTSTR lpszSection)
{
    if (hRootMenu == nullptr)
        return FALSE;
    const LPCTSTR section = (lpszSection != nullptr && *lpszSection) ? lpszSection : kDefaultSubmenusSection;
    return WriteArchive(section, [this, hRootMenu](CArchive& ar) { return SaveRUSubmenusContents(hRootMenu, ar); });
}

BOOL KxUiBitmapMenuOrganizer::LoadRUSubmenusState(HMENU hRootMenu, LPCTSTR lpszSection)
{
    if (hRootMenu == nullptr || !::IsMenu(hRootMenu))
        return FALSE;
    const LPCTSTR section = (lpszSection != nullptr && *lpszSection) ? lpszSection : kDefaultSubmenusSection;
    CMap<HMENU, HMENU, int, int> before;
    POSITION pos = m_mapRUSubmenus.GetStartPosition();
    while (pos != nullptr) {
        HMENU h;
        int count;
        m_mapRUSubmenus.GetNextAssoc(pos, h, count);
        before.SetAt(h, count);
    }
    if (ReadArchive(section, [this, hRootMenu](CArchive& ar) { return LoadRUSubmenusContents(hRootMenu, ar); }))
        return TRUE;
    m_mapRUSubmenus.RemoveAll();
    pos = before.GetStartPosition();
    while (pos != nullptr) {
        HMENU h;
        int count;
        before.GetNextAssoc(pos, h, count);
        m_mapRUSubmenus.SetAt(h, count);
    }
    return FALSE;
}
