#include "KxUiGridCell2.h"
#include "KxUiGridCtrl2.h"
#include <afxcmn.h>

IMPLEMENT_DYNAMIC(KxUiGridCellBase2, CObject)
IMPLEMENT_DYNCREATE(KxUiGridCell2, KxUiGridCellBase2)
IMPLEMENT_DYNCREATE(KxUiGridDefaultCell2, KxUiGridCell2)

namespace {

const DWORD kUnset = 0xFFFFFFFF;
const COLORREF kHotBk = RGB(236, 251, 255);
const COLORREF kHotFrame = RGB(142, 230, 255);

// The one font object every cell with a font of its own draws with (rebuilt per use).
CFont& SharedCellFont()
{
    static CFont s_font;
    return s_font;
}

// Floor division: the image offset may be negative when the image is wider than the cell is
// high, and must round towards minus infinity like the centring it stands for.
int FloorDiv(int a, int b)
{
    int q = a / b;
    if ((a % b != 0) && ((a < 0) != (b < 0)))
        --q;
    return q;
}

void DrawTriangle(CDC* pDC, int left, int top, int s, bool bUp, COLORREF clr)
{
    POINT pts[3];
    if (bUp) {
        pts[0] = {left + s / 2, top};
        pts[1] = {left + s, top + s};
        pts[2] = {left, top + s};
    } else {
        pts[0] = {left, top};
        pts[1] = {left + s, top};
        pts[2] = {left + s / 2, top + s};
    }
    CPen pen(PS_SOLID, 1, clr);
    CBrush brush(clr);
    CPen* pOldPen = pDC->SelectObject(&pen);
    CBrush* pOldBrush = pDC->SelectObject(&brush);
    pDC->Polygon(pts, 3);
    pDC->SelectObject(pOldBrush);
    pDC->SelectObject(pOldPen);
}

}  // namespace

// ---------------------------------------------------------------------------------------------
// KxUiGridCellBase2

KxUiGridCellBase2::KxUiGridCellBase2() : m_nState(GVIS_HOT) {}

KxUiGridCellBase2::~KxUiGridCellBase2() {}

void KxUiGridCellBase2::SetState(DWORD nState)
{
    m_nState = nState;
}

DWORD KxUiGridCellBase2::GetState() const
{
    return m_nState;
}

LPCTSTR KxUiGridCellBase2::GetTipText() const
{
    return GetText();
}

KxUiGridCellBase2* KxUiGridCellBase2::GetDefaultCell() const
{
    KxUiGridCtrl2* pGrid = GetGrid();
    if (pGrid == NULL)
        return NULL;
    return pGrid->GetDefaultCell(IsFixedRow() != 0, IsFixedCol() != 0);
}

KxUiGridCellBase2& KxUiGridCellBase2::operator=(const KxUiGridCellBase2& cell)
{
    if (this == &cell)
        return *this;
    SetGrid(cell.GetGrid());
    SetText(cell.GetText());
    SetImage(cell.GetImage());
    SetData(cell.GetData());
    SetState(cell.GetState());
    SetFormat(cell.GetFormat());
    SetTextClr(cell.GetTextClr());
    SetBackClr(cell.GetBackClr());
    if (KxUiGridCell2* pThis = dynamic_cast<KxUiGridCell2*>(this)) {
        pThis->SetHotBkClr(cell.GetHotBkClr());
        pThis->SetHotFrameClr(cell.GetHotFrameClr());
    }
    SetFont(cell.IsDefaultFont() ? NULL : cell.GetFont());
    SetMargin(cell.GetMargin());
    return *this;
}

void KxUiGridCellBase2::Reset()
{
    m_nState = GVIS_HOT;
}

BOOL KxUiGridCellBase2::Draw(CDC* pDC, int nRow, int nCol, CRect rect, BOOL /*bEraseBkgnd*/)
{
    KxUiGridCtrl2* pGrid = GetGrid();
    if (pGrid == NULL || pDC == NULL || pDC->GetSafeHdc() == NULL || rect.Width() <= 0 || rect.Height() <= 0)
        return FALSE;
    KxUiGridDefaultCell2* pDefault = static_cast<KxUiGridDefaultCell2*>(GetDefaultCell());
    if (pDefault == NULL)
        return FALSE;

    _GV2_DRAWCELL dc;
    dc.pDC = pDC;
    dc.pDefaultCell = pDefault;
    dc.pGrid = pGrid;
    dc.nRow = nRow;
    dc.nCol = nCol;
    dc.rect = rect;
    dc.bFocusFrame = (IsFocused() || IsDropHighlighted()) && pGrid->GetFrameFocusCell();
    dc.bSelected = IsSelected() != 0;
    dc.bHot = dc.bHotFrame = false;
    canDrawHot(nRow, nCol, dc.bFocusFrame, dc.bHot, dc.bHotFrame);
    dc.crText = getDrawTextColor(pDefault, dc.bHot, dc.bSelected);
    dc.crBk = getDrawBkColor(pDefault, dc.bHot, dc.bSelected);
    dc.bBkClr = dc.crBk != CLR_DEFAULT;

    const int nSaved = pDC->SaveDC();
    const BOOL bResult = DrawItem(dc);
    pDC->RestoreDC(nSaved);
    return bResult;
}

bool KxUiGridCellBase2::canDrawHot(int nRow, int nCol, bool bFocusFrame, bool& bHot, bool& bHotFrame)
{
    bHot = bHotFrame = false;
    KxUiGridCtrl2* pGrid = GetGrid();
    if (pGrid == NULL || !IsHot() || IsReadOnly() || IsFixed())
        return false;
    const KxUiCellID2 hot = pGrid->GetHotCell();
    if (!hot.IsValid() || hot != KxUiCellID2(nRow, nCol))
        return false;
    bHot = true;
    bHotFrame = !bFocusFrame;
    return true;
}

COLORREF KxUiGridCellBase2::getDrawTextColor(KxUiGridDefaultCell2* pDefaultCell, bool bHot, bool bSelected)
{
    if (pDefaultCell == NULL)
        return RGB(255, 0, 0);  // marker: a cell drawn without its default cell
    if (bSelected && !bHot)
        return ::GetSysColor(COLOR_HIGHLIGHTTEXT);
    const COLORREF clr = GetTextClr();
    return clr == CLR_DEFAULT ? pDefaultCell->GetTextClr() : clr;
}

COLORREF KxUiGridCellBase2::getDrawBkColor(KxUiGridDefaultCell2* pDefaultCell, bool bHot, bool bSelected)
{
    if (bHot)
        return GetHotBkClr();
    if (bSelected)
        return ::GetSysColor(COLOR_HIGHLIGHT);
    const COLORREF clr = GetBackClr();
    if (clr != CLR_DEFAULT || pDefaultCell == NULL)
        return clr;
    return pDefaultCell->GetBackClr();
}

void KxUiGridCellBase2::drawFrameRect(const _GV2_DRAWCELL& dc)
{
    COLORREF clr;
    if (dc.bFocusFrame)
        clr = dc.crText;
    else if (dc.bHotFrame)
        clr = GetHotFrameClr();
    else
        return;
    CBrush brush;
    if (!brush.CreateSolidBrush(clr))
        return;
    dc.pDC->FrameRect(&dc.rect, &brush);
}

BOOL KxUiGridCellBase2::DrawItem(const _GV2_DRAWCELL& dc)
{
    CDC* pDC = dc.pDC;
    KxUiGridCtrl2* pGrid = dc.pGrid;
    CRect rect(dc.rect);
    pDC->SetBkMode(TRANSPARENT);

    if (dc.bBkClr) {
        CRect rcFill(rect);
        rcFill.right++;
        rcFill.bottom++;
        if (dc.bSelected) {
            pDC->FillSolidRect(&rcFill, dc.crBk);
        } else {
            CBrush brush;
            if (brush.CreateSolidBrush(dc.crBk))
                pDC->FillRect(&rcFill, &brush);
        }
    }
    drawFrameRect(dc);
    pDC->SetTextColor(dc.crText);

    if (IsFixed() && pGrid->GetFixedCellRelief()) {
        const KxUiCellID2 focus = pGrid->GetFocusCell();
        if (pGrid->GetTrackFocusCell() && focus.IsValid() && (focus.row == dc.nRow || focus.col == dc.nCol)) {
            // The headers of the focus row and column look pressed.
            rect.right++;
            rect.bottom++;
            pDC->DrawEdge(&rect, BDR_SUNKENINNER, BF_RECT);
            rect.DeflateRect(1, 1);
        } else {
            CPen penLight(PS_SOLID, 1, ::GetSysColor(COLOR_3DHIGHLIGHT));
            CPen penDark(PS_SOLID, 1, ::GetSysColor(COLOR_3DDKSHADOW));
            CPen* pOld = pDC->SelectObject(&penLight);
            pDC->MoveTo(rect.right, rect.top);
            pDC->LineTo(rect.left, rect.top);
            pDC->LineTo(rect.left, rect.bottom);
            pDC->SelectObject(&penDark);
            pDC->MoveTo(rect.right, rect.top);
            pDC->LineTo(rect.right, rect.bottom);
            pDC->LineTo(rect.left, rect.bottom);
            pDC->SelectObject(pOld);
            rect.DeflateRect(1, 1);
        }
    }

    if (!pDC->IsPrinting()) {
        if (CFont* pFont = GetFontObject())
            pDC->SelectObject(pFont);
    }

    const int nMargin = static_cast<int>(GetMargin());
    rect.DeflateRect(nMargin, nMargin);
    rect.right++;
    rect.bottom++;

    CImageList* pImages = pGrid->GetImageList();
    if (pImages != NULL && pImages->GetSafeHandle() != NULL && GetImage() >= 0) {
        IMAGEINFO info;
        if (pImages->GetImageInfo(GetImage(), &info)) {
            const int cx = info.rcImage.right - info.rcImage.left;
            const int cy = info.rcImage.bottom - info.rcImage.top;
            const int height = rect.Height();
            if (height >= cy && rect.Width() >= cx) {
                // Centred in a square box as wide as the cell is high, at the left edge.
                const CPoint pt(rect.left + FloorDiv(height - cx, 2), rect.top + FloorDiv(height - cy, 2));
                pImages->Draw(pDC, GetImage(), pt, ILD_NORMAL);
            }
        }
    }

    if (dc.nRow == 0 && dc.nCol == pGrid->GetSortColumn()) {
        int s = pDC->GetTextExtent(_T("M"), 1).cy - 4;
        if (s >= rect.Height())
            s = rect.Height() - 4;
        if (s > 0) {
            const int top = rect.bottom - 2 - s;
            int left;
            LOGFONT* plf = GetFont();
            if (plf != NULL && plf->lfEscapement == 900) {
                left = (rect.left + rect.right - s) / 2;
            } else {
                left = rect.right - s;
                rect.right -= s;
            }
            const bool bUp = pGrid->GetSortAscending() != FALSE;
            DrawTriangle(pDC, left + 1, top + 1, s, bUp, ::GetSysColor(COLOR_3DHIGHLIGHT));
            DrawTriangle(pDC, left, top, s, bUp, ::GetSysColor(COLOR_3DSHADOW));
        }
    }

    CRect rcText(rect);
    if (GetTextRect(&rcText) != TRUE)
        return TRUE;
    rcText.right++;
    rcText.bottom++;
    pDC->DrawText(GetText(), -1, &rcText, GetFormat() | DT_NOPREFIX);
    return TRUE;
}

BOOL KxUiGridCellBase2::GetTextRect(LPRECT pRect)
{
    KxUiGridCtrl2* pGrid = GetGrid();
    if (pRect != NULL && GetImage() >= 0 && pGrid != NULL) {
        CImageList* pImages = pGrid->GetImageList();
        IMAGEINFO info;
        if (pImages != NULL && pImages->GetSafeHandle() != NULL && pImages->GetImageInfo(GetImage(), &info))
            pRect->left += (info.rcImage.right - info.rcImage.left + 1) + static_cast<int>(GetMargin());
    }
    return TRUE;
}

BOOL KxUiGridCellBase2::GetTipTextRect(LPRECT pRect)
{
    return GetTextRect(pRect);
}

CSize KxUiGridCellBase2::GetTextExtent(LPCTSTR str, CDC* pDC)
{
    KxUiGridCtrl2* pGrid = GetGrid();
    CWnd* pWnd = (pGrid != NULL && pGrid->GetSafeHwnd() != NULL) ? static_cast<CWnd*>(pGrid) : NULL;
    CClientDC screen(pWnd);
    if (pDC == NULL)
        pDC = &screen;
    const int nMargin = static_cast<int>(GetMargin());
    CFont* pOldFont = NULL;
    if (CFont* pFont = GetFontObject())
        pOldFont = pDC->SelectObject(pFont);
    CSize size(0, 0);
    const DWORD nFormat = GetFormat();
    if (str == NULL || *str == 0) {
        size = pDC->GetTextExtent(_T(" "), 1);
        size.cx = 0;
    } else if (nFormat & DT_SINGLELINE) {
        size = pDC->GetTextExtent(str, lstrlen(str));
    } else {
        CRect rc(0, 0, 0, 0);
        pDC->DrawText(str, -1, &rc, (nFormat & ~(DT_WORDBREAK | DT_END_ELLIPSIS)) | DT_CALCRECT | DT_NOPREFIX);
        size = rc.Size();
    }
    if (pOldFont != NULL)
        pDC->SelectObject(pOldFont);
    size.cx += 2 * nMargin + 1;
    size.cy += 2 * nMargin + 1;
    return size;
}

CSize KxUiGridCellBase2::GetCellExtent(CDC* pDC)
{
    CSize size = GetTextExtent(GetText(), pDC);
    KxUiGridCtrl2* pGrid = GetGrid();
    CImageList* pImages = pGrid != NULL ? pGrid->GetImageList() : NULL;
    IMAGEINFO info;
    if (GetImage() >= 0 && pImages != NULL && pImages->GetSafeHandle() != NULL &&
        pImages->GetImageInfo(GetImage(), &info)) {
        const int cx = info.rcImage.right - info.rcImage.left;
        const int cy = info.rcImage.bottom - info.rcImage.top;
        const int nMargin = static_cast<int>(GetMargin());
        // The text starts after the image, its gap and a margin (GetTextRect).
        size.cx += cx + 1 + nMargin;
        if (size.cy < cy + 2 * nMargin + 1)
            size.cy = cy + 2 * nMargin + 1;
    }
    if (IsFixed())
        size += CSize(2, 2);  // the relief frame
    return size;
}

BOOL KxUiGridCellBase2::Edit(int, int, CRect, CPoint, UINT, UINT)
{
    return FALSE;
}

BOOL KxUiGridCellBase2::ValidateEdit(LPCTSTR)
{
    return TRUE;
}

void KxUiGridCellBase2::EndEdit() {}

BOOL KxUiGridCellBase2::PrintCell(CDC* pDC, int nRow, int nCol, CRect rect)
{
    if (pDC == NULL)
        return FALSE;
    const BOOL bWasPrinting = pDC->m_bPrinting;
    pDC->m_bPrinting = TRUE;
    // Printed cells show content, not the screen's hover and selection highlights.
    const DWORD nState = GetState();
    SetState(nState & ~(GVIS_SELECTED | GVIS_FOCUSED | GVIS_DROPHILITED));
    const BOOL bResult = Draw(pDC, nRow, nCol, rect, TRUE);
    SetState(nState);
    pDC->m_bPrinting = bWasPrinting;
    return bResult;
}

void KxUiGridCellBase2::OnEndEdit() {}
void KxUiGridCellBase2::OnMouseEnter(int, int) {}
void KxUiGridCellBase2::OnMouseOver(int, int) {}
void KxUiGridCellBase2::OnMouseLeave(int, int) {}
void KxUiGridCellBase2::OnClick(CPoint) {}
void KxUiGridCellBase2::OnClickDown(CPoint) {}
void KxUiGridCellBase2::OnRClick(CPoint) {}
void KxUiGridCellBase2::OnDblClick(CPoint) {}

BOOL KxUiGridCellBase2::OnSetCursor()
{
    ::SetCursor(::LoadCursor(NULL, IDC_ARROW));
    return TRUE;
}

LRESULT KxUiGridCellBase2::SendMessageToParent(int nRow, int nCol, int nMessage)
{
    KxUiGridCtrl2* pGrid = GetGrid();
    return pGrid != NULL ? pGrid->SendMessageToParent(nRow, nCol, nMessage) : 0;
}

// ---------------------------------------------------------------------------------------------
// KxUiGridCell2

KxUiGridCell2::KxUiGridCell2() : m_plfFont(NULL), m_pGrid(NULL), m_pEditWnd(NULL)
{
    Reset();
}

KxUiGridCell2::~KxUiGridCell2()
{
    delete m_plfFont;
}

void KxUiGridCell2::Reset()
{
    KxUiGridCellBase2::Reset();
    m_strText.Empty();
    m_lParam = 0;
    m_nImage = -1;
    m_nFormat = kUnset;
    m_crFgClr = CLR_DEFAULT;
    m_crBkClr = CLR_DEFAULT;
    m_crHotBkClr = kHotBk;
    m_crHotFrameClr = kHotFrame;
    delete m_plfFont;
    m_plfFont = NULL;
    m_nMargin = kUnset;
    m_bEditing = FALSE;
    m_pGrid = NULL;
    m_pEditWnd = NULL;
}

void KxUiGridCell2::SetText(LPCTSTR szText)
{
    m_strText = szText != NULL ? szText : _T("");
}

LPCTSTR KxUiGridCell2::GetText() const
{
    return m_strText.IsEmpty() ? _T("") : static_cast<LPCTSTR>(m_strText);
}

void KxUiGridCell2::SetFont(const LOGFONT* plf)
{
    if (plf == NULL) {
        delete m_plfFont;
        m_plfFont = NULL;
        return;
    }
    if (m_plfFont == NULL)
        m_plfFont = new LOGFONT;
    if (m_plfFont != plf)
        *m_plfFont = *plf;
}

DWORD KxUiGridCell2::GetFormat() const
{
    if (m_nFormat != kUnset)
        return m_nFormat;
    KxUiGridCellBase2* pDefault = GetDefaultCell();
    return pDefault != NULL ? pDefault->GetFormat() : 0;
}

UINT KxUiGridCell2::GetMargin() const
{
    if (m_nMargin != kUnset)
        return m_nMargin;
    KxUiGridCellBase2* pDefault = GetDefaultCell();
    return pDefault != NULL ? pDefault->GetMargin() : 0;
}

LOGFONT* KxUiGridCell2::GetFont() const
{
    if (m_plfFont != NULL)
        return m_plfFont;
    KxUiGridCellBase2* pDefault = GetDefaultCell();
    return pDefault != NULL ? pDefault->GetFont() : NULL;
}

CFont* KxUiGridCell2::GetFontObject() const
{
    if (m_plfFont != NULL) {
        CFont& font = SharedCellFont();
        font.DeleteObject();
        return font.CreateFontIndirect(m_plfFont) ? &font : NULL;
    }
    KxUiGridCellBase2* pDefault = GetDefaultCell();
    return pDefault != NULL ? pDefault->GetFontObject() : NULL;
}

void KxUiGridCell2::EndEdit()
{
    // The in-place editor ends itself when it loses the focus: hand the focus back.
    if (m_pEditWnd != NULL && m_pEditWnd->GetSafeHwnd() != NULL && m_pGrid != NULL && m_pGrid->GetSafeHwnd())
        m_pGrid->SetFocus();
}

void KxUiGridCell2::OnEndEdit()
{
    m_bEditing = FALSE;
    m_pEditWnd = NULL;
}

// ---------------------------------------------------------------------------------------------
// KxUiGridDefaultCell2

KxUiGridDefaultCell2::KxUiGridDefaultCell2() : m_Size(30, 10), m_dwStyle(0)
{
    m_nFormat = DT_LEFT | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX | DT_END_ELLIPSIS;
    m_crFgClr = CLR_DEFAULT;
    m_crBkClr = CLR_DEFAULT;

    // The structure grew by the padded border width in version 6; an older system refuses
    // the longer size.
    OSVERSIONINFOW vi = {};
    vi.dwOSVersionInfoSize = sizeof(vi);
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
    const BOOL bVersion = ::GetVersionExW(&vi);
#pragma GCC diagnostic pop
    NONCLIENTMETRICSW ncm = {};
    ncm.cbSize = (bVersion && vi.dwMajorVersion >= 6) ? 504 : 500;
    if (::SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, ncm.cbSize, &ncm, 0))
        SetFont(&ncm.lfMessageFont);
}

KxUiGridDefaultCell2::~KxUiGridDefaultCell2() {}

void KxUiGridDefaultCell2::SetFont(const LOGFONT* plf)
{
    if (plf == NULL)
        return;
    m_Font.DeleteObject();
    m_Font.CreateFontIndirect(plf);
    KxUiGridCell2::SetFont(plf);

    HDC hScreen = ::GetDC(NULL);
    if (hScreen == NULL) {
        measureFont(NULL);
        return;
    }
    CDC dc;
    dc.Attach(hScreen);
    measureFont(&dc);
    ::ReleaseDC(NULL, dc.Detach());
}

void KxUiGridDefaultCell2::measureFont(CDC* pDC)
{
    if (pDC == NULL || pDC->GetSafeHdc() == NULL) {
        m_nMargin = 3;
        m_Size = CSize(40, 16);
        return;
    }
    CFont* pOld = m_Font.GetSafeHandle() != NULL ? pDC->SelectObject(&m_Font) : NULL;
    m_nMargin = static_cast<UINT>(pDC->GetTextExtent(_T(" "), 1).cx);
    m_Size = pDC->GetTextExtent(_T(" XXXXXXXXXXXX "), 14);
    m_Size.cy = m_Size.cy * 3 / 2;
    if (pOld != NULL)
        pDC->SelectObject(pOld);
}

CFont* KxUiGridDefaultCell2::GetFontObject() const
{
    return m_Font.GetSafeHandle() != NULL ? const_cast<CFont*>(&m_Font) : NULL;
}
