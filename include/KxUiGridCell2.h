// Grid cells: KxUiGridCellBase2 (state word and shared behaviour), KxUiGridCell2 (an
// ordinary text cell) and KxUiGridDefaultCell2 (the template a grid's cells inherit from).
//
// Model: a cell stores only what was set on it. A format or margin of 0xFFFFFFFF, a colour
// of CLR_DEFAULT and a null font mean "unset" and are read through the cell's default cell,
// chosen by its fixed bits: corner, fixed row, fixed column or ordinary. Restyling one of a
// grid's four default cells therefore restyles every cell of that kind at once.
//
//     KxUiGridCell2* cell = static_cast<KxUiGridCell2*>(grid.GetCell(3, 2));
//     cell->SetText(L"42");
//     cell->SetBackClr(RGB(255, 240, 200));     // everything else still from the default cell
//     grid.GetDefaultCell(FALSE, FALSE)->SetTextClr(RGB(0, 0, 128));   // all ordinary cells
//
// The colours a cell is drawn with are decided at drawing time from its state and the grid:
// hot (under the mouse) beats selected, selected beats the cell's own background.
#pragma once
#include "KxUiCellID2.h"

class KXUI_API KxUiGridCellBase2 : public CObject {
    DECLARE_DYNAMIC(KxUiGridCellBase2)
public:
    KxUiGridCellBase2();
    ~KxUiGridCellBase2() override;

    // ---- overridables, in this order ----
    virtual void SetText(LPCTSTR szText) = 0;
    virtual void SetImage(int nImage) = 0;
    virtual void SetData(LPARAM lParam) = 0;
    // Stores the state word (GVIS_* bits).
    virtual void SetState(DWORD nState);
    virtual void SetFormat(DWORD nFormat) = 0;
    virtual void SetTextClr(COLORREF clr) = 0;
    virtual void SetBackClr(COLORREF clr) = 0;
    virtual void SetFont(const LOGFONT* plf) = 0;
    virtual void SetMargin(UINT nMargin) = 0;
    virtual void SetGrid(KxUiGridCtrl2* pGrid) = 0;
    // Told by the grid where the cell now stands (SetCell).
    virtual void SetCoords(int nRow, int nCol) = 0;

    virtual LPCTSTR GetText() const = 0;
    // Text of the title tip; the cell's text.
    virtual LPCTSTR GetTipText() const;
    virtual int GetImage() const = 0;
    virtual LPARAM GetData() const = 0;
    virtual DWORD GetState() const;
    virtual DWORD GetFormat() const = 0;
    virtual COLORREF GetTextClr() const = 0;
    virtual COLORREF GetBackClr() const = 0;
    virtual COLORREF GetHotBkClr() const = 0;
    virtual COLORREF GetHotFrameClr() const = 0;
    virtual LOGFONT* GetFont() const = 0;
    virtual CFont* GetFontObject() const = 0;
    virtual KxUiGridCtrl2* GetGrid() const = 0;
    virtual CWnd* GetEditWnd() const = 0;
    virtual UINT GetMargin() const = 0;
    // The grid's default cell for this cell's kind (corner, fixed row, fixed column,
    // ordinary) by its fixed bits; null without a grid.
    virtual KxUiGridCellBase2* GetDefaultCell() const;
    virtual BOOL IsDefaultFont() const = 0;
    virtual BOOL IsEditing() const = 0;

    // State bit tests: the bit masked out of the state word, not a normalised 1.
    virtual BOOL IsFocused() const { return static_cast<BOOL>(GetState() & GVIS_FOCUSED); }
    virtual BOOL IsFixed() const { return static_cast<BOOL>(GetState() & GVIS_FIXED); }
    virtual BOOL IsFixedCol() const { return static_cast<BOOL>(GetState() & GVIS_FIXEDCOL); }
    virtual BOOL IsFixedRow() const { return static_cast<BOOL>(GetState() & GVIS_FIXEDROW); }
    virtual BOOL IsSelected() const { return static_cast<BOOL>(GetState() & GVIS_SELECTED); }
    virtual BOOL IsHot() const { return static_cast<BOOL>(GetState() & GVIS_HOT); }
    virtual BOOL IsReadOnly() const { return static_cast<BOOL>(GetState() & GVIS_READONLY); }
    virtual BOOL IsModified() const { return static_cast<BOOL>(GetState() & GVIS_MODIFIED); }
    virtual BOOL IsDropHighlighted() const { return static_cast<BOOL>(GetState() & GVIS_DROPHILITED); }

    // Copies every attribute through the getters and setters.
    virtual KxUiGridCellBase2& operator=(const KxUiGridCellBase2& cell);
    // State back to GVIS_HOT alone.
    virtual void Reset();

    // Draws the cell from the record Draw filled; TRUE when drawn.
    virtual BOOL DrawItem(const _GV2_DRAWCELL& dc);
    // Narrows a rectangle (the cell less its margin) to where the text goes.
    virtual BOOL GetTextRect(LPRECT pRect);
    virtual BOOL GetTipTextRect(LPRECT pRect);
    // Size of a text in this cell's font and format, margins included.
    virtual CSize GetTextExtent(LPCTSTR str, CDC* pDC = NULL);
    // Size the cell needs for its text and image (auto-sizing).
    virtual CSize GetCellExtent(CDC* pDC);

    // Editing: the base cell is not editable.
    virtual BOOL Edit(int nRow, int nCol, CRect rect, CPoint point, UINT nID, UINT nChar);
    virtual BOOL ValidateEdit(LPCTSTR str);
    virtual void EndEdit();
    // Draws the cell on a printer context.
    virtual BOOL PrintCell(CDC* pDC, int nRow, int nCol, CRect rect);
    // The in-place edit has closed.
    virtual void OnEndEdit();

    // Mouse hooks (nothing in the base).
    virtual void OnMouseEnter(int nRow, int nCol);
    virtual void OnMouseOver(int nRow, int nCol);
    virtual void OnMouseLeave(int nRow, int nCol);
    virtual void OnClick(CPoint PointCellRelative);
    virtual void OnClickDown(CPoint PointCellRelative);
    virtual void OnRClick(CPoint PointCellRelative);
    virtual void OnDblClick(CPoint PointCellRelative);
    // Sets the arrow cursor; TRUE.
    virtual BOOL OnSetCursor();

    // ---- operations ----
    // Fills a _GV2_DRAWCELL and calls DrawItem with the DC's state saved around it; FALSE
    // (nothing drawn) without a grid, DC or default cell or for an empty rectangle.
    BOOL Draw(CDC* pDC, int nRow, int nCol, CRect rect, BOOL bEraseBkgnd = TRUE);
    // The grid's notification to its owner, for this cell.
    LRESULT SendMessageToParent(int nRow, int nCol, int nMessage);

protected:
    // Text colour to draw with: the cell's or its default's; highlight text when selected and
    // not hot; red when there is no default cell.
    COLORREF getDrawTextColor(KxUiGridDefaultCell2* pDefaultCell, bool bHot, bool bSelected);
    // Background to draw with: hot, highlight when selected, the cell's or its default's.
    COLORREF getDrawBkColor(KxUiGridDefaultCell2* pDefaultCell, bool bHot, bool bSelected);
    // Whether the cell is drawn hot, and with a hot frame.
    bool canDrawHot(int nRow, int nCol, bool bFocusFrame, bool& bHot, bool& bHotFrame);
    // The focus frame or, failing that, the hot frame.
    void drawFrameRect(const _GV2_DRAWCELL& dc);

    DWORD m_nState;
};

class KXUI_API KxUiGridCell2 : public KxUiGridCellBase2 {
    DECLARE_DYNCREATE(KxUiGridCell2)
public:
    KxUiGridCell2();
    ~KxUiGridCell2() override;
    // Copies through the getters and setters (the owned font is copied, never shared).
    KxUiGridCell2& operator=(const KxUiGridCell2& cell)
    {
        KxUiGridCellBase2::operator=(cell);
        return *this;
    }
    KxUiGridCellBase2& operator=(const KxUiGridCellBase2& cell) override { return KxUiGridCellBase2::operator=(cell); }

    void SetText(LPCTSTR szText) override;
    void SetImage(int nImage) override { m_nImage = nImage; }
    void SetData(LPARAM lParam) override { m_lParam = lParam; }
    void SetFormat(DWORD nFormat) override { m_nFormat = nFormat; }
    void SetTextClr(COLORREF clr) override { m_crFgClr = clr; }
    void SetBackClr(COLORREF clr) override { m_crBkClr = clr; }
    // Null returns the cell to its default cell's font.
    void SetFont(const LOGFONT* plf) override;
    void SetMargin(UINT nMargin) override { m_nMargin = nMargin; }
    void SetGrid(KxUiGridCtrl2* pGrid) override { m_pGrid = pGrid; }
    // An ordinary cell does not keep its position.
    void SetCoords(int, int) override {}

    LPCTSTR GetText() const override;
    int GetImage() const override { return m_nImage; }
    LPARAM GetData() const override { return m_lParam; }
    // Own format, or the default cell's when unset (0 without one).
    DWORD GetFormat() const override;
    COLORREF GetTextClr() const override { return m_crFgClr; }
    COLORREF GetBackClr() const override { return m_crBkClr; }
    COLORREF GetHotBkClr() const override { return m_crHotBkClr; }
    COLORREF GetHotFrameClr() const override { return m_crHotFrameClr; }
    // Own LOGFONT, or the default cell's.
    LOGFONT* GetFont() const override;
    // With a font of its own: the one font object all cells of the process share, re-created
    // from this cell's LOGFONT (valid until the next such call). Else the default cell's.
    CFont* GetFontObject() const override;
    KxUiGridCtrl2* GetGrid() const override { return m_pGrid; }
    CWnd* GetEditWnd() const override { return m_pEditWnd; }
    UINT GetMargin() const override;
    BOOL IsDefaultFont() const override { return m_plfFont == NULL; }
    BOOL IsEditing() const override { return m_bEditing; }

    void Reset() override;
    void EndEdit() override;
    void OnEndEdit() override;

    void SetHotBkClr(COLORREF clr) { m_crHotBkClr = clr; }
    void SetHotFrameClr(COLORREF clr) { m_crHotFrameClr = clr; }

protected:
    CString m_strText;
    LPARAM m_lParam;
    int m_nImage;
    DWORD m_nFormat;
    COLORREF m_crFgClr;
    COLORREF m_crBkClr;
    COLORREF m_crHotBkClr;
    COLORREF m_crHotFrameClr;
    LOGFONT* m_plfFont;   // owned, null = default font
    UINT m_nMargin;
    BOOL m_bEditing;
    KxUiGridCtrl2* m_pGrid;
    CWnd* m_pEditWnd;
};

class KXUI_API KxUiGridDefaultCell2 : public KxUiGridCell2 {
    DECLARE_DYNCREATE(KxUiGridDefaultCell2)
public:
    // Format DT_LEFT|DT_VCENTER|DT_SINGLELINE|DT_NOPREFIX|DT_END_ELLIPSIS, the system's message
    // font, and the sizes that font gives.
    KxUiGridDefaultCell2();
    ~KxUiGridDefaultCell2() override;
    KxUiGridDefaultCell2& operator=(const KxUiGridDefaultCell2& cell)
    {
        KxUiGridCellBase2::operator=(cell);
        return *this;
    }

    // A default cell holds no data.
    void SetData(LPARAM) override {}
    void SetState(DWORD nState) override { m_nState = nState; }
    DWORD GetState() const override { return m_nState; }
    // Creates the font object; margin = width of a blank, size = extent of " XXXXXXXXXXXX "
    // with the height times 3/2 (margin 3, size 40 x 16 when no screen DC can be had).
    // Null does nothing.
    void SetFont(const LOGFONT* plf) override;
    LOGFONT* GetFont() const override { return m_plfFont; }
    CFont* GetFontObject() const override;

    virtual DWORD GetStyle() const { return m_dwStyle; }
    virtual void SetStyle(DWORD dwStyle) { m_dwStyle = dwStyle; }
    // Default column width and row height.
    virtual int GetWidth() const { return m_Size.cx; }
    virtual int GetHeight() const { return m_Size.cy; }
    virtual void SetWidth(int nWidth) { m_Size.cx = nWidth; }
    virtual void SetHeight(int nHeight) { m_Size.cy = nHeight; }

protected:
    // Margin and size from the current font measured on pDC; the fall-back values when
    // pDC is null.
    void measureFont(CDC* pDC);

    CSize m_Size;
    CFont m_Font;
    DWORD m_dwStyle;
};
