// Controls over the platform's window classes: CStatic, CButton, CEdit, CListBox,
// CComboBox, CScrollBar. Included by afxwin.h.
//
// Each class is a thin wrapper: members send the control's messages to m_hWnd. Owner-drawn
// items reach the virtual DrawItem/MeasureItem/CompareItem/DeleteItem through reflection
// (the parent passes WM_DRAWITEM etc. back to the control's object, see OnChildNotify).
#pragma once

class KXAFX_API CStatic : public CWnd {
    DECLARE_DYNAMIC(CStatic)
public:
    CStatic() = default;
    virtual ~CStatic();
    virtual BOOL Create(LPCTSTR lpszText, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd,
                        UINT nID = 0xffff);

    HICON SetIcon(HICON hIcon) { return (HICON)SendMessage(STM_SETICON, (WPARAM)hIcon); }
    HICON GetIcon() const { return (HICON)SendMessage(STM_GETICON); }
    HBITMAP SetBitmap(HBITMAP hBitmap) { return (HBITMAP)SendMessage(STM_SETIMAGE, IMAGE_BITMAP, (LPARAM)hBitmap); }
    HBITMAP GetBitmap() const { return (HBITMAP)SendMessage(STM_GETIMAGE, IMAGE_BITMAP); }
    HCURSOR SetCursor(HCURSOR hCursor) { return (HCURSOR)SendMessage(STM_SETIMAGE, IMAGE_CURSOR, (LPARAM)hCursor); }
    HCURSOR GetCursor() { return (HCURSOR)SendMessage(STM_GETIMAGE, IMAGE_CURSOR); }
    HENHMETAFILE SetEnhMetaFile(HENHMETAFILE hMetaFile)
    { return (HENHMETAFILE)SendMessage(STM_SETIMAGE, IMAGE_ENHMETAFILE, (LPARAM)hMetaFile); }

    // SS_OWNERDRAW: draws the control.
    virtual void DrawItem(LPDRAWITEMSTRUCT lpDrawItemStruct);

protected:
    virtual BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult) override;
};

class KXAFX_API CButton : public CWnd {
    DECLARE_DYNAMIC(CButton)
public:
    CButton() = default;
    virtual ~CButton();
    virtual BOOL Create(LPCTSTR lpszCaption, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);

    // BST_UNCHECKED, BST_CHECKED, BST_INDETERMINATE, plus BST_PUSHED/BST_FOCUS in GetState.
    UINT GetState() const { return (UINT)SendMessage(BM_GETSTATE); }
    void SetState(BOOL bHighlight) { SendMessage(BM_SETSTATE, bHighlight); }
    int GetCheck() const { return (int)SendMessage(BM_GETCHECK); }
    void SetCheck(int nCheck) { SendMessage(BM_SETCHECK, nCheck); }
    // The BS_ type and flags (without the window styles).
    UINT GetButtonStyle() const { return (UINT)GetStyle() & 0xffff; }
    void SetButtonStyle(UINT nStyle, BOOL bRedraw = TRUE) { SendMessage(BM_SETSTYLE, nStyle, bRedraw); }
    HICON SetIcon(HICON hIcon) { return (HICON)SendMessage(BM_SETIMAGE, IMAGE_ICON, (LPARAM)hIcon); }
    HICON GetIcon() const { return (HICON)SendMessage(BM_GETIMAGE, IMAGE_ICON); }
    HBITMAP SetBitmap(HBITMAP hBitmap) { return (HBITMAP)SendMessage(BM_SETIMAGE, IMAGE_BITMAP, (LPARAM)hBitmap); }
    HBITMAP GetBitmap() const { return (HBITMAP)SendMessage(BM_GETIMAGE, IMAGE_BITMAP); }
    HCURSOR SetCursor(HCURSOR hCursor) { return (HCURSOR)SendMessage(BM_SETIMAGE, IMAGE_CURSOR, (LPARAM)hCursor); }
    HCURSOR GetCursor() { return (HCURSOR)SendMessage(BM_GETIMAGE, IMAGE_CURSOR); }
    // Sends BN_CLICKED as a user's click would.
    void Click() { SendMessage(BM_CLICK); }

    // BS_OWNERDRAW: draws the button.
    virtual void DrawItem(LPDRAWITEMSTRUCT lpDrawItemStruct);

protected:
    virtual BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult) override;
};

class KXAFX_API CEdit : public CWnd {
    DECLARE_DYNAMIC(CEdit)
public:
    CEdit() = default;
    virtual ~CEdit();
    virtual BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);

    BOOL CanUndo() const { return (BOOL)SendMessage(EM_CANUNDO); }
    BOOL Undo() { return (BOOL)SendMessage(EM_UNDO); }
    void EmptyUndoBuffer() { SendMessage(EM_EMPTYUNDOBUFFER); }
    int GetLineCount() const { return (int)SendMessage(EM_GETLINECOUNT); }
    BOOL GetModify() const { return (BOOL)SendMessage(EM_GETMODIFY); }
    void SetModify(BOOL bModified = TRUE) { SendMessage(EM_SETMODIFY, bModified); }
    void GetRect(LPRECT lpRect) const { SendMessage(EM_GETRECT, 0, (LPARAM)lpRect); }
    void SetRect(LPCRECT lpRect) { SendMessage(EM_SETRECT, 0, (LPARAM)lpRect); }
    void SetRectNP(LPCRECT lpRect) { SendMessage(EM_SETRECTNP, 0, (LPARAM)lpRect); }
    // Selection: start in the low word, end in the high word (both limited to 65535).
    DWORD GetSel() const;
    void GetSel(int& nStartChar, int& nEndChar) const;
    void SetSel(DWORD dwSelection, BOOL bNoScroll = FALSE);
    void SetSel(int nStartChar, int nEndChar, BOOL bNoScroll = FALSE);
    void ReplaceSel(LPCTSTR lpszNewText, BOOL bCanUndo = FALSE)
    { SendMessage(EM_REPLACESEL, bCanUndo, (LPARAM)lpszNewText); }
    void Clear() { SendMessage(WM_CLEAR); }
    void Copy() { SendMessage(WM_COPY); }
    void Cut() { SendMessage(WM_CUT); }
    void Paste() { SendMessage(WM_PASTE); }
    BOOL SetReadOnly(BOOL bReadOnly = TRUE) { return (BOOL)SendMessage(EM_SETREADONLY, bReadOnly); }
    void LimitText(int nChars = 0) { SendMessage(EM_LIMITTEXT, nChars); }
    void SetLimitText(UINT nMax) { SendMessage(EM_SETLIMITTEXT, nMax); }
    UINT GetLimitText() const { return (UINT)SendMessage(EM_GETLIMITTEXT); }
    TCHAR GetPasswordChar() const { return (TCHAR)SendMessage(EM_GETPASSWORDCHAR); }
    void SetPasswordChar(TCHAR ch) { SendMessage(EM_SETPASSWORDCHAR, ch); }
    void SetMargins(UINT nLeft, UINT nRight)
    { SendMessage(EM_SETMARGINS, EC_LEFTMARGIN | EC_RIGHTMARGIN, MAKELONG(nLeft, nRight)); }
    // Left margin in the low word, right margin in the high word.
    DWORD GetMargins() const { return (DWORD)SendMessage(EM_GETMARGINS); }
    BOOL SetTabStops(int nTabStops, LPINT rgTabStops)
    { return (BOOL)SendMessage(EM_SETTABSTOPS, nTabStops, (LPARAM)rgTabStops); }
    void SetTabStops() { SendMessage(EM_SETTABSTOPS); }
    BOOL SetTabStops(const int& cxEachStop) { return (BOOL)SendMessage(EM_SETTABSTOPS, 1, (LPARAM)&cxEachStop); }
    int GetFirstVisibleLine() const { return (int)SendMessage(EM_GETFIRSTVISIBLELINE); }
    // A line's text, at most nMaxLength characters; the result is not terminated.
    int GetLine(int nIndex, LPTSTR lpszBuffer, int nMaxLength) const;
    int GetLine(int nIndex, LPTSTR lpszBuffer) const;
    int LineIndex(int nLine = -1) const { return (int)SendMessage(EM_LINEINDEX, nLine); }
    int LineLength(int nLine = -1) const { return (int)SendMessage(EM_LINELENGTH, nLine); }
    int LineFromChar(int nIndex = -1) const { return (int)SendMessage(EM_LINEFROMCHAR, nIndex); }
    void LineScroll(int nLines, int nChars = 0) { SendMessage(EM_LINESCROLL, nChars, nLines); }
    // Character index in the low word and line in the high word of the character nearest pt.
    int CharFromPos(CPoint pt) const { return (int)SendMessage(EM_CHARFROMPOS, 0, MAKELPARAM(pt.x, pt.y)); }
    // Client position of the top-left of character nChar; (-1, -1) past the end.
    CPoint PosFromChar(UINT nChar) const;
    HLOCAL GetHandle() const { return (HLOCAL)SendMessage(EM_GETHANDLE); }
    void SetHandle(HLOCAL hBuffer) { SendMessage(EM_SETHANDLE, (WPARAM)hBuffer); }
    BOOL FmtLines(BOOL bAddEOL) { return (BOOL)SendMessage(EM_FMTLINES, bAddEOL); }
    BOOL SetCueBanner(LPCWSTR lpszText, BOOL fDrawIfFocused = FALSE)
    { return (BOOL)SendMessage(EM_SETCUEBANNER, fDrawIfFocused, (LPARAM)lpszText); }
};

class KXAFX_API CListBox : public CWnd {
    DECLARE_DYNAMIC(CListBox)
public:
    CListBox() = default;
    virtual ~CListBox();
    virtual BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);

    int GetCount() const { return (int)SendMessage(LB_GETCOUNT); }
    int GetHorizontalExtent() const { return (int)SendMessage(LB_GETHORIZONTALEXTENT); }
    void SetHorizontalExtent(int cxExtent) { SendMessage(LB_SETHORIZONTALEXTENT, cxExtent); }
    int GetTopIndex() const { return (int)SendMessage(LB_GETTOPINDEX); }
    int SetTopIndex(int nIndex) { return (int)SendMessage(LB_SETTOPINDEX, nIndex); }
    LCID GetLocale() const { return (LCID)SendMessage(LB_GETLOCALE); }
    LCID SetLocale(LCID nNewLocale) { return (LCID)SendMessage(LB_SETLOCALE, nNewLocale); }
    int InitStorage(int nItems, UINT nBytes) { return (int)SendMessage(LB_INITSTORAGE, nItems, nBytes); }
    UINT ItemFromPoint(CPoint pt, BOOL& bOutside) const;

    // Single selection
    int GetCurSel() const { return (int)SendMessage(LB_GETCURSEL); }
    int SetCurSel(int nSelect) { return (int)SendMessage(LB_SETCURSEL, nSelect); }

    // Multiple selection
    int GetSel(int nIndex) const { return (int)SendMessage(LB_GETSEL, nIndex); }
    int SetSel(int nIndex, BOOL bSelect = TRUE) { return (int)SendMessage(LB_SETSEL, bSelect, nIndex); }
    int GetSelCount() const { return (int)SendMessage(LB_GETSELCOUNT); }
    int GetSelItems(int nMaxItems, LPINT rgIndex) const
    { return (int)SendMessage(LB_GETSELITEMS, nMaxItems, (LPARAM)rgIndex); }
    void SetAnchorIndex(int nIndex) { SendMessage(LB_SETANCHORINDEX, nIndex); }
    int GetAnchorIndex() const { return (int)SendMessage(LB_GETANCHORINDEX); }
    int SelItemRange(BOOL bSelect, int nFirstItem, int nLastItem);

    // Items
    DWORD_PTR GetItemData(int nIndex) const { return (DWORD_PTR)SendMessage(LB_GETITEMDATA, nIndex); }
    int SetItemData(int nIndex, DWORD_PTR dwItemData) { return (int)SendMessage(LB_SETITEMDATA, nIndex, (LPARAM)dwItemData); }
    void* GetItemDataPtr(int nIndex) const { return (void*)GetItemData(nIndex); }
    int SetItemDataPtr(int nIndex, void* pData) { return SetItemData(nIndex, (DWORD_PTR)pData); }
    int GetItemRect(int nIndex, LPRECT lpRect) const { return (int)SendMessage(LB_GETITEMRECT, nIndex, (LPARAM)lpRect); }
    int GetText(int nIndex, LPTSTR lpszBuffer) const { return (int)SendMessage(LB_GETTEXT, nIndex, (LPARAM)lpszBuffer); }
    // Empties rString for an index out of range.
    void GetText(int nIndex, CString& rString) const;
    int GetTextLen(int nIndex) const { return (int)SendMessage(LB_GETTEXTLEN, nIndex); }
    void SetColumnWidth(int cxWidth) { SendMessage(LB_SETCOLUMNWIDTH, cxWidth); }
    BOOL SetTabStops(int nTabStops, LPINT rgTabStops)
    { return (BOOL)SendMessage(LB_SETTABSTOPS, nTabStops, (LPARAM)rgTabStops); }
    void SetTabStops() { SendMessage(LB_SETTABSTOPS); }
    BOOL SetTabStops(const int& cxEachStop) { return (BOOL)SendMessage(LB_SETTABSTOPS, 1, (LPARAM)&cxEachStop); }
    int SetItemHeight(int nIndex, UINT cyItemHeight)
    { return (int)SendMessage(LB_SETITEMHEIGHT, nIndex, MAKELONG(cyItemHeight, 0)); }
    int GetItemHeight(int nIndex) const { return (int)SendMessage(LB_GETITEMHEIGHT, nIndex); }
    int FindStringExact(int nIndexStart, LPCTSTR lpszFind) const
    { return (int)SendMessage(LB_FINDSTRINGEXACT, nIndexStart, (LPARAM)lpszFind); }
    int GetCaretIndex() const { return (int)SendMessage(LB_GETCARETINDEX); }
    int SetCaretIndex(int nIndex, BOOL bScroll = TRUE) { return (int)SendMessage(LB_SETCARETINDEX, nIndex, bScroll); }

    // Operations
    int AddString(LPCTSTR lpszItem) { return (int)SendMessage(LB_ADDSTRING, 0, (LPARAM)lpszItem); }
    int DeleteString(UINT nIndex) { return (int)SendMessage(LB_DELETESTRING, nIndex); }
    int InsertString(int nIndex, LPCTSTR lpszItem) { return (int)SendMessage(LB_INSERTSTRING, nIndex, (LPARAM)lpszItem); }
    void ResetContent() { SendMessage(LB_RESETCONTENT); }
    int Dir(UINT attr, LPCTSTR lpszWildCard) { return (int)SendMessage(LB_DIR, attr, (LPARAM)lpszWildCard); }
    int FindString(int nStartAfter, LPCTSTR lpszItem) const
    { return (int)SendMessage(LB_FINDSTRING, nStartAfter, (LPARAM)lpszItem); }
    int SelectString(int nStartAfter, LPCTSTR lpszItem)
    { return (int)SendMessage(LB_SELECTSTRING, nStartAfter, (LPARAM)lpszItem); }

    // Owner-drawn list boxes.
    virtual void DrawItem(LPDRAWITEMSTRUCT lpDrawItemStruct);
    virtual void MeasureItem(LPMEASUREITEMSTRUCT lpMeasureItemStruct);
    virtual int CompareItem(LPCOMPAREITEMSTRUCT lpCompareItemStruct);
    virtual void DeleteItem(LPDELETEITEMSTRUCT lpDeleteItemStruct);
    // LBS_WANTKEYBOARDINPUT: -2 handled, -1 default, else the item to select.
    virtual int VKeyToItem(UINT nKey, UINT nIndex);
    virtual int CharToItem(UINT nKey, UINT nIndex);

protected:
    virtual BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult) override;
};

class KXAFX_API CComboBox : public CWnd {
    DECLARE_DYNAMIC(CComboBox)
public:
    CComboBox() = default;
    virtual ~CComboBox();
    virtual BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);

    int GetCount() const { return (int)SendMessage(CB_GETCOUNT); }
    int GetCurSel() const { return (int)SendMessage(CB_GETCURSEL); }
    int SetCurSel(int nSelect) { return (int)SendMessage(CB_SETCURSEL, nSelect); }
    LCID GetLocale() const { return (LCID)SendMessage(CB_GETLOCALE); }
    LCID SetLocale(LCID nNewLocale) { return (LCID)SendMessage(CB_SETLOCALE, nNewLocale); }
    int GetTopIndex() const { return (int)SendMessage(CB_GETTOPINDEX); }
    int SetTopIndex(int nIndex) { return (int)SendMessage(CB_SETTOPINDEX, nIndex); }
    int InitStorage(int nItems, UINT nBytes) { return (int)SendMessage(CB_INITSTORAGE, nItems, nBytes); }
    void SetHorizontalExtent(UINT nExtent) { SendMessage(CB_SETHORIZONTALEXTENT, nExtent); }
    UINT GetHorizontalExtent() const { return (UINT)SendMessage(CB_GETHORIZONTALEXTENT); }
    int SetDroppedWidth(UINT nWidth) { return (int)SendMessage(CB_SETDROPPEDWIDTH, nWidth); }
    int GetDroppedWidth() const { return (int)SendMessage(CB_GETDROPPEDWIDTH); }
    BOOL GetComboBoxInfo(PCOMBOBOXINFO pcbi) const;

    // The edit part (CBS_DROPDOWN): selection in the low and high words, -1 without an edit.
    DWORD GetEditSel() const { return (DWORD)SendMessage(CB_GETEDITSEL); }
    BOOL LimitText(int nMaxChars) { return (BOOL)SendMessage(CB_LIMITTEXT, nMaxChars); }
    BOOL SetEditSel(int nStartChar, int nEndChar) { return (BOOL)SendMessage(CB_SETEDITSEL, 0, MAKELONG(nStartChar, nEndChar)); }
    BOOL SetCueBanner(LPCWSTR lpszText) { return (BOOL)SendMessage(CB_SETCUEBANNER, 0, (LPARAM)lpszText); }

    // Items
    DWORD_PTR GetItemData(int nIndex) const { return (DWORD_PTR)SendMessage(CB_GETITEMDATA, nIndex); }
    int SetItemData(int nIndex, DWORD_PTR dwItemData) { return (int)SendMessage(CB_SETITEMDATA, nIndex, (LPARAM)dwItemData); }
    void* GetItemDataPtr(int nIndex) const { return (void*)GetItemData(nIndex); }
    int SetItemDataPtr(int nIndex, void* pData) { return SetItemData(nIndex, (DWORD_PTR)pData); }
    int GetLBText(int nIndex, LPTSTR lpszText) const { return (int)SendMessage(CB_GETLBTEXT, nIndex, (LPARAM)lpszText); }
    // Empties rString for an index out of range.
    void GetLBText(int nIndex, CString& rString) const;
    int GetLBTextLen(int nIndex) const { return (int)SendMessage(CB_GETLBTEXTLEN, nIndex); }
    int SetItemHeight(int nIndex, UINT cyItemHeight) { return (int)SendMessage(CB_SETITEMHEIGHT, nIndex, MAKELONG(cyItemHeight, 0)); }
    int GetItemHeight(int nIndex) const { return (int)SendMessage(CB_GETITEMHEIGHT, nIndex); }
    int FindStringExact(int nIndexStart, LPCTSTR lpszFind) const
    { return (int)SendMessage(CB_FINDSTRINGEXACT, nIndexStart, (LPARAM)lpszFind); }
    int SetExtendedUI(BOOL bExtended = TRUE) { return (int)SendMessage(CB_SETEXTENDEDUI, bExtended); }
    BOOL GetExtendedUI() const { return (BOOL)SendMessage(CB_GETEXTENDEDUI); }
    void GetDroppedControlRect(LPRECT lprect) const { SendMessage(CB_GETDROPPEDCONTROLRECT, 0, (LPARAM)lprect); }
    BOOL GetDroppedState() const { return (BOOL)SendMessage(CB_GETDROPPEDSTATE); }
    void ShowDropDown(BOOL bShowIt = TRUE) { SendMessage(CB_SHOWDROPDOWN, bShowIt); }

    // Operations
    int AddString(LPCTSTR lpszString) { return (int)SendMessage(CB_ADDSTRING, 0, (LPARAM)lpszString); }
    int DeleteString(UINT nIndex) { return (int)SendMessage(CB_DELETESTRING, nIndex); }
    int InsertString(int nIndex, LPCTSTR lpszString) { return (int)SendMessage(CB_INSERTSTRING, nIndex, (LPARAM)lpszString); }
    void ResetContent() { SendMessage(CB_RESETCONTENT); }
    int Dir(UINT attr, LPCTSTR lpszWildCard) { return (int)SendMessage(CB_DIR, attr, (LPARAM)lpszWildCard); }
    int FindString(int nStartAfter, LPCTSTR lpszString) const
    { return (int)SendMessage(CB_FINDSTRING, nStartAfter, (LPARAM)lpszString); }
    int SelectString(int nStartAfter, LPCTSTR lpszString)
    { return (int)SendMessage(CB_SELECTSTRING, nStartAfter, (LPARAM)lpszString); }
    void Clear() { SendMessage(WM_CLEAR); }
    void Copy() { SendMessage(WM_COPY); }
    void Cut() { SendMessage(WM_CUT); }
    void Paste() { SendMessage(WM_PASTE); }

    // Owner-drawn combo boxes.
    virtual void DrawItem(LPDRAWITEMSTRUCT lpDrawItemStruct);
    virtual void MeasureItem(LPMEASUREITEMSTRUCT lpMeasureItemStruct);
    virtual int CompareItem(LPCOMPAREITEMSTRUCT lpCompareItemStruct);
    virtual void DeleteItem(LPDELETEITEMSTRUCT lpDeleteItemStruct);

protected:
    virtual BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult) override;
};

class KXAFX_API CScrollBar : public CWnd {
    DECLARE_DYNAMIC(CScrollBar)
public:
    CScrollBar() = default;
    virtual ~CScrollBar();
    virtual BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);

    int GetScrollPos() const { return ::GetScrollPos(m_hWnd, SB_CTL); }
    int SetScrollPos(int nPos, BOOL bRedraw = TRUE) { return ::SetScrollPos(m_hWnd, SB_CTL, nPos, bRedraw); }
    void GetScrollRange(LPINT lpMinPos, LPINT lpMaxPos) const { ::GetScrollRange(m_hWnd, SB_CTL, lpMinPos, lpMaxPos); }
    void SetScrollRange(int nMinPos, int nMaxPos, BOOL bRedraw = TRUE)
    { ::SetScrollRange(m_hWnd, SB_CTL, nMinPos, nMaxPos, bRedraw); }
    void ShowScrollBar(BOOL bShow = TRUE) { ::ShowScrollBar(m_hWnd, SB_CTL, bShow); }
    BOOL EnableScrollBar(UINT nArrowFlags = ESB_ENABLE_BOTH) { return ::EnableScrollBar(m_hWnd, SB_CTL, nArrowFlags); }
    BOOL SetScrollInfo(LPSCROLLINFO lpScrollInfo, BOOL bRedraw = TRUE)
    { return ::SetScrollInfo(m_hWnd, SB_CTL, lpScrollInfo, bRedraw); }
    BOOL GetScrollInfo(LPSCROLLINFO lpScrollInfo, UINT nMask = SIF_ALL);
    // The largest position a user can reach: nMax - max(nPage - 1, 0).
    int GetScrollLimit();
};
