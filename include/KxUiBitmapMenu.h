// Owner-drawn popup menus with an image column, a button edge around the image, and the text
// and accelerator in aligned columns.
//
// Model: a KxUiBitmapMenu wraps one popup menu whose items have been made owner-drawn (by
// KxUiBitmapMenuOrganizer::ConvertBitmapMenu). Each item's data points at a KxUiItemInfo that
// the menu owns: the item's full text ("&Open\tCtrl+O") and its KxUiImageInfo (an image of an
// image list, with an optional hot image shown while the item is highlighted). CalcExtents
// measures the widest image, text and accelerator once; MeasureItem and DistributeSpace lay
// every item out from those four numbers; DrawItem draws it through the protected hooks below,
// so a derived menu can restyle one part without redoing the rest.
//
//     KxUiBitmapMenuOrganizer organizer;             // converts the frame's popups for you
//     organizer.AttachFrameWnd(pMainFrame);
//     organizer.SetMenuBitmap(ID_FILE_OPEN, IDB_OPEN);
//
// The item state given to the drawing hooks is the system's ODS_ bits or-ed with:
//   KXUI_ODS_NOTRECENTLY   0x1000  the item is not recently used (dithered background)
//   KXUI_ODS_PREVRECENTLY  0x2000  the item before it is recently used (shadow line on top)
//   KXUI_ODS_NEXTRECENTLY  0x4000  the item after it is recently used (highlight line below)
//
// Overridables, in order: DrawItem, MeasureItem, IsCustomizable, GetPopupWnd, DistributeSpace,
// DrawBackground, DrawButton, DrawImage, DrawText, DrawSeparator, DrawCustomized,
// DrawInsertMark, DrawSubmenuItem, DrawExpansionItem, DisplayCustomizeItemContextMenu, the
// five OnCustBM... commands, RetrieveDragDropMenuItem, OnBeginDragDrop.
#pragma once
#include "KxUiDef.h"
#include "KxArrayPtrDelete.h"
#include <afxwin.h>

class CImageList;
class KxUiBitmapMenuPopupWnd;
class KxUiBitmapMenuOrganizer;

#define KXUI_ODS_NOTRECENTLY 0x1000
#define KXUI_ODS_PREVRECENTLY 0x2000
#define KXUI_ODS_NEXTRECENTLY 0x4000

// Command id of the item that shows a menu's hidden items.
#define ID_KXUI_SHOWALL 0xFF56
// Commands of the customisation context menu.
#define ID_KXUI_CUST_DELETE 32999
#define ID_KXUI_CUST_APPEARANCE 33000
#define ID_KXUI_CUST_SEPARATOR_BEFORE 33001
#define ID_KXUI_CUST_SEPARATOR_AFTER 33002
#define ID_KXUI_CUST_RECENTLY_USED 33003
// Notification code sent to the customisation window (WM_NOTIFY, KXUI_NMBMCUSTOMIZE).
#define KXUI_BMN_CUSTOMIZE 0x80AB

// What a customisation command notification carries.
struct KXUI_NMBMCUSTOMIZE {
    NMHDR hdr;      // hwndFrom: the menu's popup window; code: KXUI_BMN_CUSTOMIZE
    UINT nCommand;  // ID_KXUI_CUST_DELETE ... ID_KXUI_CUST_RECENTLY_USED
};

// One image of one command: an image list (not owned), the index and the hot index.
class KXUI_API KxUiImageInfo {
public:
    KxUiImageInfo(CImageList* pImageList = NULL, int nIndex = -1, int bDefault = FALSE, int nHotIndex = -1)
        : m_pImageList(pImageList), m_nIndex(nIndex), m_bDefault(bDefault), m_nHotIndex(nHotIndex)
    {
    }
    KxUiImageInfo(const KxUiImageInfo& other) = default;
    KxUiImageInfo& operator=(const KxUiImageInfo& other) = default;

    CImageList* GetImageList() const { return m_pImageList; }
    void SetImageList(CImageList* pImageList) { m_pImageList = pImageList; }
    int GetIndex() const { return m_nIndex; }
    void SetIndex(int nIndex) { m_nIndex = nIndex; }
    // Set when the image comes from the organizer's default list (the check mark).
    BOOL IsDefaultImgList() const { return m_bDefault; }
    void SetDefaultImgList(BOOL bDefault) { m_bDefault = bDefault; }
    // The image shown while the item is highlighted, or -1.
    int GetHotIndex() const { return m_nHotIndex; }
    void SetHotIndex(int nHotIndex) { m_nHotIndex = nHotIndex; }
    // Size of one image of the list; (0, 0) without a list.
    CSize GetImageSize() const;

protected:
    CImageList* m_pImageList;
    int m_nIndex;
    int m_bDefault;
    int m_nHotIndex;
};

// The data of one owner-drawn item: its image (not owned, may be NULL) and its full text.
class KXUI_API KxUiItemInfo {
public:
    KxUiItemInfo(KxUiImageInfo* pImageInfo = NULL, const CString& sText = CString())
        : m_pImageInfo(pImageInfo), m_sText(sText)
    {
    }
    KxUiItemInfo(const KxUiItemInfo& other) = default;
    KxUiItemInfo& operator=(const KxUiItemInfo& other) = default;

    KxUiImageInfo* GetImageInfo() const { return m_pImageInfo; }
    void SetImageInfo(KxUiImageInfo* pImageInfo) { m_pImageInfo = pImageInfo; }
    CString GetText() const { return m_sText; }
    void SetText(const CString& sText) { m_sText = sText; }

protected:
    KxUiImageInfo* m_pImageInfo;
    CString m_sText;
};

class KXUI_API KxUiBitmapMenu : public CMenu {
    DECLARE_DYNAMIC(KxUiBitmapMenu)
    friend class KxUiBitmapMenuOrganizer;
    friend class KxUiBitmapMenuPopupWnd;

public:
    KxUiBitmapMenu();
    // Frees the item data; the menu handle is left alone when it was only attached.
    virtual ~KxUiBitmapMenu();

    // ---- overridables ----
    void DrawItem(LPDRAWITEMSTRUCT lpDrawItemStruct) override;
    void MeasureItem(LPMEASUREITEMSTRUCT lpMeasureItemStruct) override;
    virtual BOOL IsCustomizable() const { return m_bCustomizable; }
    virtual KxUiBitmapMenuPopupWnd* GetPopupWnd() const { return m_pPopupWnd; }

    // ---- layout ----
    // Measures the widest image, text and accelerator and the text height in the menu font.
    void CalcExtents();
    // Position of the item at pPoint's y (items stacked from y = 0), or -1 below the last.
    // *pbBefore: 1 when y is at or above the item's middle, else 0.
    int HitTest(LPPOINT pPoint, int* pbBefore = NULL);
    int GetBitmapExtent() const { return m_nBitmapExtent; }
    int GetTextHeight() const { return m_nTextHeight; }
    int GetAcceleratorExtent() const { return m_nAcceleratorExtent; }
    int GetStringExtent() const { return m_nStringExtent; }
    // The item position whose mnemonic (lower case) is ch, or -1.
    int FindMnemonic(TCHAR ch) const;

    // ---- customisation ----
    void SetCustomizable(BOOL bCustomizable) { m_bCustomizable = bCustomizable; }
    // Turns customisation mode on or off; notifications go to hWndNotify (or the main window).
    void SetCutomizationMode(BOOL bCustomize, HWND hWndNotify = NULL);
    BOOL IsInCustomizationMode() const { return m_bCustomizationMode; }
    // The item marked as being customised (-1: none); returns the previous one.
    int SetCustomizedItem(int nIndex);
    int GetCustomizedItem() const { return m_nCustomizedItemIndex; }
    void SetDraggedItem(int nIndex) { m_nDraggedItemIndex = nIndex; }
    int GetDraggedItem() const { return m_nDraggedItemIndex; }
    // The drop mark before item nIndex (count: after the last; -1: none); returns the previous.
    int SetInsertMark(int nIndex);
    int GetInsertMark() const { return m_nInsertMarkIndex; }
    BOOL IsDragDropOwner() const { return m_bDragDropOwner; }
    void SetPopupWnd(KxUiBitmapMenuPopupWnd* pPopupWnd) { m_pPopupWnd = pPopupWnd; }

    // The customisation context menu of item nIndex at a screen point; 0 when the item has
    // none (recent files, reserved commands), else what the tracked menu returned.
    virtual BOOL DisplayCustomizeItemContextMenu(int nIndex, CPoint point);
    virtual void OnCustBMDelete();
    virtual void OnCustBMAppearance();
    virtual void OnCustBMSeparatorBefore();
    virtual void OnCustBMSeparatorAfter();
    virtual void OnCustBMRecentlyUsed();
    // Serialises item nIndex of hMenu into a new buffer (the caller deletes it with
    // delete[]); returns its size in bytes, 0 when there is no such item.
    virtual int RetrieveDragDropMenuItem(BYTE*& pData, HMENU hMenu, int nIndex);
    // Starts dragging item nIndex; the default remembers it as the dragged item.
    virtual void OnBeginDragDrop(int nIndex);

    // A pattern brush: an 8x8 checkerboard of the two colours. The caller deletes it.
    static HBRUSH HBrushDitherCreate(COLORREF rgbFace, COLORREF rgbHighlight);

    // Layout gaps in pixels, shared by every bitmap menu.
    static int m_nGapLeftBitmap;    // left edge to image
    static int m_nGapBitmapText;    // image column to text
    static int m_nGapTextAcclrtr;   // text to accelerator (only when there is one)
    static int m_nGapAcclrtrRight;  // accelerator to right edge
    static int m_nGapVertText;      // added to the text height
    static int m_nGapVertBitmap;    // added to the image height

protected:
    // Splits an item rectangle into the button, image, text and accelerator columns.
    virtual void DistributeSpace(UINT nState, KxUiImageInfo* pImageInfo, CRect itemRect, CRect& buttonRect,
                                 CRect& imageRect, CRect& text1Rect, CRect& text2Rect);
    // Fills the image column (buttonRect) and the text area (the rest of textAreaRect, which
    // DrawItem gives as the whole item rectangle).
    virtual void DrawBackground(CDC* pDC, UINT nState, KxUiImageInfo* pImageInfo, CRect buttonRect,
                                CRect textAreaRect);
    // Raised edge around a highlighted image, sunken around a checked one.
    virtual void DrawButton(CDC* pDC, UINT nState, KxUiImageInfo* pImageInfo, CRect buttonRect);
    // The image: normal, hot while highlighted, embossed when grayed.
    virtual void DrawImage(CDC* pDC, UINT nState, KxUiImageInfo* pImageInfo, CRect imageRect);
    // The text and the accelerator.
    virtual void DrawText(CDC* pDC, UINT nState, CString sText, CRect text1Rect, CRect text2Rect);
    // An etched line across the middle.
    virtual void DrawSeparator(CDC* pDC, CRect itemRect);
    // The frame around the item being customised.
    virtual void DrawCustomized(CDC* pDC, CRect itemRect);
    // The drop mark along the top (bBefore) or the bottom of the item.
    virtual void DrawInsertMark(CDC* pDC, CRect itemRect, BOOL bBefore);
    // An item opening a submenu: as a command, with the arrow in the accelerator column.
    virtual void DrawSubmenuItem(CDC* pDC, UINT nState, CString sText, KxUiImageInfo* pImageInfo, CRect itemRect,
                                 CRect buttonRect, CRect text1Rect, CRect text2Rect);
    // The chevron of the item that shows the hidden items.
    virtual void DrawExpansionItem(CDC* pDC, CRect itemRect, UINT nState);

    // Takes ownership of an item's data.
    void AddItemInfo(KxUiItemInfo* pItemInfo);
    // Updates the enabled and checked state of command nID through the owner's handlers.
    void OnUpdateCmdUI(CWnd* pWnd, UINT nID, BOOL bDisableIfNoHndler);
    // Sends the customisation notification for a command; non-zero vetoes the default action.
    LRESULT SendCustomizeNotification(UINT nCustomizeCmdID);
    // Remeasures and repaints after the menu's contents changed.
    void UpdateContents();

    // Item data of position nPos, or NULL when the item is not one of this menu's.
    KxUiItemInfo* GetItemInfo(int nPos) const;
    // The organizer of the thread's main window, or NULL.
    KxUiBitmapMenuOrganizer* GetOrganizer() const;

    KxArrayPtrDelete<CArray<KxUiItemInfo*, KxUiItemInfo*>> m_ItemInfoArray;  // owned item data
    CMap<TCHAR, TCHAR, int, int> m_KeyAccessMap;  // mnemonic (lower case) -> position
    // Item data each converted item had before, put back when the menu is restored.
    CMap<KxUiItemInfo*, KxUiItemInfo*, ULONG_PTR, ULONG_PTR> m_mapOriginal;

    int m_nBitmapExtent;       // widest image
    int m_nTextHeight;         // height of "A" in the menu font
    int m_nAcceleratorExtent;  // widest accelerator text
    int m_nStringExtent;       // widest item text

    BOOL m_bCustomizable;
    BOOL m_bCustomizationMode;
    HWND m_hWndCustomizeNotify;
    int m_nCustomizedItemIndex;
    int m_nDraggedItemIndex;
    int m_nInsertMarkIndex;
    BOOL m_bDragDropOwner;
    KxUiBitmapMenuPopupWnd* m_pPopupWnd;
    BOOL m_bAttachedOnly;  // the handle belongs to someone else: Detach, never destroy
    HWND m_hWndOrganizerFrame;  // frame of the organizer that converted the menu
};
