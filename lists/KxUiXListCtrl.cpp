// The extended list: rows of typed cells in an owner-data list view, painted cell by cell.
#include "KxUiXListCtrl.h"
#include "KxUiSortHeaderCtrl.h"
#include "KxUiWndProcMgr.h"
#include "KxUiXComboBoxEdit.h"
#include "KxUiXListBox.h"
#include "KxUiOXNumericEdit.h"
#include <commdlg.h>
#include <algorithm>

using namespace XControl;
using XData::SUBITEM;
using XData::SUBITEMARRAY;

namespace {

const UINT kEditorId = 0x7E01;  // child id of the open editor
const UINT kStateBits = 0x2F;   // focused, selected, cut, drop-highlighted and 0x20

bool isCheckKind(int nType)
{
    return nType == TypeCheckBox || nType == TypeCheckBoxBitmap || nType == TypeRadioH;
}

// Keys and focus of an editor window, turned into the list's registered messages. It is a hook
// rather than a message map entry so that one filter serves editors of every class (the plain
// edit, the numeric edits, the edit part of a combo) without deriving from each of them.
class EditorKeys : public KxUiWndProc {
public:
    EditorKeys(KxUiXListCtrl* pList, HWND hEditor) : m_pList(pList), m_hEditor(hEditor) { m_nAutoDelete = 1; }

    int windowProc(HWND, UINT message, WPARAM wParam, LPARAM, LRESULT& result) override
    {
        HWND hList = m_pList->GetSafeHwnd();
        if (message == WM_KEYDOWN) {
            switch (wParam) {
            case VK_RETURN:
            case VK_UP:
            case VK_DOWN:
                ::PostMessageW(hList, XM_VK_RETURN, wParam, 1);
                result = 0;
                return 1;
            case VK_ESCAPE:
                ::PostMessageW(hList, XM_VK_ESCAPE, 0, 0);
                result = 0;
                return 1;
            }
        } else if (message == WM_CHAR && (wParam == _T('\r') || wParam == 0x1B || wParam == _T('\n'))) {
            result = 0;  // the key was handled on its way down; no beep for the character
            return 1;
        }
        return 0;
    }

    void windowProcCallBack(HWND, UINT message, WPARAM wParam, LPARAM, LRESULT& result) override
    {
        if (message == WM_GETDLGCODE)
            result |= DLGC_WANTALLKEYS | DLGC_WANTARROWS;
        else if (message == WM_KILLFOCUS)
            m_pList->editorLostFocus(m_hEditor, (HWND)wParam);
    }

private:
    KxUiXListCtrl* m_pList;
    HWND m_hEditor;  // the editor window (a combo when the hook sits on its edit part)
};

// Gives an editor the list's font, the key filter (on hKeys, the window that gets the keys) and
// the focus, and hands it to the list.
void adoptEditor(KxUiXListCtrl* pList, CWnd* pEditor, HWND hKeys)
{
    if (CFont* pFont = pList->GetFont())
        pEditor->SetFont(pFont, FALSE);
    kxUiWndProcMgr().attach(hKeys, new EditorKeys(pList, pEditor->GetSafeHwnd()));
    pList->setEditor(pEditor);
    pEditor->SetFocus();
}

}  // namespace

SUBITEM& KxUiXListCtrl::defaultCell()
{
    static SUBITEM s_cell;
    return s_cell;
}

////////////////////////////////////////////////////////////////////////////
// Construction

IMPLEMENT_DYNAMIC(KxUiXListCtrl, KxUiListCtrlBase)

BEGIN_MESSAGE_MAP(KxUiXListCtrl, KxUiListCtrlBase)
    ON_WM_CREATE()
    ON_WM_DESTROY()
    ON_WM_PAINT()
    ON_MESSAGE(WM_PRINTCLIENT, &KxUiXListCtrl::OnPrintClient)
    ON_WM_LBUTTONDOWN()
    ON_WM_RBUTTONDOWN()
    ON_WM_MOUSEMOVE()
    ON_WM_MOUSEWHEEL()
    ON_WM_SIZE()
    ON_WM_HSCROLL()
    ON_WM_VSCROLL()
    ON_WM_KEYDOWN()
    ON_NOTIFY_REFLECT_EX(NM_CUSTOMDRAW, &KxUiXListCtrl::OnCustomDraw)
    ON_NOTIFY_REFLECT_EX(LVN_GETDISPINFOW, &KxUiXListCtrl::OnGetDispInfo)
    ON_NOTIFY_REFLECT_EX(LVN_BEGINDRAG, &KxUiXListCtrl::OnBeginDrag)
    ON_NOTIFY_REFLECT_EX(LVN_COLUMNCLICK, &KxUiXListCtrl::OnColumnClick)
    ON_NOTIFY_EX_RANGE(TTN_NEEDTEXTW, 0, 0xFFFF, &KxUiXListCtrl::OnToolTipText)
    ON_NOTIFY_EX_RANGE(TTN_NEEDTEXTA, 0, 0xFFFF, &KxUiXListCtrl::OnToolTipText)
    ON_REGISTERED_MESSAGE(XM_CREATE, &KxUiXListCtrl::OnXCreate)
    ON_REGISTERED_MESSAGE(XM_VK_RETURN, &KxUiXListCtrl::OnXReturn)
    ON_REGISTERED_MESSAGE(XM_VK_ESCAPE, &KxUiXListCtrl::OnXEscape)
    ON_REGISTERED_MESSAGE(XM_SETFOCUS, &KxUiXListCtrl::OnXSetFocus)
    ON_REGISTERED_MESSAGE(WM_RESIZE_COLUMN_XLISTCTRL, &KxUiXListCtrl::OnResizeColumn)
END_MESSAGE_MAP()

KxUiXListCtrl::KxUiXListCtrl()
    : m_handlers(10), m_bShowGrid(true), m_bDragging(false), m_pOldFont(nullptr), m_nCtrlItem(-1),
      m_nCtrlSubItem(-1), m_nScratchRow(-1), m_nScratchCol(-1), m_bScratchReused(false),
      m_bInsideDefaultClick(false), m_nPendingMessage(0), m_nPendingWParam(0), m_nPendingLParam(0),
      m_bInitialized(false), m_bClosingEditor(false), m_clrChosen(CLR_NONE), m_nToolRow(-1), m_nToolCol(-1)
{
    m_handlers.InitHashTable(10);
}

KxUiXListCtrl::~KxUiXListCtrl()
{
    // The editor and the tooltip are children of the list: the window goes first.
    if (m_hWnd != nullptr)
        DestroyWindow();
}

BOOL KxUiXListCtrl::PreCreateWindow(CREATESTRUCT& cs)
{
    // Rows live in the control: the list view only counts them and asks for texts.
    cs.style = (cs.style & ~LVS_TYPEMASK) | LVS_REPORT | LVS_OWNERDATA;
    return KxUiListCtrlBase::PreCreateWindow(cs);
}

BOOL KxUiXListCtrl::Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    return KxUiListCtrlBase::Create((dwStyle & ~LVS_TYPEMASK) | LVS_REPORT | LVS_OWNERDATA, rect, pParentWnd, nID);
}

int KxUiXListCtrl::OnCreate(LPCREATESTRUCT lpCreateStruct)
{
    if (KxUiListCtrlBase::OnCreate(lpCreateStruct) == -1)
        return -1;
    initList();
    return 0;
}

void KxUiXListCtrl::PreSubclassWindow()
{
    KxUiListCtrlBase::PreSubclassWindow();
    // The framework subclasses a window it creates before the window has processed WM_CREATE;
    // the list view then has no header yet and takes no styles, and OnCreate sets it up.
    if (SendMessage(LVM_GETHEADER) != 0)
        initList();
}

void KxUiXListCtrl::initList()
{
    if (m_bInitialized)
        return;
    m_bInitialized = true;
    SetExtendedStyle(LVS_EX_FULLROWSELECT | (m_bShowGrid ? LVS_EX_GRIDLINES : 0));
    addAllCtrl();
    if (m_toolTip.Create(this, TTS_ALWAYSTIP | TTS_NOPREFIX)) {
        CRect rc(0, 0, 0, 0);
        m_toolTip.AddTool(this, LPSTR_TEXTCALLBACK, &rc, 1);
        m_toolTip.Activate(TRUE);
    }
}

void KxUiXListCtrl::addAllCtrl()
{
    addControl(TypeEdit, TafFcts{fctCreateEditCtrl, fctEndEditEditCtrl, fctDrawEditCtrl});
    addControl(TypeEditNum, TafFcts{fctCreateEditNumCtrl, fctEndEditEditCtrl, fctDrawEditCtrl});
    addControl(TypeOxEditNum, TafFcts{fctCreateOxEditNumCtrl, fctEndEditEditCtrl, fctDrawEditCtrl});
    addControl(TypeComboBox, TafFcts{fctCreateComboBox, fctEndEditComboBox, fctDrawComboBoxCtrl});
    addControl(TypeComboBoxEdit, TafFcts{fctCreateComboBoxEdit, fctEndEditComboBoxEdit, fctDrawComboBoxEdit});
    addControl(TypeCheckBox, TafFcts{fctCreateCheckBox, fctEndEditCheckBox, fctDrawCheckBox});
    addControl(TypeCheckBoxBitmap, TafFcts{fctCreateCheckBoxBitmap, fctEndEditCheckBoxBitmap, fctDrawCheckBoxBitmap});
    addControl(TypeBitmap, TafFcts{fctCreateBitmap, fctEndEditBitmap, fctDrawBitmap});
    addControl(TypeColorDialog, TafFcts{fctCreateMyColorDialog, fctEndEditMyColorDialog, nullptr});
    addControl(TypeRadioV, TafFcts{fctCreateRadioButtonVertical, fctEndEditRadioButtonVertical, fctDrawRadioButton});
    addControl(TypeRadioH,
               TafFcts{fctCreateRadioButtonHorizontal, fctEndEditRadioButtonHorizontal, fctDrawRadioButton});
    addControl(TypeButton, TafFcts{fctCreateButton, fctEndEditButton, fctDrawButton});
}

void KxUiXListCtrl::addControl(int nType, const TafFcts& fcts)
{
    m_handlers.SetAt(nType, fcts);
}

bool KxUiXListCtrl::getControl(int nType, TafFcts& fcts) const
{
    return m_handlers.Lookup(nType, fcts) != FALSE;
}

void KxUiXListCtrl::OnDestroy()
{
    deleteCtrl(false);
    KxUiListCtrlBase::OnDestroy();
}

////////////////////////////////////////////////////////////////////////////
// Rows

void KxUiXListCtrl::syncItemCount()
{
    if (m_hWnd != nullptr)
        SetItemCountEx((int)m_rows.GetSize(), LVSICF_NOSCROLL);
}

int KxUiXListCtrl::InsertItem(const LVITEM* pItem)
{
    if (pItem == nullptr)
        return 0;
    SUBITEMARRAY* pRow = new SUBITEMARRAY;
    pRow->SetSize(GetColumnsCount());
    pRow->m_nState = (pItem->mask & LVIF_STATE) ? (pItem->state & (pItem->stateMask ? pItem->stateMask : ~0u)) : 0;
    pRow->m_nItemValue = (pItem->mask & LVIF_PARAM) ? (DWORD_PTR)pItem->lParam : 0;
    if ((pItem->mask & LVIF_TEXT) && pItem->pszText != nullptr && pItem->pszText != LPSTR_TEXTCALLBACKW &&
        pItem->iSubItem >= 0 && pItem->iSubItem < pRow->GetSize())
        (*pRow)[pItem->iSubItem].m_strText = pItem->pszText;
    int nRow = std::max(0, std::min(pItem->iItem, (int)m_rows.GetSize()));
    m_rows.InsertAt(nRow, pRow);
    syncItemCount();
    if (pRow->m_nState & kStateBits)
        CListCtrl::SetItemState(nRow, pRow->m_nState & kStateBits, kStateBits);
    return 1;
}

int KxUiXListCtrl::InsertItem(int nRow, LPCTSTR lpszText)
{
    if (nRow < 0)
        return -1;
    LVITEM item = {};
    item.mask = LVIF_TEXT;
    item.iItem = nRow;
    item.pszText = const_cast<LPTSTR>(lpszText);
    InsertItem(&item);
    return std::min(nRow, (int)m_rows.GetSize() - 1);
}

int KxUiXListCtrl::InsertItem(int nRow, SUBITEMARRAY* pRow)
{
    if (pRow == nullptr)
        return -1;
    nRow = std::max(0, std::min(nRow, (int)m_rows.GetSize()));
    m_rows.InsertAt(nRow, pRow);
    syncItemCount();
    return nRow;
}

BOOL KxUiXListCtrl::DeleteItem(int nRow)
{
    if (nRow < 0 || nRow >= m_rows.GetSize())
        return FALSE;
    if (nRow == m_nCtrlItem)
        deleteCtrl(false);
    m_rows.RemoveAt(nRow);
    if (m_hWnd != nullptr)
        CListCtrl::DeleteItem(nRow);  // keeps the selection of the rows below in step
    syncItemCount();
    m_nScratchRow = m_nScratchCol = -1;
    return TRUE;
}

BOOL KxUiXListCtrl::DeleteAllItems()
{
    deleteCtrl(false);
    m_rows.RemoveAll();
    m_nCtrlItem = m_nCtrlSubItem = -1;
    m_nScratchRow = m_nScratchCol = -1;
    if (m_hWnd != nullptr)
        CListCtrl::DeleteAllItems();
    syncItemCount();
    return TRUE;
}

SUBITEMARRAY* KxUiXListCtrl::getSUBITEMARRAY(int nRow) const
{
    return nRow >= 0 && nRow < m_rows.GetSize() ? m_rows[nRow] : nullptr;
}

BOOL KxUiXListCtrl::SetItemData(int nRow, DWORD_PTR dwData)
{
    SUBITEMARRAY* pRow = getSUBITEMARRAY(nRow);
    if (pRow == nullptr)
        return FALSE;
    pRow->m_nItemValue = dwData;
    return TRUE;
}

DWORD_PTR KxUiXListCtrl::GetItemData(int nRow) const
{
    SUBITEMARRAY* pRow = getSUBITEMARRAY(nRow);
    return pRow != nullptr ? pRow->m_nItemValue : 0;
}

void KxUiXListCtrl::SetEnabled(int nRow, bool bEnabled)
{
    if (SUBITEMARRAY* pRow = getSUBITEMARRAY(nRow)) {
        pRow->setEnabled(bEnabled);
        UpdateSubItem(nRow, -1);
    }
}

bool KxUiXListCtrl::GetEnabled(int nRow) const
{
    SUBITEMARRAY* pRow = getSUBITEMARRAY(nRow);
    return pRow != nullptr && pRow->getEnabled();
}

////////////////////////////////////////////////////////////////////////////
// Columns: every row keeps one cell per column.

void KxUiXListCtrl::onColumnInserted(int nCol)
{
    KxUiListCtrlBase::onColumnInserted(nCol);
    for (INT_PTR i = 0; i < m_rows.GetSize(); ++i) {
        SUBITEMARRAY* pRow = m_rows[i];
        if (pRow->GetSize() == 0)
            continue;  // a row without cells stays one (the scratch cell stands in)
        SUBITEM cell;
        pRow->InsertAt(std::min<INT_PTR>(nCol, pRow->GetSize()), cell);
    }
}

void KxUiXListCtrl::onColumnDeleted(int nCol)
{
    if (nCol == m_nCtrlSubItem)
        deleteCtrl(false);
    KxUiListCtrlBase::onColumnDeleted(nCol);
    for (INT_PTR i = 0; i < m_rows.GetSize(); ++i) {
        SUBITEMARRAY* pRow = m_rows[i];
        if (nCol >= 0 && nCol < pRow->GetSize())
            pRow->RemoveAt(nCol);
    }
}

void KxUiXListCtrl::removeAllColumn()
{
    for (int i = GetColumnsCount() - 1; i >= 0; --i)
        DeleteColumn(i);
}

CString KxUiXListCtrl::getColumnText(int nCol) const
{
    CString str;
    if (nCol < 0 || nCol >= GetColumnsCount())
        return str;
    WCHAR sz[260] = {};
    LVCOLUMN col = {};
    col.mask = LVCF_TEXT;
    col.pszText = sz;
    col.cchTextMax = 260;
    if (GetColumn(nCol, &col))
        str = sz;
    return str;
}

////////////////////////////////////////////////////////////////////////////
// Cells

SUBITEM* KxUiXListCtrl::GetSubItemData(int nRow, int nCol, bool bReset)
{
    if (nRow < 0)
        return &defaultCell();
    SUBITEMARRAY* pRow = getSUBITEMARRAY(nRow);
    if (pRow != nullptr && pRow->GetSize() == 0) {
        // A row without cells: one scratch cell stands in for each of its cells in turn, so
        // that painting such a row costs no allocation per cell.
        if (nRow == m_nScratchRow && nCol == m_nScratchCol && !bReset) {
            m_bScratchReused = true;
            return &m_scratchCell;
        }
        m_bScratchReused = false;
        m_nScratchRow = nRow;
        m_nScratchCol = nCol;
        if (bReset)
            m_scratchCell.setDefineControl(nullptr);
        m_scratchCell = SUBITEM();
        return &m_scratchCell;
    }
    if (pRow == nullptr || nCol < 0 || nCol >= pRow->GetSize())
        return &defaultCell();
    return &pRow->ElementAt(nCol);
}

const SUBITEM* KxUiXListCtrl::findCell(int nRow, int nCol) const
{
    SUBITEMARRAY* pRow = getSUBITEMARRAY(nRow);
    if (pRow == nullptr || nCol < 0 || nCol >= pRow->GetSize())
        return nullptr;
    return &pRow->ElementAt(nCol);
}

SUBITEM* KxUiXListCtrl::findCell(int nRow, int nCol)
{
    return const_cast<SUBITEM*>(static_cast<const KxUiXListCtrl*>(this)->findCell(nRow, nCol));
}

int KxUiXListCtrl::SetItemText(int nRow, int nCol, const CString& strText)
{
    return GetSubItemData(nRow, nCol, false)->SetItemText(strText, true);
}

int KxUiXListCtrl::SetEditText(int nRow, int nCol, const CString& strText)
{
    return GetSubItemData(nRow, nCol, false)->SetEditText(strText, true);
}

int KxUiXListCtrl::SetEditNum(int nRow, int nCol, const CString& strText, bool bIntegerOnly)
{
    return GetSubItemData(nRow, nCol, false)->SetEditNum(strText, bIntegerOnly, true);
}

int KxUiXListCtrl::SetEditNum(int nRow, int nCol, int nValue)
{
    return GetSubItemData(nRow, nCol, false)->SetEditNum(nValue, true);
}

int KxUiXListCtrl::SetEditNum(int nRow, int nCol, double dValue)
{
    return GetSubItemData(nRow, nCol, false)->SetEditNum(dValue, true);
}

int KxUiXListCtrl::SetOxEditNum(int nRow, int nCol, const CString& strText, bool bInfinite, UINT nDigits)
{
    return GetSubItemData(nRow, nCol, false)->SetOxEditNum(strText, bInfinite, nDigits, true);
}

int KxUiXListCtrl::SetComboBox(int nRow, int nCol, const CStringArray& items, int nLines, int nSel)
{
    return GetSubItemData(nRow, nCol, false)->SetComboBox(items, nLines, nSel, true);
}

int KxUiXListCtrl::SetComboBox(int nRow, int nCol, const CStringArray& items, const CString& strText)
{
    return GetSubItemData(nRow, nCol, false)->SetComboBox(items, strText, true);
}

int KxUiXListCtrl::SetComboBoxEdit(int nRow, int nCol, const CStringArray& items, int nSel)
{
    return GetSubItemData(nRow, nCol, false)->SetComboBoxEdit(items, nSel, true);
}

int KxUiXListCtrl::SetComboBoxEdit(int nRow, int nCol, const CStringArray& items, int nLines, const CString& strText)
{
    return GetSubItemData(nRow, nCol, false)->SetComboBoxEdit(items, nLines, strText, true);
}

int KxUiXListCtrl::SetCheckbox(int nRow, int nCol, int nState)
{
    // The header check is refreshed from the rows as they are before this change.
    if (GetHeaderCheckedState(nCol) > 0)
        SetHeaderCheckedState(nCol, CountCheckedItems(nCol) == GetItemCount() ? 2 : 1);
    return GetSubItemData(nRow, nCol, false)->SetCheckbox(nState, true);
}

int KxUiXListCtrl::SetCheckboxBitmap(int nRow, int nCol, int nState, int nBitmap1, int nBitmap2)
{
    return GetSubItemData(nRow, nCol, false)->SetCheckboxBitmap(nState, nBitmap1, nBitmap2, true);
}

int KxUiXListCtrl::SetBitmap(int nRow, int nCol, int nState, int nBitmap1, int nBitmap2)
{
    return GetSubItemData(nRow, nCol, false)->SetBitmap(nState, nBitmap1, nBitmap2, true);
}

int KxUiXListCtrl::SetRadioButtonV(int nRow, int nCol, int nState)
{
    return GetSubItemData(nRow, nCol, false)->SetRadioButtonV(nState, true);
}

int KxUiXListCtrl::SetRadioButtonH(int nRow, int nCol, int nState)
{
    return GetSubItemData(nRow, nCol, false)->SetRadioButtonH(nState, true);
}

int KxUiXListCtrl::SetColorDialog(int nRow, int nCol)
{
    return GetSubItemData(nRow, nCol, false)->SetColorDialog(true);
}

int KxUiXListCtrl::SetButton(int nRow, int nCol, const CString& strCaption)
{
    return GetSubItemData(nRow, nCol, false)->SetButton(strCaption, true);
}

int KxUiXListCtrl::setControl(int nRow, int nCol, const CString& strText, int nType, TagDefine* pDefine)
{
    return GetSubItemData(nRow, nCol, false)->setControl(strText, nType, pDefine);
}

CString KxUiXListCtrl::GetItemText(int nRow, int nCol) const
{
    const SUBITEM* pCell = findCell(nRow, nCol);
    return pCell != nullptr ? pCell->m_strText : CString();
}

void KxUiXListCtrl::GetItemText(int nRow, int nCol, CString& strText)
{
    strText = GetSubItemData(nRow, nCol, false)->m_strText;
}

CString KxUiXListCtrl::GetComboText(int nRow, int nCol)
{
    return GetSubItemData(nRow, nCol, false)->m_strText;
}

bool KxUiXListCtrl::SetBold(int nRow, int nCol, bool bBold)
{
    SUBITEM* pCell = findCell(nRow, nCol);
    if (pCell == nullptr)
        return false;
    pCell->m_bBold = bBold;
    UpdateSubItem(nRow, nCol);
    return true;
}

bool KxUiXListCtrl::GetBold(int nRow, int nCol) const
{
    const SUBITEM* pCell = findCell(nRow, nCol);
    return pCell != nullptr && pCell->m_bBold;
}

bool KxUiXListCtrl::SetTextColor(int nRow, int nCol, COLORREF clr)
{
    SUBITEM* pCell = findCell(nRow, nCol);
    if (pCell == nullptr)
        return false;
    pCell->m_clrText = clr;
    UpdateSubItem(nRow, nCol);
    return true;
}

COLORREF KxUiXListCtrl::GetTextColor(int nRow, int nCol)
{
    return GetSubItemData(nRow, nCol, false)->m_clrText;
}

bool KxUiXListCtrl::SetBkColor(int nRow, int nCol, COLORREF clr)
{
    SUBITEM* pCell = findCell(nRow, nCol);
    if (pCell == nullptr)
        return false;
    pCell->m_clrBk = clr;
    UpdateSubItem(nRow, nCol);
    return true;
}

COLORREF KxUiXListCtrl::GetBkColor(int nRow, int nCol)
{
    return GetSubItemData(nRow, nCol, false)->m_clrBk;
}

int KxUiXListCtrl::SetItemToolTipText(int nRow, int nCol, const CString& strText)
{
    SUBITEM* pCell = findCell(nRow, nCol);
    if (pCell == nullptr)
        return 0;
    pCell->m_strToolTip = strText;
    return 1;
}

int KxUiXListCtrl::SetCheckState(int nRow, int nCol, int nState)
{
    SUBITEM* pCell = findCell(nRow, nCol);
    if (pCell == nullptr || (pCell->m_nType != TypeCheckBox && pCell->m_nType != TypeCheckBoxBitmap))
        return 0;
    DefineRadioButton* pDef = dynamic_cast<DefineRadioButton*>(pCell->m_pDefine);
    if (pDef == nullptr)
        return 0;
    pDef->m_cState = (signed char)(nState & 0xFF);
    return 1;
}

int KxUiXListCtrl::GetCheckbox(int nRow, int nCol)
{
    return GetSubItemData(nRow, nCol, false)->GetCheckbox();
}

int KxUiXListCtrl::CountCheckedItems(int nCol)
{
    if (nCol < 0 || nCol >= GetColumnsCount())
        return 0;
    int n = 0;
    for (INT_PTR i = 0; i < m_rows.GetSize(); ++i) {
        const SUBITEM* pCell = findCell((int)i, nCol);
        if (pCell != nullptr && isCheckKind(pCell->m_nType) && pCell->GetCheckbox() == 1)
            ++n;
    }
    return n;
}

bool KxUiXListCtrl::SetHeaderCheckedState(int nCol, int nState)
{
    CHeaderCtrl* pHeader = GetHeaderCtrl();
    if (pHeader == nullptr || nCol < 0 || nCol >= GetColumnsCount())
        return false;
    HDITEM hdi = {};
    hdi.mask = HDI_IMAGE;
    hdi.iImage = nState;
    if (!pHeader->SetItem(nCol, &hdi))
        return false;
    pHeader->Invalidate();
    return true;
}

int KxUiXListCtrl::GetHeaderCheckedState(int nCol) const
{
    CHeaderCtrl* pHeader = GetHeaderCtrl();
    if (pHeader == nullptr || nCol < 0 || nCol >= GetColumnsCount())
        return -1;
    HDITEM hdi = {};
    hdi.mask = HDI_IMAGE;
    if (!pHeader->GetItem(nCol, &hdi))
        return -1;
    return hdi.iImage;
}

////////////////////////////////////////////////////////////////////////////
// Selection

void KxUiXListCtrl::SelectAll(bool bSelect)
{
    CListCtrl::SetItemState(-1, bSelect ? LVIS_SELECTED : 0, LVIS_SELECTED);
}

void KxUiXListCtrl::SetCurSel(int nRow)
{
    if (getSUBITEMARRAY(nRow) != nullptr)
        CListCtrl::SetItemState(nRow, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
}

int KxUiXListCtrl::GetCurSel() const
{
    return GetNextItem(-1, LVNI_SELECTED);
}

void KxUiXListCtrl::setStrEmptyText(const CString& strText)
{
    m_strEmptyText = strText;
    if (m_hWnd != nullptr && m_rows.GetSize() == 0)
        Invalidate();
}

////////////////////////////////////////////////////////////////////////////
// Geometry and repainting

BOOL KxUiXListCtrl::GetSubItemRect(int nRow, int nCol, int nArea, CRect& rect) const
{
    if (nRow < 0 || nRow >= m_rows.GetSize() || nCol < 0 || nCol >= GetColumnsCount())
        return FALSE;
    if (!CListCtrl::GetSubItemRect(nRow, nCol, nArea, rect))
        return FALSE;
    if (nCol == 0 && nArea == LVIR_BOUNDS) {
        // The list view gives the whole row for column 0; keep the first column only.
        CRect rcLabel;
        if (CListCtrl::GetSubItemRect(nRow, 0, LVIR_LABEL, rcLabel)) {
            rect.right = rcLabel.right;
            rect.left = rect.right - GetColumnWidth(0);
        }
    }
    return TRUE;
}

void KxUiXListCtrl::UpdateSubItem(int nRow, int nCol)
{
    if (m_hWnd == nullptr || nRow < 0 || nRow >= m_rows.GetSize() || nCol < -1 || nCol >= GetColumnsCount())
        return;
    CRect rc;
    if (nCol == -1) {
        if (!CListCtrl::GetItemRect(nRow, &rc, LVIR_BOUNDS))
            return;
    } else if (!GetSubItemRect(nRow, nCol, LVIR_BOUNDS, rc)) {
        return;
    }
    InvalidateRect(&rc, FALSE);
    UpdateWindow();
}

void KxUiXListCtrl::UpdateSubItem(UINT nMessage, const SUBITEM& cell, int nRow, int nCol)
{
    XData::CELLNOTIFY record;
    record.cell = cell;
    record.nRow = nRow;
    record.nCol = nCol;
    SendMessage(nMessage, 0, (LPARAM)&record);
    SendMessageToParent(nMessage, (LPARAM)&record);
    UpdateSubItem(nRow, nCol);
}

HWND KxUiXListCtrl::messageTarget() const
{
    if (m_hWnd == nullptr)
        return nullptr;
    HWND hParent = ::GetParent(m_hWnd);
    if (hParent == nullptr) {
        CWnd* pFrame = (CWnd*)GetParentFrame();
        hParent = pFrame != nullptr ? pFrame->GetSafeHwnd() : nullptr;
    }
    return hParent;
}

LRESULT KxUiXListCtrl::SendMessageToParent(UINT nMessage, LPARAM lParam)
{
    HWND hTarget = messageTarget();
    if (hTarget == nullptr)
        return -1;
    return ::SendMessageW(hTarget, nMessage, (WPARAM)m_hWnd, lParam);
}

LRESULT KxUiXListCtrl::PostMessageToParent(UINT nMessage, LPARAM lParam)
{
    HWND hTarget = messageTarget();
    if (hTarget == nullptr)
        return -1;
    return ::PostMessageW(hTarget, nMessage, (WPARAM)m_hWnd, lParam);
}

////////////////////////////////////////////////////////////////////////////
// Column widths

int KxUiXListCtrl::getAdditionalWidthFromControlType(int nCol)
{
    const SUBITEM* pCell = findCell(0, nCol);
    if (pCell == nullptr)
        return 0;
    switch (pCell->m_nType) {
    case TypeEdit:
    case TypeComboBox:
    case TypeComboBoxEdit:
    case TypeCheckBox:
    case TypeCheckBoxBitmap:
        return 16;
    default:
        return 0;
    }
}

void KxUiXListCtrl::resizeAllColumnWithItem()
{
    // The text is read through the list view for item 0 whatever the row, so every column
    // follows row 0's text; reading it once gives the same widths as once per row.
    for (int nCol = GetColumnsCount() - 1; nCol >= 0; --nCol) {
        if (!isColumnVisible(nCol)) {
            SetColumnWidth(nCol, 0);
            continue;
        }
        int cxMax = 0;
        if (m_rows.GetSize() > 0) {
            WCHAR sz[1024] = {};
            LVITEMW item = {};
            item.iSubItem = nCol;
            item.pszText = sz;
            item.cchTextMax = 1024;
            SendMessage(LVM_GETITEMTEXTW, 0, (LPARAM)&item);
            cxMax = GetStringWidth(sz);
        }
        SetColumnWidth(nCol, cxMax + getAdditionalWidthFromControlType(nCol) + 10);
    }
}

////////////////////////////////////////////////////////////////////////////
// Texts and painting

BOOL KxUiXListCtrl::OnGetDispInfo(NMHDR* pNMHDR, LRESULT* pResult)
{
    NMLVDISPINFOW* pInfo = reinterpret_cast<NMLVDISPINFOW*>(pNMHDR);
    *pResult = 0;
    LVITEMW& item = pInfo->item;
    if (!(item.mask & LVIF_TEXT) || item.pszText == nullptr || item.cchTextMax <= 0)
        return TRUE;
    const SUBITEM* pCell = findCell(item.iItem, item.iSubItem);
    const CString& str = pCell != nullptr ? pCell->m_strText : defaultCell().m_strText;
    int nMax = item.cchTextMax;
    if (str.GetLength() < nMax) {
        lstrcpynW(item.pszText, str, nMax);
    } else if (nMax > 4) {
        // Too long for the buffer: its size less four characters, then "...".
        wmemcpy(item.pszText, str, nMax - 4);
        wcscpy(item.pszText + nMax - 4, L"...");
    } else {
        item.pszText[0] = 0;
    }
    return TRUE;
}

BOOL KxUiXListCtrl::OnCustomDraw(NMHDR* pNMHDR, LRESULT* pResult)
{
    NMLVCUSTOMDRAW* pDraw = reinterpret_cast<NMLVCUSTOMDRAW*>(pNMHDR);
    int nRow = (int)pDraw->nmcd.dwItemSpec;
    switch (pDraw->nmcd.dwDrawStage) {
    case CDDS_PREPAINT:
        m_nScratchRow = m_nScratchCol = -1;
        *pResult = CDRF_NOTIFYITEMDRAW | CDRF_NOTIFYPOSTPAINT;
        break;
    case CDDS_POSTPAINT:
        m_nScratchRow = m_nScratchCol = -1;
        *pResult = CDRF_DODEFAULT;
        break;
    case CDDS_ITEMPREPAINT:
        *pResult = getSUBITEMARRAY(nRow) != nullptr ? CDRF_NOTIFYSUBITEMDRAW : CDRF_DODEFAULT;
        break;
    case CDDS_ITEMPREPAINT | CDDS_SUBITEM:
        if (getSUBITEMARRAY(nRow) == nullptr) {
            *pResult = CDRF_DODEFAULT;
            break;
        }
        drawCell(nRow, pDraw->iSubItem, CDC::FromHandle(pDraw->nmcd.hdc));
        *pResult = CDRF_SKIPDEFAULT;
        break;
    default:
        *pResult = CDRF_DODEFAULT;
        break;
    }
    return TRUE;
}

void KxUiXListCtrl::drawCell(int nRow, int nCol, CDC* pDC)
{
    SUBITEMARRAY* pRow = getSUBITEMARRAY(nRow);
    SUBITEM* pCell = GetSubItemData(nRow, nCol, false);
    COLORREF clrText = ::GetSysColor(COLOR_WINDOWTEXT), clrBk = ::GetSysColor(COLOR_WINDOW);
    bool bEnabled = pRow->getEnabled() && IsWindowEnabled() && pCell->m_bEnabled;
    CRect rect;
    if (!GetSubItemRect(nRow, nCol, LVIR_BOUNDS, rect))
        return;
    GetDrawColors(nRow, nCol, bEnabled, clrText, clrBk);
    // The lookup may have been reused by GetDrawColors: fetch the cell again for the handlers.
    pCell = GetSubItemData(nRow, nCol, false);
    int nSaved = pDC->SaveDC();
    m_pOldFont = nullptr;
    if (pCell->m_bBold) {
        LOGFONT lf = {};
        CFont* pFont = pDC->GetCurrentFont();
        if (pFont != nullptr && pFont->GetLogFont(&lf)) {
            lf.lfWeight = FW_BOLD;
            if (m_fontBold.CreateFontIndirect(&lf))
                m_pOldFont = pDC->SelectObject(&m_fontBold);
        }
    }
    CRect rcFill(rect);
    rcFill.bottom -= 1;  // the grid line below the cell stays
    pDC->FillSolidRect(&rcFill, clrBk);
    TafFcts fcts = {};
    if (pCell->m_nType == TypeText) {
        DrawTextW(nRow, nCol, pDC, clrText, clrBk, rect, pRow);
    } else if (getControl(pCell->m_nType, fcts) && fcts.draw != nullptr) {
        fcts.draw(this, nRow, nCol, pDC, clrText, clrBk, rect);
    } else {
        CBrush brush;
        brush.CreateSolidBrush(clrBk);
        DrawDefaultControl(nRow, nCol, pDC, clrText, brush, rect);
    }
    if (m_pOldFont != nullptr)
        pDC->SelectObject(m_pOldFont);
    pDC->RestoreDC(nSaved);
    m_pOldFont = nullptr;
    if (m_fontBold.GetSafeHandle() != nullptr)
        m_fontBold.DeleteObject();
}

void KxUiXListCtrl::GetDrawColors(int nRow, int nCol, bool bEnabled, COLORREF& clrText, COLORREF& clrBk)
{
    UINT nState = CListCtrl::GetItemState(nRow, LVIS_SELECTED | LVIS_DROPHILITED);
    bool bSelected = (nState & (LVIS_SELECTED | LVIS_DROPHILITED)) != 0;
    if (!bEnabled) {
        clrText = ::GetSysColor(COLOR_GRAYTEXT);
        clrBk = ::GetSysColor(bSelected ? COLOR_HIGHLIGHT : COLOR_WINDOW);
        return;
    }
    if (!bSelected) {
        const SUBITEM* pCell = GetSubItemData(nRow, nCol, false);
        clrText = pCell->m_clrText == (COLORREF)-1 ? ::GetSysColor(COLOR_WINDOWTEXT) : pCell->m_clrText;
        clrBk = pCell->m_clrBk == (COLORREF)-1 ? ::GetSysColor(COLOR_WINDOW) : pCell->m_clrBk;
        return;
    }
    bool bFocus = ::GetFocus() == m_hWnd;
    bool bShowSelAlways = (GetStyle() & LVS_SHOWSELALWAYS) != 0;
    bool bFullRow = (GetExtendedStyle() & LVS_EX_FULLROWSELECT) != 0;
    if (bFullRow || nCol == 0) {
        if (bFocus) {
            clrText = ::GetSysColor(COLOR_HIGHLIGHTTEXT);
            clrBk = ::GetSysColor(COLOR_HIGHLIGHT);
        } else if (bShowSelAlways) {
            clrText = ::GetSysColor(COLOR_WINDOWTEXT);
            clrBk = ::GetSysColor(COLOR_BTNFACE);
        } else if (bFullRow) {
            clrText = ::GetSysColor(COLOR_HIGHLIGHTTEXT);
        }
        return;
    }
    clrText = ::GetSysColor(COLOR_HIGHLIGHTTEXT);
}

void KxUiXListCtrl::DrawTextW(int nRow, int nCol, CDC* pDC, COLORREF clrText, COLORREF, CRect rect,
                              SUBITEMARRAY*)
{
    const SUBITEM* pCell = GetSubItemData(nRow, nCol, false);
    CString strText = pCell->m_strText;
    int nBitmap = pCell->m_nBitmap1;
    if (nBitmap >= 0) {
        CImageList* pImages = GetImageList(LVSIL_SMALL);
        int cx = 0, cy = 0;
        if (pImages != nullptr && nBitmap < pImages->GetImageCount() && pImages->GetIconSize(&cx, &cy)) {
            int nMargin = getHeader() != nullptr ? getHeader()->getMargin() : 2;
            int cxDraw = std::min(cx, rect.Width() - nMargin);
            if (cxDraw > 0) {
                IMAGELISTDRAWPARAMS p = {};
                p.cbSize = sizeof(p);
                p.himl = pImages->GetSafeHandle();
                p.i = nBitmap;
                p.hdcDst = pDC->GetSafeHdc();
                p.x = rect.left + nMargin;
                p.y = rect.top + (rect.Height() - cy) / 2;
                p.cx = cxDraw;
                p.cy = cy;
                p.rgbBk = CLR_NONE;
                p.rgbFg = CLR_DEFAULT;
                p.fStyle = ILD_TRANSPARENT;
                ::ImageList_DrawIndirect(&p);
            }
            rect.left += nMargin + cx;
        }
    }
    UINT nAlign = DT_LEFT;
    if (CHeaderCtrl* pHeader = GetHeaderCtrl()) {
        HDITEM hdi = {};
        hdi.mask = HDI_FORMAT;
        if (pHeader->GetItem(nCol, &hdi))
            nAlign = (hdi.fmt & HDF_JUSTIFYMASK) == HDF_RIGHT    ? DT_RIGHT
                     : (hdi.fmt & HDF_JUSTIFYMASK) == HDF_CENTER ? DT_CENTER
                                                                  : DT_LEFT;
    }
    rect.left += 1;
    if (rect.Width() <= 0)
        return;
    pDC->SetBkMode(TRANSPARENT);
    pDC->SetTextColor(clrText);
    pDC->DrawText(strText, &rect, nAlign | DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS | DT_NOPREFIX);
}

void KxUiXListCtrl::DrawDefaultControl(int nRow, int nCol, CDC* pDC, COLORREF clrText, CBrush& brush,
                                       const CRect& rect)
{
    // A colour cell shows its colour as a swatch; other kinds without a painter show their text.
    const SUBITEM* pCell = GetSubItemData(nRow, nCol, false);
    CRect rc(rect);
    rc.bottom -= 1;
    pDC->FillRect(&rc, &brush);
    if (pCell->m_nType == TypeColorDialog) {
        CRect swatch(rc);
        swatch.DeflateRect(3, 3);
        if (swatch.Width() > 0 && swatch.Height() > 0) {
            COLORREF clr = pCell->m_clrBk == (COLORREF)-1 ? ::GetSysColor(COLOR_WINDOW) : pCell->m_clrBk;
            pDC->FillSolidRect(&swatch, clr);
            pDC->Draw3dRect(&swatch, ::GetSysColor(COLOR_WINDOWTEXT), ::GetSysColor(COLOR_WINDOWTEXT));
        }
        return;
    }
    rc.left += 1;
    pDC->SetBkMode(TRANSPARENT);
    pDC->SetTextColor(clrText);
    pDC->DrawText(pCell->m_strText, &rc, DT_LEFT | DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS | DT_NOPREFIX);
}

void KxUiXListCtrl::DrawButton(CDC* pDC, const CRect& rect, const CString& strCaption, bool bEnabled)
{
    CRect rc(rect);
    rc.DeflateRect(1, 1, 1, 2);
    if (rc.Width() <= 0 || rc.Height() <= 0)
        return;
    pDC->DrawFrameControl(&rc, DFC_BUTTON, DFCS_BUTTONPUSH | (bEnabled ? 0 : DFCS_INACTIVE));
    pDC->SetBkMode(TRANSPARENT);
    pDC->SetTextColor(::GetSysColor(bEnabled ? COLOR_BTNTEXT : COLOR_GRAYTEXT));
    pDC->DrawText(strCaption, &rc, DT_CENTER | DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS | DT_NOPREFIX);
}

void KxUiXListCtrl::OnPaint()
{
    Default();
    if (m_rows.GetSize() == 0 && !m_strEmptyText.IsEmpty()) {
        CClientDC dc(this);
        drawEmptyText(&dc);
    }
}

LRESULT KxUiXListCtrl::OnPrintClient(WPARAM wParam, LPARAM)
{
    LRESULT lResult = Default();
    if (m_rows.GetSize() == 0 && !m_strEmptyText.IsEmpty() && wParam != 0)
        drawEmptyText(CDC::FromHandle((HDC)wParam));
    return lResult;
}

void KxUiXListCtrl::drawEmptyText(CDC* pDC)
{
    CRect rc;
    GetClientRect(&rc);
    if (CHeaderCtrl* pHeader = GetHeaderCtrl()) {
        CRect rcHeader;
        if (pHeader->GetSafeHwnd() != nullptr && pHeader->IsWindowVisible()) {
            pHeader->GetWindowRect(&rcHeader);
            rc.top += rcHeader.Height();
        }
    }
    rc.top += 2;
    int nSaved = pDC->SaveDC();
    if (CFont* pFont = GetFont())
        pDC->SelectObject(pFont);
    pDC->FillSolidRect(&rc, ::GetSysColor(COLOR_WINDOW));
    pDC->SetBkMode(TRANSPARENT);
    pDC->SetTextColor(::GetSysColor(IsWindowEnabled() ? COLOR_WINDOWTEXT : COLOR_GRAYTEXT));
    pDC->DrawText(m_strEmptyText, &rc, DT_CENTER | DT_WORDBREAK | DT_NOPREFIX | DT_NOCLIP);
    pDC->RestoreDC(nSaved);
}

////////////////////////////////////////////////////////////////////////////
// Opening and closing editors

TafFcts KxUiXListCtrl::handlersAt(int nRow, int nCol)
{
    TafFcts fcts = {};
    SUBITEMARRAY* pRow = getSUBITEMARRAY(nRow);
    if (pRow == nullptr || !pRow->getEnabled() || nCol < 0)
        return fcts;
    const SUBITEM* pCell = findCell(nRow, nCol);
    if (pCell == nullptr || !pCell->m_bEnabled || pCell->m_nType == TypeText || !getControl(pCell->m_nType, fcts))
        return TafFcts{};
    return fcts;
}

FctCreate KxUiXListCtrl::createHandlerAt(int nRow, int nCol)
{
    return handlersAt(nRow, nCol).create;
}

void KxUiXListCtrl::setParentItemControl(int nRow, int nCol)
{
    m_nCtrlItem = nRow;
    m_nCtrlSubItem = nCol;
}

void KxUiXListCtrl::setEditor(CWnd* pEditor)
{
    if (pEditor != m_pEditor.get()) {
        std::unique_ptr<CWnd> pOld(std::move(m_pEditor));
        if (pOld != nullptr && pOld->GetSafeHwnd() != nullptr) {
            m_bClosingEditor = true;
            pOld->DestroyWindow();
            m_bClosingEditor = false;
        }
    }
    m_pEditor.reset(pEditor);
}

void KxUiXListCtrl::getSelectedSameType(int nRow, int nCol, bool bOnlyEnabled, CUIntArray& rows)
{
    rows.RemoveAll();
    SUBITEMARRAY* pRow = getSUBITEMARRAY(nRow);
    if (nRow == -1 || pRow == nullptr || (bOnlyEnabled && !pRow->getEnabled()))
        return;
    const SUBITEM* pClicked = findCell(nRow, nCol);
    int nType = pClicked != nullptr ? pClicked->m_nType : GetSubItemData(nRow, nCol, false)->m_nType;
    for (int i = GetNextItem(-1, LVNI_SELECTED); i >= 0; i = GetNextItem(i, LVNI_SELECTED)) {
        const SUBITEM* pCell = findCell(i, nCol);
        if (pCell == nullptr || pCell->m_nType != nType)
            continue;
        if (!bOnlyEnabled || (m_rows[i]->getEnabled() && pCell->m_bEnabled))
            rows.Add((UINT)i);
    }
}

void KxUiXListCtrl::createCtrl(int nRow, int nCol)
{
    SUBITEMARRAY* pRow = getSUBITEMARRAY(nRow);
    if (pRow == nullptr || !pRow->getEnabled())
        return;
    deleteCtrl(false);
    m_sameTypeRows.RemoveAll();
    FctCreate pfnCreate = createHandlerAt(nRow, nCol);
    if (pfnCreate == nullptr)
        return;
    CListCtrl::SetItemState(nRow, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
    EnsureVisible(nRow, FALSE);
    getSelectedSameType(nRow, nCol, true, m_sameTypeRows);
    CString strText = GetSubItemData(nRow, nCol, false)->getText();
    pfnCreate(this, m_sameTypeRows, nRow, nCol, strText);
}

void KxUiXListCtrl::endEditCtrl()
{
    if (m_nCtrlItem < 0 || m_nCtrlSubItem < 0 || m_rows.GetSize() == 0)
        return;
    const SUBITEM* pCell = findCell(m_nCtrlItem, m_nCtrlSubItem);
    TafFcts fcts = {};
    if (pCell == nullptr || !getControl(pCell->m_nType, fcts) || fcts.endEdit == nullptr)
        return;
    LPARAM nRows = (LPARAM)m_sameTypeRows.GetSize();
    SendMessage(XM_BEGINEDIT, 0, nRows);
    SendMessageToParent(XM_BEGINEDIT, nRows);
    fcts.endEdit(this, m_sameTypeRows, m_nCtrlItem, m_nCtrlSubItem);
    SendMessage(XM_ENDEDIT, 0, 0);
    SendMessageToParent(XM_ENDEDIT, 0);
}

void KxUiXListCtrl::deleteCtrl(bool bCommit)
{
    if (m_bClosingEditor)
        return;
    if (bCommit)
        endEditCtrl();
    // The current cell ends with its editor: a later commit (a focus change that arrives after
    // a click closed the editor) finds nothing left to write.
    m_nCtrlItem = m_nCtrlSubItem = -1;
    if (m_pEditor == nullptr)
        return;
    std::unique_ptr<CWnd> pEditor(std::move(m_pEditor));
    m_bClosingEditor = true;
    HWND hEditor = pEditor->GetSafeHwnd();
    HWND hFocus = ::GetFocus();
    // The focus comes back to the list before the editor goes, so that the editor's loss of the
    // focus is not taken for a click elsewhere.
    if (hEditor != nullptr && (hFocus == hEditor || ::IsChild(hEditor, hFocus)))
        SetFocus();
    if (hEditor != nullptr)
        pEditor->DestroyWindow();
    m_bClosingEditor = false;
}

void KxUiXListCtrl::editorLostFocus(HWND hEditor, HWND hNewFocus)
{
    if (m_bClosingEditor || m_pEditor == nullptr || m_pEditor->GetSafeHwnd() != hEditor)
        return;
    if (hNewFocus != nullptr && (hNewFocus == hEditor || ::IsChild(hEditor, hNewFocus)))
        return;  // moving inside the editor (a combo's edit part and its list)
    // Committed through the ordinary path; posted so that the editor is not destroyed inside
    // its own focus change.
    PostMessage(XM_VK_RETURN, 0, 1);
}

int KxUiXListCtrl::findEditableRow(int nRow, int nCol, int nStep)
{
    for (int i = nRow + nStep; i >= 0 && i < m_rows.GetSize(); i += nStep) {
        if (!m_rows[i]->getEnabled())
            continue;
        const SUBITEM* pCell = findCell(i, nCol);
        if (pCell != nullptr && pCell->m_bEnabled && pCell->m_nType != TypeText)
            return i;
    }
    return -1;
}

////////////////////////////////////////////////////////////////////////////
// Mouse and keys

void KxUiXListCtrl::runDefaultClick()
{
    // The list view's own button-down processing runs a modal loop of its own (drag
    // detection), in which an editor's Return can arrive; it is replayed once the loop is over.
    m_bInsideDefaultClick = true;
    Default();
    m_bInsideDefaultClick = false;
    if (m_nPendingMessage != 0) {
        UINT nMessage = m_nPendingMessage;
        WPARAM wParam = m_nPendingWParam;
        LPARAM lParam = m_nPendingLParam;
        m_nPendingMessage = 0;
        m_nPendingWParam = 0;
        m_nPendingLParam = 0;
        SendMessage(nMessage, wParam, lParam);
    }
}

void KxUiXListCtrl::OnLButtonDown(UINT, CPoint point)
{
    LVHITTESTINFO hit = {};
    hit.pt = point;
    SubItemHitTest(&hit);
    int nRow = hit.iItem, nCol = hit.iSubItem;
    if (nRow < 0)
        nCol = -1;
    bool bHandler = createHandlerAt(nRow, nCol) != nullptr;
    bool bModifier = ::GetKeyState(VK_SHIFT) < 0 || ::GetKeyState(VK_CONTROL) < 0;
    if (!bHandler)
        runDefaultClick();
    if (!m_bDragging) {
        bool bMulti = (GetStyle() & LVS_SINGLESEL) == 0;
        bool bSelected = nRow >= 0 && (CListCtrl::GetItemState(nRow, LVIS_SELECTED) & LVIS_SELECTED) != 0;
        if (bMulti && bSelected) {
            // A click on a row of the selection keeps the selection, so that the editor acts on
            // every selected row.
            if (!bModifier)
                SetFocus();
            else if (bHandler)
                runDefaultClick();
            deleteCtrl(true);
        } else if (bHandler) {
            runDefaultClick();
        }
        if (!bModifier)
            PostMessage(XM_CREATE, (WPARAM)nRow, (LPARAM)nCol);
        else
            deleteCtrl(true);
    }
    m_bDragging = false;
}

BOOL KxUiXListCtrl::OnBeginDrag(NMHDR*, LRESULT* pResult)
{
    m_bDragging = true;
    *pResult = 0;
    return FALSE;  // the parent hears of the drag as usual
}

void KxUiXListCtrl::OnRButtonDown(UINT, CPoint)
{
    deleteCtrl(false);
    Default();
}

BOOL KxUiXListCtrl::OnMouseWheel(UINT, short, CPoint)
{
    deleteCtrl(false);
    Default();
    return TRUE;
}

void KxUiXListCtrl::OnSize(UINT, int, int)
{
    deleteCtrl(false);
    Default();
}

void KxUiXListCtrl::OnHScroll(UINT, UINT, CScrollBar*)
{
    // While an editor holds the focus, a scroll must not move the list under it.
    if (m_pEditor != nullptr && ::GetFocus() != m_hWnd)
        return;
    deleteCtrl(false);
    Default();
}

void KxUiXListCtrl::OnVScroll(UINT, UINT, CScrollBar*)
{
    if (m_pEditor != nullptr && ::GetFocus() != m_hWnd)
        return;
    deleteCtrl(false);
    Default();
}

void KxUiXListCtrl::OnKeyDown(UINT nChar, UINT, UINT)
{
    if (nChar == 'A' && ::GetKeyState(VK_CONTROL) < 0 && (GetStyle() & LVS_SINGLESEL) == 0) {
        SelectAll(true);
        return;
    }
    if (nChar == VK_F2) {
        int nRow = GetNextItem(-1, LVNI_SELECTED);
        if (SUBITEMARRAY* pRow = getSUBITEMARRAY(nRow)) {
            for (int nCol = 0; nCol < pRow->GetSize(); ++nCol) {
                if ((*pRow)[nCol].m_nType != TypeText) {
                    PostMessage(XM_CREATE, (WPARAM)nRow, (LPARAM)nCol);
                    break;
                }
            }
        }
        return;
    }
    Default();
}

void KxUiXListCtrl::OnMouseMove(UINT, CPoint point)
{
    updateToolTip(point);
    Default();
}

void KxUiXListCtrl::updateToolTip(CPoint point)
{
    if (m_toolTip.GetSafeHwnd() == nullptr)
        return;
    LVHITTESTINFO hit = {};
    hit.pt = point;
    SubItemHitTest(&hit);
    int nRow = hit.iItem, nCol = nRow >= 0 ? hit.iSubItem : -1;
    if (nRow != m_nToolRow || nCol != m_nToolCol) {
        // The one tool follows the cell under the mouse; its text is asked for when it shows.
        m_nToolRow = nRow;
        m_nToolCol = nCol;
        CRect rc(0, 0, 0, 0);
        if (nRow >= 0)
            GetSubItemRect(nRow, nCol, LVIR_BOUNDS, rc);
        m_toolTip.Pop();
        m_toolTip.SetToolRect(this, 1, &rc);
    }
    MSG msg = {};
    msg.hwnd = m_hWnd;
    msg.message = WM_MOUSEMOVE;
    msg.lParam = MAKELPARAM(point.x, point.y);
    msg.time = ::GetMessageTime();
    msg.pt = point;
    ClientToScreen(&msg.pt);
    m_toolTip.RelayEvent(&msg);
}

CString KxUiXListCtrl::getToolTipText() const
{
    const SUBITEM* pCell = findCell(m_nToolRow, m_nToolCol);
    return pCell != nullptr ? pCell->m_strToolTip : CString();
}

BOOL KxUiXListCtrl::OnToolTipText(UINT, NMHDR* pNMHDR, LRESULT* pResult)
{
    if (pNMHDR->hwndFrom != m_toolTip.GetSafeHwnd())
        return FALSE;
    m_strToolTipBuffer = getToolTipText();
    if (pNMHDR->code == TTN_NEEDTEXTW) {
        NMTTDISPINFOW* pInfo = reinterpret_cast<NMTTDISPINFOW*>(pNMHDR);
        pInfo->lpszText = const_cast<LPWSTR>((LPCWSTR)m_strToolTipBuffer);
    } else {
        NMTTDISPINFOA* pInfo = reinterpret_cast<NMTTDISPINFOA*>(pNMHDR);
        m_strToolTipBufferA = CStringA(m_strToolTipBuffer);
        pInfo->lpszText = const_cast<LPSTR>((LPCSTR)m_strToolTipBufferA);
    }
    *pResult = 0;
    return TRUE;
}

BOOL KxUiXListCtrl::OnColumnClick(NMHDR* pNMHDR, LRESULT* pResult)
{
    const NMLISTVIEW* pInfo = reinterpret_cast<const NMLISTVIEW*>(pNMHDR);
    *pResult = 0;
    m_nScratchRow = m_nScratchCol = -1;
    int nCol = pInfo->iSubItem;
    int nHeader = GetHeaderCheckedState(nCol);
    if (nHeader <= 0)
        return FALSE;
    // The header check flips, and the column's check cells follow it.
    SetHeaderCheckedState(nCol, nHeader == 1 ? 2 : 1);
    signed char cState = nHeader == 1 ? 1 : 0;
    for (INT_PTR i = 0; i < m_rows.GetSize(); ++i) {
        SUBITEM* pCell = findCell((int)i, nCol);
        if (pCell == nullptr || !isCheckKind(pCell->m_nType))
            continue;
        DefineRadioButton* pDef = dynamic_cast<DefineRadioButton*>(pCell->m_pDefine);
        if (pDef == nullptr || pDef->m_cState == -1)
            continue;
        pDef->m_cState = cState;
        UpdateSubItem((int)i, nCol);
    }
    return FALSE;
}

////////////////////////////////////////////////////////////////////////////
// Registered messages

LRESULT KxUiXListCtrl::OnXCreate(WPARAM wParam, LPARAM lParam)
{
    int nRow = (int)wParam;
    if (::GetFocus() == m_hWnd && nRow != -1)
        createCtrl(nRow, (int)lParam);
    return 0;
}

LRESULT KxUiXListCtrl::OnXReturn(WPARAM wParam, LPARAM lParam)
{
    if (m_bInsideDefaultClick) {
        m_nPendingMessage = XM_VK_RETURN;
        m_nPendingWParam = wParam;
        m_nPendingLParam = lParam;
        return 0;
    }
    int nPrevRow = m_nCtrlItem, nCol = m_nCtrlSubItem;
    deleteCtrl(lParam == 1);
    int nNewRow = -1;
    if ((wParam == VK_UP || wParam == VK_DOWN) && nPrevRow >= 0) {
        nNewRow = findEditableRow(nPrevRow, nCol, wParam == VK_UP ? -1 : 1);
        CListCtrl::SetItemState(-1, 0, LVIS_SELECTED | LVIS_FOCUSED);
    }
    m_nCtrlItem = nNewRow;
    if (nNewRow == -1)
        m_nCtrlSubItem = -1;
    UpdateSubItem(nPrevRow, nCol);
    if (nNewRow != -1)
        createCtrl(nNewRow, nCol);
    return 0;
}

LRESULT KxUiXListCtrl::OnXEscape(WPARAM, LPARAM)
{
    int nPrevRow = m_nCtrlItem, nCol = m_nCtrlSubItem;
    deleteCtrl(false);
    UpdateSubItem(nPrevRow, nCol);
    m_nCtrlItem = m_nCtrlSubItem = -1;
    return 0;
}

LRESULT KxUiXListCtrl::OnXSetFocus(WPARAM, LPARAM)
{
    SetFocus();
    return 0;
}

LRESULT KxUiXListCtrl::OnResizeColumn(WPARAM, LPARAM)
{
    deleteCtrl(false);
    return 0;
}

////////////////////////////////////////////////////////////////////////////
// Editors made by the list

KxUiXListBox* KxUiXListCtrl::createListBox(int, int, const CRect& rect)
{
    std::unique_ptr<KxUiXListBox> pBox(new KxUiXListBox);
    if (!pBox->Create(0x50A00100, rect, this, kEditorId))
        return nullptr;
    return pBox.release();
}

KxUiXComboBoxEdit* KxUiXListCtrl::createComboBoxEdit(int, int, const CRect& rect)
{
    std::unique_ptr<KxUiXComboBoxEdit> pCombo(new KxUiXComboBoxEdit);
    if (!pCombo->Create(0x50A00402, rect, this, kEditorId))
        return nullptr;
    return pCombo.release();
}

bool KxUiXListCtrl::onClickButton(int, int, CUIntArray&)
{
    return true;
}

////////////////////////////////////////////////////////////////////////////
// The handlers of the built-in kinds

namespace XControl {

namespace {

// The cell rectangle an editor covers; false when the cell is not on screen.
bool editorRect(KxUiXListCtrl* pList, int nRow, int nCol, CRect& rect)
{
    return pList->GetSubItemRect(nRow, nCol, LVIR_BOUNDS, rect) != FALSE && rect.Width() > 0;
}

void createEdit(KxUiXListCtrl* pList, int nRow, int nCol, const CString& strText)
{
    CRect rect;
    if (!editorRect(pList, nRow, nCol, rect))
        return;
    std::unique_ptr<CEdit> pEdit(new CEdit);
    if (!pEdit->Create(WS_CHILD | WS_VISIBLE | WS_BORDER | ES_AUTOHSCROLL, rect, pList, kEditorId))
        return;
    pEdit->SetWindowText(strText);
    pEdit->SetSel(0, -1);
    pList->setParentItemControl(nRow, nCol);
    CEdit* p = pEdit.release();
    adoptEditor(pList, p, p->GetSafeHwnd());
}

void createNumEdit(KxUiXListCtrl* pList, int nRow, int nCol, const CString& strText, int nDigits, bool bInfinite)
{
    CRect rect;
    if (!editorRect(pList, nRow, nCol, rect))
        return;
    std::unique_ptr<KxUiOXNumericEdit> pEdit(new KxUiOXNumericEdit);
    if (!pEdit->CreateCellEditor(rect, pList, kEditorId, nDigits, bInfinite, strText))
        return;
    pList->setParentItemControl(nRow, nCol);
    KxUiOXNumericEdit* p = pEdit.release();
    adoptEditor(pList, p, p->GetSafeHwnd());
}

// The check state of a cell's definition, or null.
DefineRadioButton* stateOf(SUBITEM* pCell)
{
    return pCell != nullptr ? dynamic_cast<DefineRadioButton*>(pCell->m_pDefine) : nullptr;
}

// Sets one radio or check cell and announces it.
void setCheck(KxUiXListCtrl* pList, int nRow, int nCol, signed char cState)
{
    SUBITEM* pCell = pList->GetSubItemData(nRow, nCol, false);
    DefineRadioButton* pDef = stateOf(pCell);
    if (pDef == nullptr || pDef->m_cState == cState)
        return;
    pDef->m_cState = cState;
    pList->UpdateSubItem(XM_CHECKBOX_CLICKED_2, *pCell, nRow, nCol);
}

// Every selected row of the same type takes the opposite of the clicked cell's state.
void toggleChecks(KxUiXListCtrl* pList, CUIntArray& rows, int nCol, const CString& strText)
{
    int nState = _wtoi(strText);
    if (nState == -1)
        return;
    signed char cNew = nState != 0 ? 0 : 1;
    for (INT_PTR i = 0; i < rows.GetSize(); ++i)
        setCheck(pList, (int)rows[i], nCol, cNew);
    int nHeader = pList->GetHeaderCheckedState(nCol);
    if (nHeader > 0)
        pList->SetHeaderCheckedState(nCol, pList->CountCheckedItems(nCol) == pList->GetItemCount() ? 2 : 1);
}

// The text every same-type row gets from an edit-like editor.
void writeTextBack(KxUiXListCtrl* pList, CUIntArray& rows, int nCol, const CString& strText)
{
    for (INT_PTR i = 0; i < rows.GetSize(); ++i) {
        int nRow = (int)rows[i];
        SUBITEM* pCell = pList->GetSubItemData(nRow, nCol, false);
        pCell->m_strText = strText;
        pList->UpdateSubItem(XM_SELECTION_2, *pCell, nRow, nCol);
    }
}

// A small drop-down arrow at the right of a cell.
void drawDropArrow(CDC* pDC, const CRect& rect, bool bEnabled)
{
    int cx = std::min(rect.Height() - 2, 16);
    if (cx <= 4 || rect.Width() < cx)
        return;
    CRect rc(rect.right - cx - 1, rect.top + 1, rect.right - 1, rect.bottom - 2);
    pDC->DrawFrameControl(&rc, DFC_SCROLL, DFCS_SCROLLCOMBOBOX | (bEnabled ? 0 : DFCS_INACTIVE));
}

bool cellEnabled(KxUiXListCtrl* pList, int nRow, int nCol)
{
    return pList->GetEnabled(nRow) && pList->IsWindowEnabled() && pList->GetSubItemData(nRow, nCol, false)->m_bEnabled;
}

// A square box of a cell's height, centred in the cell, for check boxes and radio buttons.
CRect boxRect(const CRect& rect)
{
    int n = std::min(13, rect.Height() - 3);
    CRect rc(0, 0, n, n);
    rc.OffsetRect(rect.left + (rect.Width() - n) / 2, rect.top + (rect.Height() - 1 - n) / 2);
    return rc;
}

}  // namespace

void fctCreateEditCtrl(KxUiXListCtrl* pList, CUIntArray&, int nRow, int nCol, CString strText)
{
    createEdit(pList, nRow, nCol, strText);
}

void fctCreateEditNumCtrl(KxUiXListCtrl* pList, CUIntArray&, int nRow, int nCol, CString strText)
{
    const DefineEditNum* pDef = dynamic_cast<const DefineEditNum*>(pList->GetSubItemData(nRow, nCol, false)->m_pDefine);
    bool bInteger = pDef != nullptr && pDef->m_bIntegerOnly;
    // An integer cell takes no fractional digits; another takes as many as the user types.
    createNumEdit(pList, nRow, nCol, strText, 0, !bInteger);
}

void fctCreateOxEditNumCtrl(KxUiXListCtrl* pList, CUIntArray&, int nRow, int nCol, CString strText)
{
    const DefineOxEditNum* pDef =
        dynamic_cast<const DefineOxEditNum*>(pList->GetSubItemData(nRow, nCol, false)->m_pDefine);
    createNumEdit(pList, nRow, nCol, strText, pDef != nullptr ? (int)pDef->m_nFractionalDigitCount : 0,
                  pDef != nullptr && pDef->m_bInfiniteFractionalDigit);
}

void fctCreateComboBox(KxUiXListCtrl* pList, CUIntArray&, int nRow, int nCol, CString strText)
{
    const DefineComboBox* pDef =
        dynamic_cast<const DefineComboBox*>(pList->GetSubItemData(nRow, nCol, false)->m_pDefine);
    if (pDef == nullptr || pDef->m_items.GetSize() == 0)
        return;
    CRect rect;
    if (!editorRect(pList, nRow, nCol, rect))
        return;
    KxUiXListBox* pBox = pList->createListBox(nRow, nCol, rect);
    if (pBox == nullptr)
        return;
    if (CFont* pFont = pList->GetFont())
        pBox->SetFont(pFont, FALSE);
    pBox->setItems(pDef->m_items);
    pBox->fitToCell(rect, pDef->m_nLines);
    pList->setParentItemControl(nRow, nCol);
    pList->setEditor(pBox);
    pBox->SetFocus();
    pBox->selectText(strText);
    pBox->SetWindowPos(&CWnd::wndTop, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
}

void fctCreateComboBoxEdit(KxUiXListCtrl* pList, CUIntArray&, int nRow, int nCol, CString strText)
{
    const DefineComboBoxEdit* pDef =
        dynamic_cast<const DefineComboBoxEdit*>(pList->GetSubItemData(nRow, nCol, false)->m_pDefine);
    CRect rect;
    if (!editorRect(pList, nRow, nCol, rect))
        return;
    KxUiXComboBoxEdit* pCombo = pList->createComboBoxEdit(nRow, nCol, rect);
    if (pCombo == nullptr)
        return;
    if (CFont* pFont = pList->GetFont())
        pCombo->SetFont(pFont, FALSE);
    if (pDef != nullptr)
        pCombo->setItems(pDef->m_items, pDef->m_nLines);
    pCombo->SetWindowText(strText);
    pList->setParentItemControl(nRow, nCol);
    HWND hEdit = pCombo->getEditPart();
    adoptEditor(pList, pCombo, hEdit != nullptr ? hEdit : pCombo->GetSafeHwnd());
    pCombo->SetEditSel(0, -1);
}

void fctCreateCheckBox(KxUiXListCtrl* pList, CUIntArray& rows, int, int nCol, CString strText)
{
    toggleChecks(pList, rows, nCol, strText);
}

void fctCreateCheckBoxBitmap(KxUiXListCtrl* pList, CUIntArray& rows, int, int nCol, CString strText)
{
    toggleChecks(pList, rows, nCol, strText);
}

void fctCreateBitmap(KxUiXListCtrl* pList, CUIntArray& rows, int, int nCol, CString strText)
{
    // A bitmap cell reads as -1 through getText: a click shows it, it changes nothing.
    toggleChecks(pList, rows, nCol, strText);
}

void fctCreateMyColorDialog(KxUiXListCtrl* pList, CUIntArray&, int nRow, int nCol, CString)
{
    static COLORREF s_custom[16] = {};
    const SUBITEM* pCell = pList->GetSubItemData(nRow, nCol, false);
    CHOOSECOLORW cc = {};
    cc.lStructSize = sizeof(cc);
    cc.hwndOwner = pList->GetSafeHwnd();
    cc.rgbResult = pCell->m_clrBk == (COLORREF)-1 ? ::GetSysColor(COLOR_WINDOW) : pCell->m_clrBk;
    cc.lpCustColors = s_custom;
    cc.Flags = CC_RGBINIT | CC_FULLOPEN;
    pList->setParentItemControl(nRow, nCol);
    if (::ChooseColorW(&cc)) {
        pList->setChosenColor(cc.rgbResult);
        pList->PostMessage(XM_VK_RETURN, VK_RETURN, 1);
    } else {
        pList->PostMessage(XM_VK_ESCAPE, 0, 0);
    }
}

void fctCreateRadioButtonVertical(KxUiXListCtrl* pList, CUIntArray&, int nRow, int nCol, CString)
{
    SUBITEM* pCell = pList->GetSubItemData(nRow, nCol, false);
    if (pCell->GetCheckbox() != 0)
        return;
    // The family is the column's type-13 cells; the others are cleared from the last row up.
    for (int i = pList->GetItemCount() - 1; i >= 0; --i) {
        if (i == nRow)
            continue;
        SUBITEM* pOther = pList->GetSubItemData(i, nCol, false);
        if (pOther->m_nType == TypeRadioV && pOther->GetCheckbox() == 1)
            setCheck(pList, i, nCol, 0);
    }
    setCheck(pList, nRow, nCol, 1);
}

void fctCreateRadioButtonHorizontal(KxUiXListCtrl* pList, CUIntArray&, int nRow, int nCol, CString)
{
    SUBITEM* pCell = pList->GetSubItemData(nRow, nCol, false);
    if (pCell->GetCheckbox() != 0)
        return;
    // The family is the run of adjacent type-14 cells around the clicked one.
    int nFirst = nCol, nLast = nCol;
    SUBITEMARRAY* pRow = pList->getSUBITEMARRAY(nRow);
    int nCount = pRow != nullptr ? (int)pRow->GetSize() : 0;
    while (nFirst > 0 && (*pRow)[nFirst - 1].m_nType == TypeRadioH)
        --nFirst;
    while (nLast + 1 < nCount && (*pRow)[nLast + 1].m_nType == TypeRadioH)
        ++nLast;
    for (int c = nFirst; c <= nLast; ++c) {
        if (c != nCol && (*pRow)[c].GetCheckbox() == 1)
            setCheck(pList, nRow, c, 0);
    }
    setCheck(pList, nRow, nCol, 1);
}

void fctCreateButton(KxUiXListCtrl* pList, CUIntArray& rows, int nRow, int nCol, CString)
{
    if (pList->onClickButton(nRow, nCol, rows)) {
        pList->setParentItemControl(nRow, nCol);
        pList->PostMessage(XM_VK_RETURN, VK_RETURN, 1);
    } else {
        pList->PostMessage(XM_VK_ESCAPE, 0, 0);
    }
}

void fctCreateBrowseFile(KxUiXListCtrl* pList, CUIntArray& rows, int nRow, int nCol, CString strText)
{
    WCHAR szFile[MAX_PATH] = {};
    lstrcpynW(szFile, strText, MAX_PATH);
    OPENFILENAMEW ofn = {};
    ofn.lStructSize = sizeof(ofn);
    ofn.hwndOwner = pList->GetSafeHwnd();
    ofn.lpstrFile = szFile;
    ofn.nMaxFile = MAX_PATH;
    ofn.Flags = OFN_HIDEREADONLY | OFN_PATHMUSTEXIST;
    if (!::GetOpenFileNameW(&ofn))
        return;
    writeTextBack(pList, rows, nCol, CString(szFile));
    (void)nRow;
}

void fctEndEditEditCtrl(KxUiXListCtrl* pList, CUIntArray& rows, int nRow, int nCol)
{
    CWnd* pEditor = pList->getEditor();
    const SUBITEM* pCell = pList->GetSubItemData(nRow, nCol, false);
    int nType = pCell->m_nType;
    if (pEditor == nullptr || pList->GetItemCount() == 0 ||
        (nType != TypeEdit && nType != TypeEditNum && nType != TypeOxEditNum))
        return;
    CString strText;
    pEditor->GetWindowText(strText);
    if (nType != TypeEdit) {
        // An emptied number is a zero; trailing fractional zeros and a bare separator go.
        if (strText.IsEmpty())
            strText = _T("0,0");
        XUtil::TransformeEntierOuReel(strText);
    }
    writeTextBack(pList, rows, nCol, strText);
}

void fctEndEditComboBox(KxUiXListCtrl* pList, CUIntArray& rows, int, int nCol)
{
    CListBox* pBox = dynamic_cast<CListBox*>(pList->getEditor());
    if (pBox == nullptr)
        return;
    int nSel = pBox->GetCurSel();
    if (nSel == LB_ERR)
        return;
    CString strEntry;
    pBox->GetText(nSel, strEntry);
    for (INT_PTR i = 0; i < rows.GetSize(); ++i) {
        int nRow = (int)rows[i];
        SUBITEM* pCell = pList->GetSubItemData(nRow, nCol, false);
        if (DefineComboBox* pDef = dynamic_cast<DefineComboBox*>(pCell->m_pDefine))
            pDef->m_nSel = nSel;
        pCell->m_strText = strEntry;
        pList->UpdateSubItem(XM_SELECTION_2, *pCell, nRow, nCol);
    }
}

void fctEndEditComboBoxEdit(KxUiXListCtrl* pList, CUIntArray& rows, int, int nCol)
{
    CComboBox* pCombo = dynamic_cast<CComboBox*>(pList->getEditor());
    if (pCombo == nullptr)
        return;
    CString strText;
    pCombo->GetWindowText(strText);
    for (INT_PTR i = 0; i < rows.GetSize(); ++i) {
        int nRow = (int)rows[i];
        SUBITEM* pCell = pList->GetSubItemData(nRow, nCol, false);
        if (DefineComboBoxEdit* pDef = dynamic_cast<DefineComboBoxEdit*>(pCell->m_pDefine)) {
            pDef->m_strText = strText;
            int nSel = -1;
            for (INT_PTR k = 0; k < pDef->m_items.GetSize(); ++k) {
                if (pDef->m_items[k] == strText) {
                    nSel = (int)k;
                    break;
                }
            }
            pDef->m_nSel = nSel;
        }
        pCell->m_strText = strText;
        pList->UpdateSubItem(XM_SELECTION_2, *pCell, nRow, nCol);
    }
}

void fctEndEditMyColorDialog(KxUiXListCtrl* pList, CUIntArray& rows, int, int nCol)
{
    COLORREF clr = pList->getChosenColor();
    if (clr == CLR_NONE)
        return;
    for (INT_PTR i = 0; i < rows.GetSize(); ++i) {
        int nRow = (int)rows[i];
        SUBITEM* pCell = pList->GetSubItemData(nRow, nCol, false);
        pCell->m_clrBk = clr;
        pList->UpdateSubItem(XM_SELECTION_2, *pCell, nRow, nCol);
    }
    pList->setChosenColor(CLR_NONE);
}

void fctEndEditButton(KxUiXListCtrl* pList, CUIntArray&, int nRow, int nCol)
{
    SUBITEM* pCell = pList->GetSubItemData(nRow, nCol, false);
    pList->UpdateSubItem(XM_BOUTONDOWN_2, *pCell, nRow, nCol);
}

void fctEndEditBitmap(KxUiXListCtrl*, CUIntArray&, int, int) {}

const FctEndEdit fctEndEditCheckBox = fctEndEditBitmap;
const FctEndEdit fctEndEditCheckBoxBitmap = fctEndEditBitmap;
const FctEndEdit fctEndEditRadioButtonVertical = fctEndEditBitmap;
const FctEndEdit fctEndEditRadioButtonHorizontal = fctEndEditBitmap;

void fctDrawEditCtrl(KxUiXListCtrl* pList, int nRow, int nCol, CDC* pDC, COLORREF clrText, COLORREF clrBk,
                     const RECT& rect)
{
    pList->DrawTextW(nRow, nCol, pDC, clrText, clrBk, CRect(rect), pList->getSUBITEMARRAY(nRow));
}

void fctDrawComboBoxCtrl(KxUiXListCtrl* pList, int nRow, int nCol, CDC* pDC, COLORREF clrText, COLORREF clrBk,
                         const RECT& rect)
{
    CRect rc(rect);
    drawDropArrow(pDC, rc, cellEnabled(pList, nRow, nCol));
    rc.right -= std::min(rc.Height() - 2, 16) + 1;
    pList->DrawTextW(nRow, nCol, pDC, clrText, clrBk, rc, pList->getSUBITEMARRAY(nRow));
}

void fctDrawComboBoxEdit(KxUiXListCtrl* pList, int nRow, int nCol, CDC* pDC, COLORREF clrText, COLORREF clrBk,
                         const RECT& rect)
{
    fctDrawComboBoxCtrl(pList, nRow, nCol, pDC, clrText, clrBk, rect);
}

void fctDrawCheckBox(KxUiXListCtrl* pList, int nRow, int nCol, CDC* pDC, COLORREF, COLORREF, const RECT& rect)
{
    int nState = pList->GetSubItemData(nRow, nCol, false)->GetCheckbox();
    if (nState == -1)
        return;
    CRect rc = boxRect(CRect(rect));
    UINT nFlags = DFCS_BUTTONCHECK | DFCS_FLAT | (nState == 1 ? DFCS_CHECKED : 0);
    if (!cellEnabled(pList, nRow, nCol))
        nFlags |= DFCS_INACTIVE;
    pDC->DrawFrameControl(&rc, DFC_BUTTON, nFlags);
}

void fctDrawCheckBoxBitmap(KxUiXListCtrl* pList, int nRow, int nCol, CDC* pDC, COLORREF clrText, COLORREF clrBk,
                           const RECT& rect)
{
    fctDrawBitmap(pList, nRow, nCol, pDC, clrText, clrBk, rect);
}

void fctDrawBitmap(KxUiXListCtrl* pList, int nRow, int nCol, CDC* pDC, COLORREF, COLORREF, const RECT& rect)
{
    // The first image for state 1 (or any state of a cell without one), the second otherwise.
    const SUBITEM* pCell = pList->GetSubItemData(nRow, nCol, false);
    const DefineRadioButton* pDef = dynamic_cast<const DefineRadioButton*>(pCell->m_pDefine);
    int nState = pDef != nullptr ? pDef->m_cState : 1;
    int nImage = nState == 0 ? pCell->m_nBitmap2 : pCell->m_nBitmap1;
    CImageList* pImages = pList->GetImageList(LVSIL_SMALL);
    int cx = 0, cy = 0;
    if (nImage < 0 || pImages == nullptr || nImage >= pImages->GetImageCount() || !pImages->GetIconSize(&cx, &cy))
        return;
    CRect rc(rect);
    pImages->Draw(pDC, nImage, CPoint(rc.left + (rc.Width() - cx) / 2, rc.top + (rc.Height() - cy) / 2),
                  ILD_TRANSPARENT);
}

void fctDrawRadioButton(KxUiXListCtrl* pList, int nRow, int nCol, CDC* pDC, COLORREF, COLORREF, const RECT& rect)
{
    int nState = pList->GetSubItemData(nRow, nCol, false)->GetCheckbox();
    if (nState == -1)
        return;
    CRect rc = boxRect(CRect(rect));
    UINT nFlags = DFCS_BUTTONRADIO | DFCS_FLAT | (nState == 1 ? DFCS_CHECKED : 0);
    if (!cellEnabled(pList, nRow, nCol))
        nFlags |= DFCS_INACTIVE;
    pDC->DrawFrameControl(&rc, DFC_BUTTON, nFlags);
}

void fctDrawButton(KxUiXListCtrl* pList, int nRow, int nCol, CDC* pDC, COLORREF, COLORREF, const RECT& rect)
{
    pList->DrawButton(pDC, CRect(rect), pList->GetSubItemData(nRow, nCol, false)->m_strText,
                      cellEnabled(pList, nRow, nCol));
}

}  // namespace XControl

////////////////////////////////////////////////////////////////////////////
// KxUiSortXListCtrl

IMPLEMENT_DYNAMIC(KxUiSortXListCtrl, KxUiXListCtrl)

BEGIN_MESSAGE_MAP(KxUiSortXListCtrl, KxUiXListCtrl)
    ON_NOTIFY_REFLECT_EX(LVN_COLUMNCLICK, &KxUiSortXListCtrl::OnSortColumnClick)
END_MESSAGE_MAP()

KxUiSortXListCtrl::KxUiSortXListCtrl() = default;

KxUiSortXListCtrl::~KxUiSortXListCtrl() = default;

KxUiXHeaderCtrl* KxUiSortXListCtrl::createHeaderCtrl()
{
    return new KxUiSortHeaderCtrl;
}

BOOL KxUiSortXListCtrl::OnSortColumnClick(NMHDR* pNMHDR, LRESULT* pResult)
{
    const NMLISTVIEW* pInfo = reinterpret_cast<const NMLISTVIEW*>(pNMHDR);
    *pResult = 0;
    m_nScratchRow = m_nScratchCol = -1;
    KxUiSortHeaderCtrl* pHeader = dynamic_cast<KxUiSortHeaderCtrl*>(getHeader());
    if (pHeader == nullptr)
        return FALSE;
    int nCol = pInfo->iSubItem;
    bool bAscending = pHeader->getSortAscending(nCol);
    if (pHeader->getSortColumn() == nCol)
        bAscending = !bAscending;
    Sort(nCol, bAscending);
    return FALSE;
}

void KxUiSortXListCtrl::Sort(int nCol, bool bAscending)
{
    CWaitCursor wait;
    deleteCtrl(false);
    if (KxUiSortHeaderCtrl* pHeader = dynamic_cast<KxUiSortHeaderCtrl*>(getHeader()))
        pHeader->setSortArrow(nCol, bAscending);
    // Selection and focus travel with the rows: saved in the rows, written back after the move.
    INT_PTR n = m_rows.GetSize();
    for (INT_PTR i = 0; i < n; ++i)
        m_rows[i]->m_nState = 0;
    if (m_hWnd != nullptr) {
        for (int i = GetNextItem(-1, LVNI_SELECTED); i >= 0; i = GetNextItem(i, LVNI_SELECTED))
            m_rows[i]->m_nState |= CListCtrl::GetItemState(i, kStateBits);
        int nFocus = GetNextItem(-1, LVNI_FOCUSED);
        if (nFocus >= 0 && nFocus < n)
            m_rows[nFocus]->m_nState |= CListCtrl::GetItemState(nFocus, kStateBits);
    }
    sort(nCol, bAscending);
    if (m_hWnd != nullptr) {
        CListCtrl::SetItemState(-1, 0, kStateBits);
        for (INT_PTR i = 0; i < n; ++i) {
            if (m_rows[i]->m_nState & kStateBits)
                CListCtrl::SetItemState((int)i, m_rows[i]->m_nState & kStateBits, kStateBits);
        }
        Invalidate();
    }
}

void KxUiSortXListCtrl::sort(int nCol, bool bAscending)
{
    if (m_rows.GetSize() >= 2)
        quickSortRows(0, (int)m_rows.GetSize() - 1, nCol, bAscending);
}

void KxUiSortXListCtrl::quickSortRows(int nLow, int nHigh, int nCol, bool bAscending)
{
    int i = nLow, j = nHigh;
    const SUBITEMARRAY* pPivot = m_rows[(nLow + nHigh) / 2];
    do {
        while (compareRows(*m_rows[i], *pPivot, nCol, bAscending) < 0)
            ++i;
        while (compareRows(*m_rows[j], *pPivot, nCol, bAscending) > 0)
            --j;
        if (i <= j) {
            if (i != j) {
                SUBITEMARRAY* p = m_rows[i];
                m_rows[i] = m_rows[j];
                m_rows[j] = p;
            }
            ++i;
            --j;
        }
    } while (i <= j);
    if (nLow < j)
        quickSortRows(nLow, j, nCol, bAscending);
    if (i < nHigh)
        quickSortRows(i, nHigh, nCol, bAscending);
}

int KxUiSortXListCtrl::compareRows(const SUBITEMARRAY& a, const SUBITEMARRAY& b, int nCol, bool bAscending) const
{
    if (nCol >= 0 && nCol < a.GetSize() && nCol < b.GetSize())
        return a.compareTo(b, nCol, bAscending);
    const SUBITEM& ca = nCol >= 0 && nCol < a.GetSize() ? a[nCol] : defaultCell();
    const SUBITEM& cb = nCol >= 0 && nCol < b.GetSize() ? b[nCol] : defaultCell();
    int n = ca.compareTo(cb);
    return bAscending ? n : -n;
}

void KxUiSortXListCtrl::resizeAllColumnWithItem()
{
    KxUiXListCtrl::resizeAllColumnWithItem();
    if (KxUiSortHeaderCtrl* pHeader = dynamic_cast<KxUiSortHeaderCtrl*>(getHeader()))
        pHeader->setSortArrow(-1, true);
}
