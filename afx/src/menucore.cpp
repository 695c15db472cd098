// CMenu: menus, their handle map and owner-drawn items.
#include "afximpl.h"

IMPLEMENT_DYNCREATE(CMenu, CObject)

namespace {

CObject* NewTempMenu(HANDLE h)
{
    CMenu* p = new CMenu;
    p->m_hMenu = static_cast<HMENU>(h);
    return p;
}

void DeleteTempMenu(CObject* p)
{
    auto* m = static_cast<CMenu*>(p);
    m->m_hMenu = nullptr;  // a temporary object never destroys its menu
    delete m;
}

const AFX_HANDLEMAP_CLASS menuMapClass = {NewTempMenu, DeleteTempMenu};

}  // namespace

CHandleMap* AFXAPI afxMapHMENU(BOOL bCreate)
{
    return AfxGetHandleMap(&menuMapClass, bCreate);
}

CMenu::CMenu() : m_hMenu(nullptr) {}

CMenu::~CMenu()
{
    DestroyMenu();
}

HMENU CMenu::GetSafeHmenu() const
{
    const CMenu* p = this;
    asm("" : "+r"(p));
    return p != nullptr ? p->m_hMenu : nullptr;
}

CMenu* PASCAL CMenu::FromHandle(HMENU hMenu)
{
    return static_cast<CMenu*>(afxMapHMENU(TRUE)->FromHandle(hMenu));
}

CMenu* PASCAL CMenu::FromHandlePermanent(HMENU hMenu)
{
    CHandleMap* map = afxMapHMENU(FALSE);
    return map != nullptr && hMenu != nullptr ? static_cast<CMenu*>(map->LookupPermanent(hMenu)) : nullptr;
}

void PASCAL CMenu::DeleteTempMap()
{
    if (CHandleMap* map = afxMapHMENU(FALSE))
        map->DeleteTemp();
}

BOOL CMenu::Attach(HMENU hMenu)
{
    if (hMenu == nullptr || m_hMenu != nullptr || FromHandlePermanent(hMenu) != nullptr)
        return FALSE;
    m_hMenu = hMenu;
    afxMapHMENU(TRUE)->SetPermanent(hMenu, this);
    return TRUE;
}

HMENU CMenu::Detach()
{
    HMENU hMenu = m_hMenu;
    if (hMenu != nullptr) {
        CHandleMap* map = afxMapHMENU(FALSE);
        if (map != nullptr && map->LookupPermanent(hMenu) == this)
            map->RemoveHandle(hMenu);
        m_hMenu = nullptr;
    }
    return hMenu;
}

BOOL CMenu::CreateMenu()
{
    return Attach(::CreateMenu());
}

BOOL CMenu::CreatePopupMenu()
{
    return Attach(::CreatePopupMenu());
}

BOOL CMenu::LoadMenu(LPCTSTR lpszResourceName)
{
    HMENU h = ::LoadMenuW(AfxFindResourceHandle(lpszResourceName, RT_MENU), lpszResourceName);
    if (h != nullptr && !Attach(h)) {
        ::DestroyMenu(h);
        return FALSE;
    }
    return h != nullptr;
}

BOOL CMenu::LoadMenuIndirect(const void* lpMenuTemplate)
{
    HMENU h = ::LoadMenuIndirectW(lpMenuTemplate);
    if (h != nullptr && !Attach(h)) {
        ::DestroyMenu(h);
        return FALSE;
    }
    return h != nullptr;
}

BOOL CMenu::DestroyMenu()
{
    if (m_hMenu == nullptr)
        return FALSE;
    return ::DestroyMenu(Detach());
}

int CMenu::GetMenuString(UINT nIDItem, CString& rString, UINT nFlags) const
{
    const int n = ::GetMenuStringW(m_hMenu, nIDItem, nullptr, 0, nFlags);
    if (n <= 0) {
        rString.Empty();
        return 0;
    }
    const int got = ::GetMenuStringW(m_hMenu, nIDItem, rString.GetBuffer(n + 1), n + 1, nFlags);
    rString.ReleaseBuffer(got > 0 ? got : 0);
    return rString.GetLength();
}

BOOL CMenu::DeleteMenu(UINT nPosition, UINT nFlags)
{
    // A popup's object goes with it.
    if (nFlags & MF_BYPOSITION) {
        if (HMENU sub = ::GetSubMenu(m_hMenu, static_cast<int>(nPosition))) {
            if (CMenu* p = FromHandlePermanent(sub))
                p->Detach();
        }
    }
    return ::DeleteMenu(m_hMenu, nPosition, nFlags);
}

BOOL CMenu::TrackPopupMenu(UINT nFlags, int x, int y, CWnd* pWnd, LPCRECT lpRect)
{
    _AFX_THREAD_STATE* ts = AfxGetThreadState();
    HMENU saved = ts->m_hTrackingMenu;
    ts->m_hTrackingMenu = m_hMenu;
    const BOOL result = ::TrackPopupMenu(m_hMenu, nFlags, x, y, 0, CWnd::SafeHwnd(pWnd), lpRect);
    ts->m_hTrackingMenu = saved;
    return result;
}

void CMenu::DrawItem(LPDRAWITEMSTRUCT) {}

void CMenu::MeasureItem(LPMEASUREITEMSTRUCT) {}
