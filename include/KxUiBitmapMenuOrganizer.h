// Turns a frame window's popup menus into bitmap menus while they are open, keeps the images
// per command, and keeps (and saves) the sets of recently used commands and submenus.
//
// Model: one organizer per CFrameWnd. Attached, it hooks the frame through the
// window-procedure manager: on WM_INITMENUPOPUP it wraps the popup in a KxUiBitmapMenu and
// converts it (ConvertBitmapMenu: items made owner-drawn with their image, and in
// recently-used mode the items not recently used hidden behind an expansion item); when the
// menu loop ends every popup is restored exactly as it was. Commands chosen while only
// recently used items are shown join the recently-used set.
//
//     KxUiBitmapMenuOrganizer m_organizer;                  // a member of the frame
//     m_organizer.AttachFrameWnd(this);                     // in OnCreate
//     m_organizer.SetMenuImage(ID_FILE_OPEN, MAKEINTRESOURCE(IDB_TOOLS), 0, -1);
//     m_organizer.AutoSetMenuImage();                       // images of the tool bars' buttons
//     m_organizer.LoadRUCommandsState(NULL);                // "RecentlyUsedMenuItems"
//     m_organizer.ShowOnlyRecentlyUsedItems(TRUE);
//     ...
//     m_organizer.SaveRUCommandsState(NULL);                // in OnDestroy
//
// Overridables, in order: AddToRecentlyUsed(int), AddSubmenuToRecentlyUsed,
// ExcludeFromRecentlyUsed(int), ExcludeSubmenuFromRecentlyUsed, OnInitMenuPopup, OnMenuChar,
// OnMeasureItem, ConvertBitmapMenu, RestoreBitmapMenu, SaveRUCommandsContents,
// LoadRUCommandsContents, SaveRUSubmenusContents, LoadRUSubmenusContents.
#pragma once
#include "KxUiBitmapMenu.h"
#include "KxUiWndProcMgr.h"

class CFrameWnd;
class CImageList;
class CBitmap;
class CArchive;

// Private messages of the organizer's frame.
#define KXUI_WM_SAVERUSUBMENUS 0x8154   // lParam: section name (LPCTSTR, may be NULL)
#define KXUI_WM_LOADRUSUBMENUS 0x8155   // lParam: section name (LPCTSTR, may be NULL)
#define KXUI_WM_COMMANDCHOSEN 0x8156    // to the customisation popup window; wParam: command id

// One item hidden from a menu while only recently used items are shown.
struct KxUiSavedMenuItem {
    int nPosition;         // where it stood in the menu
    MENUITEMINFO mii;      // everything the menu knew of it (hSubMenu: the submenu kept aside)
    CString sText;         // its text
};
class KXUI_API KxUiArrSavedMenuItem : public CArray<KxUiSavedMenuItem, const KxUiSavedMenuItem&> {
};

class KXUI_API KxUiBitmapMenuOrganizer : public CObject {
    DECLARE_DYNAMIC(KxUiBitmapMenuOrganizer)

public:
    KxUiBitmapMenuOrganizer();
    // Detaches from the frame and frees every image, image list and open menu's data.
    virtual ~KxUiBitmapMenuOrganizer();

    // ---- attaching ----
    // Hooks the frame; FALSE when this organizer or the frame already has one, or for a
    // frame without a window.
    BOOL AttachFrameWnd(CFrameWnd* pFrameWnd);
    // Restores open menus, unhooks the frame and returns it (NULL when not attached).
    CFrameWnd* DetachFrameWnd();
    BOOL IsAttached() const { return m_hWndFrame != NULL; }
    // Frees the images and image lists; bRestoreMenus first puts open menus back.
    void Empty(BOOL bRestoreMenus = TRUE);

    // ---- images (each FALSE when the image cannot be had) ----
    // Image nIndex of a bitmap strip resource (square images as high as the bitmap; the
    // colour of its top-left pixel is transparent); nHotIndex: the image while highlighted.
    BOOL SetMenuImage(UINT nCommandID, LPCTSTR lpszResource, int nIndex, int nHotIndex = -1);
    // An icon, copied (cx, cy: size of the image; 0 takes the small-icon size).
    BOOL SetMenuImage(UINT nCommandID, HICON hIcon, int cx = 0, int cy = 0);
    // Image nIndex of a bitmap strip (square images as high as the bitmap), crMask transparent.
    BOOL SetMenuImage(UINT nCommandID, CBitmap* pBitmap, COLORREF crMask, int nIndex, int nHotIndex = -1);
    // The same three sources for the image shown while the item is highlighted.
    BOOL SetMenuHotImage(UINT nCommandID, LPCTSTR lpszResource, int nIndex);
    BOOL SetMenuHotImage(UINT nCommandID, HICON hIcon, int cx = 0, int cy = 0);
    BOOL SetMenuHotImage(UINT nCommandID, CBitmap* pBitmap, COLORREF crMask, int nIndex);
    // A whole bitmap resource as the image (its top-left pixel's colour transparent).
    BOOL SetMenuBitmap(UINT nCommandID, LPCTSTR lpszResource);
    BOOL SetMenuBitmap(UINT nCommandID, UINT nResourceID) { return SetMenuBitmap(nCommandID, MAKEINTRESOURCE(nResourceID)); }
    BOOL SetMenuHotBitmap(UINT nCommandID, LPCTSTR lpszResource);
    BOOL SetMenuHotBitmap(UINT nCommandID, UINT nResourceID) { return SetMenuHotBitmap(nCommandID, MAKEINTRESOURCE(nResourceID)); }
    // An icon resource at small-icon size.
    BOOL SetMenuIcon(UINT nCommandID, LPCTSTR lpszResource);
    BOOL SetMenuIcon(UINT nCommandID, UINT nResourceID) { return SetMenuIcon(nCommandID, MAKEINTRESOURCE(nResourceID)); }
    BOOL SetMenuHotIcon(UINT nCommandID, LPCTSTR lpszResource);
    BOOL SetMenuHotIcon(UINT nCommandID, UINT nResourceID) { return SetMenuHotIcon(nCommandID, MAKEINTRESOURCE(nResourceID)); }
    // Gives every button of the frame's tool bars its image as the image of its command;
    // FALSE when no image was found.
    BOOL AutoSetMenuImage();
    // The image of a command (id -1: popup items), or NULL.
    KxUiImageInfo* GetMenuImage(UINT nCommandID) const;
    // The list holding the check mark, given to items without an image of their own.
    CImageList* GetDefaultImageList();

    // ---- menu messages ----
    virtual void OnInitMenuPopup(CMenu* pPopupMenu, UINT nIndex, BOOL bSysMenu);
    virtual LRESULT OnMenuChar(UINT nChar, UINT nFlags, CMenu* pMenu);
    // TRUE when the item is one of an open bitmap menu's and was measured.
    virtual BOOL OnMeasureItem(int nIDCtl, LPMEASUREITEMSTRUCT lpMeasureItemStruct);

    // ---- conversion ----
    // Makes every item owner-drawn; with bShowOnlyRecentlyUsed (and recently-used mode on),
    // hides the items not recently used and appends the expansion item.
    virtual void ConvertBitmapMenu(KxUiBitmapMenu* pBitmapMenu, BOOL bShowOnlyRecentlyUsed = TRUE);
    // Puts hidden items back, removes the expansion item and the owner-draw state.
    virtual void RestoreBitmapMenu(KxUiBitmapMenu* pBitmapMenu, BOOL bRestoreText = TRUE);
    // The bitmap menu currently made for an open popup, or NULL.
    KxUiBitmapMenu* FindBitmapMenu(HMENU hMenu) const;

    // ---- recently used ----
    void ShowOnlyRecentlyUsedItems(BOOL bShowOnly) { m_bShowOnlyRecentlyUsed = bShowOnly; }
    BOOL IsShowOnlyRecentlyUsedItems() const { return m_bShowOnlyRecentlyUsed; }
    virtual BOOL AddToRecentlyUsed(int nCommandID);
    virtual BOOL AddSubmenuToRecentlyUsed(HMENU hSubmenu);
    virtual BOOL ExcludeFromRecentlyUsed(int nCommandID);
    virtual BOOL ExcludeSubmenuFromRecentlyUsed(HMENU hSubmenu);
    // By position: a command by its id, a popup item by its submenu.
    BOOL AddToRecentlyUsed(CMenu* pMenu, int nPos);
    BOOL ExcludeFromRecentlyUsed(CMenu* pMenu, int nPos);
    BOOL IsRecentlyUsed(int nCommandID) const;
    // Separators count as recently used (they are never dimmed).
    BOOL IsRecentlyUsed(CMenu* pMenu, int nPos) const;
    BOOL IsSubmenuRecentlyUsed(HMENU hSubmenu) const;
    int GetRecentlyUsedCount() const { return static_cast<int>(m_mapRUCommands.GetCount()); }
    int GetRecentlyUsedSubmenuCount() const { return static_cast<int>(m_mapRUSubmenus.GetCount()); }

    // ---- persistence (section NULL or empty: the default section) ----
    BOOL SaveRUCommandsState(LPCTSTR lpszSection = NULL);
    // FALSE when nothing is stored or the record is damaged; the set is then unchanged.
    BOOL LoadRUCommandsState(LPCTSTR lpszSection = NULL);
    BOOL SaveRUSubmenusState(HMENU hRootMenu, LPCTSTR lpszSection = NULL);
    BOOL LoadRUSubmenusState(HMENU hRootMenu, LPCTSTR lpszSection = NULL);

    // ---- customisation ----
    void SetCutomizationMode(BOOL bCustomize, HWND hWndNotify = NULL);
    BOOL IsInCustomizationMode() const { return m_bCustomizationMode; }
    HWND GetCustomizationNotifyWnd() const { return m_hWndCustomizeNotify; }

    // ---- helpers ----
    // The organizer attached to a frame, or NULL.
    static KxUiBitmapMenuOrganizer* PASCAL FindOrganizer(HWND hWndFrame);
    // Whether hMenu opens directly from the frame's menu bar.
    BOOL IsTopLevelPopupMenu(HMENU hMenu) const;
    // Positions leading from hRootMenu down to hSubmenu; FALSE when it is not reachable.
    static BOOL PASCAL FindPopupMenuPath(HMENU hSubmenu, HMENU hRootMenu, CArray<int, int>& path);
    // The popup holding command nID, searched from pMenu down, or NULL.
    static CMenu* PASCAL OwnFindPopupMenuFromID(CMenu* pMenu, UINT nID);
    // The frame (NULL when not attached).
    CFrameWnd* GetFrameWnd() const;
    // Whether the thread's mouse and keyboard hooks of an open recently-used menu are in place.
    static BOOL PASCAL AreMenuHooksInstalled();

protected:
    // A deep copy of a popup menu (items, states, submenus, item data); the caller owns it.
    static HMENU PASCAL CopyPopupMenu(HMENU hMenu);
    // Cache key of an image list loaded from a resource.
    static CString PASCAL GetUniqueResourceString(UINT nResourceID, BOOL bHot);
    static CString PASCAL GetUniqueResourceString(LPCTSTR lpszResource, BOOL bHot);

    virtual BOOL SaveRUCommandsContents(CArchive& ar);
    virtual BOOL LoadRUCommandsContents(CArchive& ar);
    virtual BOOL SaveRUSubmenusContents(HMENU hRootMenu, CArchive& ar);
    virtual BOOL LoadRUSubmenusContents(HMENU hRootMenu, CArchive& ar);

    // The frame's messages, before and after its own procedure.
    virtual int OnFrameMessageBefore(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result);
    virtual void OnFrameMessageAfter(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result);
    void UpdateActivePopupMenuCount(int nDelta);
    // Restores and frees every open bitmap menu.
    void RestoreAllMenus();

    static LRESULT CALLBACK MenuMouseHookProc(int nCode, WPARAM wParam, LPARAM lParam);
    static LRESULT CALLBACK MenuKeyboardHookProc(int nCode, WPARAM wParam, LPARAM lParam);
    void InstallMenuHooks();
    static void RemoveMenuHooks();

private:
    // The organizer's hook on its frame.
    class FrameHook : public KxUiWndProc {
    public:
        explicit FrameHook(KxUiBitmapMenuOrganizer* pOwner) : m_pOwner(pOwner) {}
        int windowProc(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) override;
        void windowProcCallBack(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) override;
        KxUiBitmapMenuOrganizer* m_pOwner;
    };
    friend class FrameHook;
    friend class KxUiBitmapMenu;

    KxUiImageInfo* ImageInfoFor(UINT nCommandID);
    BOOL StoreImage(UINT nCommandID, CImageList* pList, int nIndex, int nHotIndex, BOOL bHot);
    CImageList* ListFromResource(LPCTSTR lpszResource, BOOL bHot, BOOL bWhole, BOOL bIcon);
    CImageList* ListFromBitmap(HBITMAP hBitmap, COLORREF crMask, int cx);
    CImageList* ListFromIcon(HICON hIcon, int cx, int cy);
    void OnExpansionCommand();
    void OnCommandChosen(UINT nID);
    void CollectSubmenusLeadingTo(UINT nID);

    FrameHook m_hook;
    HWND m_hWndFrame;
    CMap<UINT, UINT, KxUiImageInfo*, KxUiImageInfo*> m_mapImageInfo;      // command -> image
    CMap<UINT, UINT, KxUiImageInfo*, KxUiImageInfo*> m_mapHotImageInfo;   // command -> hot image
    CMap<CString, LPCTSTR, CImageList*, CImageList*> m_mapResourceLists;  // resource key -> list
    KxArrayPtrDelete<CArray<CImageList*, CImageList*>> m_arrOwnedLists;   // every list made here
    CImageList* m_pDefaultImageList;                                      // the check mark
    KxArrayPtrDelete<CArray<KxUiBitmapMenu*, KxUiBitmapMenu*>> m_arrBitmapMenus;  // open menus
    CMap<KxUiBitmapMenu*, KxUiBitmapMenu*, KxUiArrSavedMenuItem*, KxUiArrSavedMenuItem*> m_mapMenuToSavedItems;
    CMap<int, int, int, int> m_mapRUCommands;       // command id -> times chosen
    CMap<HMENU, HMENU, int, int> m_mapRUSubmenus;   // submenu -> times opened on the way
    BOOL m_bShowOnlyRecentlyUsed;
    BOOL m_bCustomizationMode;
    HWND m_hWndCustomizeNotify;
    BOOL m_bInMenuLoop;
    BOOL m_bExpanding;     // the whole menu is being shown after the expansion item
    int m_nActivePopupMenuCount;
    HMENU m_hLastPopup;    // the last popup opened in this menu loop

    static CMap<HWND, HWND, KxUiBitmapMenuOrganizer*, KxUiBitmapMenuOrganizer*> m_allMenuOrganizers;
    static HHOOK g_pfnOldMouseHookProc;
    static HHOOK g_pfnOldKeyboardHookProc;
    static KxUiBitmapMenuOrganizer* g_pHookOwner;
};
