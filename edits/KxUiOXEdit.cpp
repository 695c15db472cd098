#include "KxUiOXEdit.h"
#include <tchar.h>
#include <algorithm>

IMPLEMENT_DYNCREATE(KxUiOXEdit, CEdit)

BEGIN_MESSAGE_MAP(KxUiOXEdit, CEdit)
    ON_WM_CHAR()
    ON_WM_KEYDOWN()
    ON_WM_LBUTTONDOWN()
    ON_WM_SETFOCUS()
    ON_MESSAGE(WM_SETTEXT, &KxUiOXEdit::OnSetText)
    ON_MESSAGE(WM_SETFONT, &KxUiOXEdit::OnSetFont)
    ON_MESSAGE(WM_CUT, &KxUiOXEdit::OnCut)
    ON_MESSAGE(WM_CLEAR, &KxUiOXEdit::OnClear)
    ON_MESSAGE(WM_PASTE, &KxUiOXEdit::OnPaste)
    ON_MESSAGE(EM_REPLACESEL, &KxUiOXEdit::OnPaste)
    ON_MESSAGE(WM_UNDO, &KxUiOXEdit::OnUndo)
    ON_MESSAGE(EM_UNDO, &KxUiOXEdit::OnUndo)
    ON_CONTROL_REFLECT_EX(EN_UPDATE, &KxUiOXEdit::OnNativeUpdate)
    ON_CONTROL_REFLECT_EX(EN_CHANGE, &KxUiOXEdit::OnNativeUpdate)
    ON_WM_CTLCOLOR_REFLECT()
END_MESSAGE_MAP()

namespace {

bool keyDown(int vk)
{
    return (::GetKeyState(vk) & 0x8000) != 0;
}

LONG_PTR styleOf(HWND hWnd)
{
    return ::GetWindowLongPtrW(hWnd, GWL_STYLE);
}

} // namespace

KxUiOXEdit::KxUiOXEdit()
    : m_clrText(::GetSysColor(COLOR_WINDOWTEXT)),
      m_clrBack(::GetSysColor(COLOR_WINDOW)),
      m_sMask(_T("#")),
      m_nInsertMode(1),
      m_nUpdateDepth(0),
      m_bNotifyChange(1),
      m_bHighlightOnSetFocus(0),
      m_bSettingFont(0)
{
}

KxUiOXEdit::~KxUiOXEdit()
{
    // The window goes while the font and brush it draws with still exist.
    DestroyWindow();
}

BOOL KxUiOXEdit::Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    m_bCreating = true;
    BOOL bOk = CEdit::Create(dwStyle, rect, pParentWnd, nID);
    m_bCreating = false;
    if (bOk)
        InitControl();
    return bOk;
}

void KxUiOXEdit::PreSubclassWindow()
{
    CEdit::PreSubclassWindow();
    // Creation initialises once the native edit exists (in Create); subclassing an existing
    // edit initialises here.
    if (!m_bCreating)
        InitControl();
}

// ---------------------------------------------------------------------------------------
// Mask and data

BOOL KxUiOXEdit::ParseMask(LPCTSTR lpszMask)
{
    if (lpszMask == nullptr)
        return FALSE;
    CString sLeft, sRight;
    bool bAfterInput = false;
    for (const TCHAR* p = lpszMask; *p; ++p) {
        if (*p == _T('#')) {
            if (p[1] != _T('#')) {
                bAfterInput = true;
                continue;
            }
            ++p; // "##": one literal "#"
        }
        (bAfterInput ? sRight : sLeft) += *p;
    }
    if (!bAfterInput)
        return FALSE;
    m_arrLeftLiterals = sLeft;
    m_arrRightLiterals = sRight;
    m_sMask = lpszMask;
    return TRUE;
}

BOOL KxUiOXEdit::SetMask(LPCTSTR lpszMask)
{
    if (lpszMask == nullptr || *lpszMask == 0 || _tcschr(lpszMask, _T('#')) == nullptr)
        return FALSE;
    CString sOld = m_sMask;
    CString sInput = m_arrInputData;
    DeleteContents();
    m_arrInputData = sInput;
    if (!ParseMask(lpszMask)) {
        ParseMask(sOld);
        return FALSE;
    }
    ValidateInput();
    Update(-1);
    return TRUE;
}

CString KxUiOXEdit::GetFormattedText() const
{
    return m_arrLeftLiterals + m_arrInputData + m_arrRightLiterals;
}

int KxUiOXEdit::RPtoLP(int nRealPos) const
{
    int nLeft = m_arrLeftLiterals.GetLength();
    if (nRealPos < nLeft || nRealPos > nLeft + m_arrInputData.GetLength())
        return -1;
    return nRealPos - nLeft;
}

int KxUiOXEdit::LPtoRP(int nLogicalPos) const
{
    if (nLogicalPos < 0 || nLogicalPos > m_arrInputData.GetLength())
        return -1;
    return nLogicalPos + m_arrLeftLiterals.GetLength();
}

CString KxUiOXEdit::GetInputData() const
{
    return m_arrInputData;
}

BOOL KxUiOXEdit::SetInputData(LPCTSTR lpszInputData, int nBeginPos)
{
    if (nBeginPos < 0 || nBeginPos > m_arrInputData.GetLength())
        return FALSE;
    // A single-line edit cannot show line breaks or other control characters, and typing
    // never puts them into the input: they are left out here too.
    bool bMultiLine = m_hWnd != nullptr && (styleOf(m_hWnd) & ES_MULTILINE) != 0;
    CString sText;
    for (const TCHAR* p = lpszInputData ? lpszInputData : _T(""); *p; ++p) {
        if (*p >= 0x20 || (bMultiLine && (*p == _T('\r') || *p == _T('\n'))))
            sText += *p;
    }
    if (m_nInsertMode) {
        m_arrInputData.Insert(nBeginPos, sText);
    } else {
        int nKeep = m_arrInputData.GetLength() - nBeginPos - sText.GetLength();
        CString sTail = nKeep > 0 ? m_arrInputData.Right(nKeep) : CString();
        m_arrInputData = m_arrInputData.Left(nBeginPos) + sText + sTail;
    }
    ValidateInput();
    Update(-1);
    return TRUE;
}

void KxUiOXEdit::EmptyData(BOOL bOnlyInput)
{
    if (bOnlyInput)
        m_arrInputData.Empty();
    else
        DeleteContents();
    Update(-1);
}

void KxUiOXEdit::ValidationError()
{
    ::MessageBeep(MB_ICONEXCLAMATION);
}

BOOL KxUiOXEdit::GetLocaleSettings()
{
    return TRUE;
}

void KxUiOXEdit::InitControl()
{
    if (m_hWnd == nullptr)
        return;
    SaveFont(reinterpret_cast<HFONT>(::SendMessageW(m_hWnd, WM_GETFONT, 0, 0)));
    // A dialog template's text becomes the input, as a text set from outside would.
    int nLength = ::GetWindowTextLengthW(m_hWnd);
    CString sText;
    if (nLength > 0) {
        ::GetWindowTextW(m_hWnd, sText.GetBuffer(nLength + 1), nLength + 1);
        sText.ReleaseBuffer();
    }
    m_arrInputData.Empty();
    SetInputData(sText, 0);
    if (!m_sToolTipText.IsEmpty())
        AttachToolTip();
}

int KxUiOXEdit::ValidateInput()
{
    return 0;
}

void KxUiOXEdit::DeleteContents()
{
    m_arrLeftLiterals.Empty();
    m_arrRightLiterals.Empty();
    m_arrInputData.Empty();
}

BOOL KxUiOXEdit::IsInputData(int nPosition) const
{
    int nLeft = m_arrLeftLiterals.GetLength();
    return nPosition >= nLeft && nPosition < nLeft + m_arrInputData.GetLength();
}

BOOL KxUiOXEdit::IsInputPosition(int nPosition) const
{
    int nLeft = m_arrLeftLiterals.GetLength();
    return nPosition >= nLeft && nPosition <= nLeft + m_arrInputData.GetLength();
}

BOOL KxUiOXEdit::RemoveInput(int nStart, int nEnd)
{
    int nLeft = m_arrLeftLiterals.GetLength();
    int nFrom = std::max(nStart, nLeft) - nLeft;
    int nTo = std::min(nEnd, nLeft + m_arrInputData.GetLength()) - nLeft;
    if (nFrom >= nTo)
        return FALSE;
    m_arrInputData.Delete(nFrom, nTo - nFrom);
    return TRUE;
}

int KxUiOXEdit::DeleteRange(int& nSelectionStart, int& nSelectionEnd)
{
    if (!RemoveInput(nSelectionStart, nSelectionEnd))
        return 0;
    nSelectionStart = std::max(nSelectionStart, m_arrLeftLiterals.GetLength());
    nSelectionStart += ValidateInput();
    nSelectionEnd = nSelectionStart;
    return 1;
}

int KxUiOXEdit::InsertAt(int nSelectionStart, TCHAR chNewChar)
{
    if (!IsInputPosition(nSelectionStart))
        nSelectionStart = GetNextInputLocation(nSelectionStart + 1);
    int nLogical = RPtoLP(nSelectionStart);
    if (nLogical < 0)
        return -1;
    m_arrInputData.Insert(nLogical, chNewChar);
    int nShift = ValidateInput();
    Update(-1);
    return nSelectionStart + nShift;
}

int KxUiOXEdit::SetAt(int nSelectionStart, TCHAR chNewChar)
{
    if (!IsInputData(nSelectionStart)) {
        nSelectionStart = GetNextInputLocation(nSelectionStart + 1);
        if (!IsInputData(nSelectionStart))
            return -1;
    }
    m_arrInputData.SetAt(RPtoLP(nSelectionStart), chNewChar);
    int nShift = ValidateInput();
    Update(-1);
    return nSelectionStart + nShift;
}

int KxUiOXEdit::GetNextInputLocation(int nSelectionStart)
{
    int nLeft = m_arrLeftLiterals.GetLength();
    int nEnd = nLeft + m_arrInputData.GetLength();
    if (IsInputPosition(nSelectionStart))
        return nSelectionStart;
    for (int p = std::max(nSelectionStart + 1, 0); p <= nEnd; ++p) {
        if (IsInputPosition(p))
            return p;
    }
    return nEnd;
}

int KxUiOXEdit::GetPreviousInputLocation(int nSelectionStart)
{
    int nLeft = m_arrLeftLiterals.GetLength();
    int nEnd = nLeft + m_arrInputData.GetLength();
    if (IsInputPosition(nSelectionStart))
        return nSelectionStart;
    for (int p = std::min(nSelectionStart - 1, nEnd); p >= nLeft; --p) {
        if (IsInputPosition(p))
            return p;
    }
    return nLeft;
}

// ---------------------------------------------------------------------------------------
// Window text, caret, colours, tooltip

void KxUiOXEdit::Update(int nCaret)
{
    if (m_hWnd == nullptr || !::IsWindow(m_hWnd))
        return;
    ++m_nUpdateDepth;
    CString sText = GetFormattedText();
    ::SendMessageW(m_hWnd, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(static_cast<LPCTSTR>(sText)));
    --m_nUpdateDepth;
    if (nCaret >= 0)
        SetCaret(nCaret);
}

void KxUiOXEdit::SetCaret(int nPos)
{
    if (m_hWnd == nullptr)
        return;
    int nAt = GetNextInputLocation(nPos);
    ::SendMessageW(m_hWnd, EM_SETSEL, nAt, nAt);
    ::SendMessageW(m_hWnd, EM_SCROLLCARET, 0, 0);
}

void KxUiOXEdit::GetSelection(int& nStart, int& nEnd) const
{
    DWORD dwStart = 0, dwEnd = 0;
    ::SendMessageW(m_hWnd, EM_GETSEL, reinterpret_cast<WPARAM>(&dwStart),
                   reinterpret_cast<LPARAM>(&dwEnd));
    nStart = static_cast<int>(std::min(dwStart, dwEnd));
    nEnd = static_cast<int>(std::max(dwStart, dwEnd));
}

void KxUiOXEdit::NotifyParent(UINT nCode)
{
    HWND hParent = ::GetParent(m_hWnd);
    if (hParent == nullptr)
        return;
    m_bOwnNotify = true;
    ::SendMessageW(hParent, WM_COMMAND, MAKEWPARAM(::GetDlgCtrlID(m_hWnd), nCode),
                   reinterpret_cast<LPARAM>(m_hWnd));
    m_bOwnNotify = false;
}

void KxUiOXEdit::SaveFont(HFONT hFont)
{
    LOGFONTW lf;
    if (hFont == nullptr || ::GetObjectW(hFont, sizeof(lf), &lf) != sizeof(lf))
        return;
    m_font.DeleteObject();
    m_font.CreateFontIndirect(&lf);
}

void KxUiOXEdit::SetTextColor(COLORREF clrText, BOOL bRedraw)
{
    m_clrText = clrText;
    if (bRedraw && m_hWnd != nullptr)
        ::InvalidateRect(m_hWnd, nullptr, TRUE);
}

void KxUiOXEdit::SetBkColor(COLORREF clrBack, BOOL bRedraw)
{
    m_clrBack = clrBack;
    m_brBack.DeleteObject();
    if (bRedraw && m_hWnd != nullptr)
        ::InvalidateRect(m_hWnd, nullptr, TRUE);
}

BOOL KxUiOXEdit::SetToolTipText(LPCTSTR lpszText)
{
    m_sToolTipText = lpszText ? lpszText : _T("");
    if (m_hWnd != nullptr)
        AttachToolTip();
    return TRUE;
}

void KxUiOXEdit::AttachToolTip()
{
    if (m_toolTip.m_hWnd == nullptr) {
        if (m_sToolTipText.IsEmpty() || !m_toolTip.Create(this, TTS_ALWAYSTIP))
            return;
    }
    TOOLINFOW ti = {};
    ti.cbSize = sizeof(ti);
    ti.hwnd = m_hWnd;
    ti.uId = reinterpret_cast<UINT_PTR>(m_hWnd);
    m_toolTip.SendMessage(TTM_DELTOOLW, 0, reinterpret_cast<LPARAM>(&ti));
    if (m_sToolTipText.IsEmpty())
        return;
    // The tooltip subclasses the edit itself, so no message relaying is needed.
    ti.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
    ti.lpszText = const_cast<LPWSTR>(static_cast<LPCTSTR>(m_sToolTipText));
    m_toolTip.SendMessage(TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&ti));
}

BOOL KxUiOXEdit::OnNativeUpdate()
{
    // While the control writes its own text, the native edit's notifications are replaced
    // by the control's own (sent after the text is in place).
    return m_nUpdateDepth > 0 && !m_bOwnNotify;
}

HBRUSH KxUiOXEdit::CtlColor(CDC* pDC, UINT)
{
    // A disabled control keeps the system's greyed look; read-only ones take the colours.
    if (!::IsWindowEnabled(m_hWnd))
        return nullptr;
    pDC->SetTextColor(m_clrText);
    pDC->SetBkColor(m_clrBack);
    if (m_brBack.m_hObject == nullptr)
        m_brBack.CreateSolidBrush(m_clrBack);
    return static_cast<HBRUSH>(m_brBack.m_hObject);
}

// ---------------------------------------------------------------------------------------
// User input

// Deletes [nStart, nEnd), shifting the range by nStep while nothing deletable lies in it and
// its start has not passed nLimit. Returns the caret position, or -1 when nothing was deleted.
int KxUiOXEdit::DeleteMoving(int nStart, int nEnd, int nStep, int nLimit)
{
    for (;;) {
        int s = nStart, e = nEnd;
        if (DeleteRange(s, e))
            return s;
        nStart += nStep;
        nEnd += nStep;
        if ((nStep < 0 && nStart < nLimit) || (nStep > 0 && nStart > nLimit))
            return -1;
    }
}

void KxUiOXEdit::OnChar(UINT nChar, UINT, UINT)
{
    LONG_PTR nStyle = styleOf(m_hWnd);
    if (nStyle & ES_READONLY) {
        Default();
        return;
    }
    int nStart, nEnd;
    GetSelection(nStart, nEnd);

    TCHAR ch = static_cast<TCHAR>(nChar);
    bool bReturn = ch == _T('\r') || ch == _T('\n');
    bool bReturnAccepted = (nStyle & ES_MULTILINE) && (ch == _T('\n') || (nStyle & ES_WANTRETURN));
    if (bReturn)
        ch = _T('\r');
    if ((ch < 0x20 || ch == 0x7F) && ch != VK_BACK && !(bReturn && bReturnAccepted)) {
        Default();
        return;
    }

    if (ch == VK_BACK) {
        int nCaret = nStart != nEnd ? DeleteMoving(nStart, nEnd, -1, 0)
                                    : (nStart > 0 ? DeleteMoving(nStart - 1, nStart, -1, 0) : -1);
        if (nCaret >= 0)
            Update(nCaret);
        return;
    }

    // Return becomes a line break; the result is the position of its last character.
    auto place = [&](int nPos, bool bInsert) {
        int nResult = bInsert ? InsertAt(nPos, ch) : SetAt(nPos, ch);
        if (nResult >= 0 && ch == _T('\r'))
            nResult = InsertAt(nResult + 1, _T('\n'));
        return nResult;
    };

    // ES_NUMBER refuses other characters natively; checked before a selection is replaced,
    // so that a refused character cannot delete it.
    if ((nStyle & ES_NUMBER) && !(ch >= _T('0') && ch <= _T('9')) && !bReturn) {
        Default();
        return;
    }

    if (nStart != nEnd) {
        int s = nStart, e = nEnd;
        if (!DeleteRange(s, e)) {
            ValidationError();
            SetCaret(nStart);
            return;
        }
        int nResult = place(s, true);
        if (nResult < 0) {
            ValidationError();
            Update(s);
        } else {
            Update(nResult + 1);
        }
        return;
    }

    if (!IsInputPosition(nStart)) {
        ValidationError();
        SetCaret(nStart);
        return;
    }
    int nResult = place(nStart, m_nInsertMode != 0);
    if (nResult < 0) {
        ValidationError();
        SetCaret(nStart);
    } else {
        SetCaret(nResult + 1);
    }
}

void KxUiOXEdit::OnKeyDown(UINT nChar, UINT, UINT)
{
    if (styleOf(m_hWnd) & ES_READONLY) {
        Default();
        return;
    }
    bool bShift = keyDown(VK_SHIFT);
    int nStart, nEnd;
    switch (nChar) {
    case VK_DELETE: {
        GetSelection(nStart, nEnd);
        int nLast = m_arrLeftLiterals.GetLength() + m_arrInputData.GetLength();
        int nCaret = DeleteMoving(nStart, nStart != nEnd ? nEnd : nStart + 1, +1, nLast);
        if (nCaret >= 0)
            Update(nCaret);
        return;
    }
    case VK_HOME:
    case VK_END:
    case VK_LEFT:
    case VK_UP:
    case VK_RIGHT:
    case VK_DOWN:
        Default();
        if (!bShift) {
            GetSelection(nStart, nEnd);
            if (!IsInputPosition(nStart)) {
                bool bForward = nChar == VK_HOME || nChar == VK_RIGHT || nChar == VK_DOWN;
                int nAt = bForward ? GetNextInputLocation(nStart) : GetPreviousInputLocation(nStart);
                ::SendMessageW(m_hWnd, EM_SETSEL, nAt, nAt);
            }
        }
        return;
    case VK_INSERT:
        // Shift+Insert and Ctrl+Insert keep their usual meaning, paste and copy. They go
        // through the clipboard messages: the native edit would paste on its own, past the
        // input data.
        if (bShift)
            ::SendMessageW(m_hWnd, WM_PASTE, 0, 0);
        else if (keyDown(VK_CONTROL))
            ::SendMessageW(m_hWnd, WM_COPY, 0, 0);
        else
            m_nInsertMode = !m_nInsertMode;
        return;
    default:
        Default();
        return;
    }
}

void KxUiOXEdit::OnLButtonDown(UINT, CPoint)
{
    Default();
    int nStart, nEnd;
    GetSelection(nStart, nEnd);
    if (nStart == nEnd && !IsInputPosition(nStart))
        SetCaret(nStart);
}

void KxUiOXEdit::OnSetFocus(CWnd*)
{
    Default();
    if (!m_bHighlightOnSetFocus) {
        // The dialog manager selects the whole text of an edit tabbed into; the caret goes
        // to the input instead.
        int nStart, nEnd;
        GetSelection(nStart, nEnd);
        int nLength = ::GetWindowTextLengthW(m_hWnd);
        if (nStart == 0 && nEnd == nLength && nLength > 0)
            SetCaret(0);
    }
    if (m_font.m_hObject != nullptr) {
        m_bSettingFont = 1;
        ::SendMessageW(m_hWnd, WM_SETFONT, reinterpret_cast<WPARAM>(m_font.m_hObject), TRUE);
        m_bSettingFont = 0;
    }
}

LRESULT KxUiOXEdit::OnSetFont(WPARAM wParam, LPARAM)
{
    if (!m_bSettingFont)
        SaveFont(reinterpret_cast<HFONT>(wParam));
    return Default();
}

LRESULT KxUiOXEdit::OnSetText(WPARAM, LPARAM lParam)
{
    LPCTSTR lpszText = reinterpret_cast<LPCTSTR>(lParam);
    if (m_nUpdateDepth > 0) {
        LRESULT lResult = Default();
        NotifyParent(EN_UPDATE);
        if (m_bNotifyChange)
            NotifyParent(EN_CHANGE);
        return lResult;
    }
    m_bNotifyChange = 0;
    m_arrInputData.Empty();
    SetInputData(lpszText ? lpszText : _T(""), 0);
    m_bNotifyChange = 1;
    return TRUE;
}

CString KxUiOXEdit::ShownText() const
{
    CString sText;
    int nLength = ::GetWindowTextLengthW(m_hWnd);
    ::GetWindowTextW(m_hWnd, sText.GetBuffer(nLength + 1), nLength + 1);
    sText.ReleaseBuffer();
    return sText;
}

LRESULT KxUiOXEdit::OnCut(WPARAM, LPARAM)
{
    return CutOrClear(true);
}

LRESULT KxUiOXEdit::OnClear(WPARAM, LPARAM)
{
    return CutOrClear(false);
}

LRESULT KxUiOXEdit::CutOrClear(bool bCut)
{
    if (styleOf(m_hWnd) & ES_READONLY)
        return Default();
    int nStart, nEnd;
    GetSelection(nStart, nEnd);
    LRESULT lResult = Default();
    int s = nStart, e = nEnd;
    bool bDeleted = DeleteRange(s, e) != 0;
    // A cut always shows the input again. A selection of literals only deletes nothing,
    // but the native edit has removed them from the window: a clear refreshes whenever the
    // text no longer matches.
    if (bCut || bDeleted || ShownText() != GetFormattedText())
        Update(bDeleted ? s : nStart);
    return lResult;
}

LRESULT KxUiOXEdit::OnPaste(WPARAM, LPARAM)
{
    // A text put in by the application (EM_REPLACESEL) replaces the selection as a paste.
    if (GetCurrentMessage()->message == WM_PASTE && (styleOf(m_hWnd) & ES_READONLY))
        return Default();
    int nStart, nEnd;
    GetSelection(nStart, nEnd);
    LRESULT lResult = Default();
    CString sText = ShownText();
    int nLeft = m_arrLeftLiterals.GetLength(), nRight = m_arrRightLiterals.GetLength();
    if (nLeft > 0 && sText.Left(nLeft) == m_arrLeftLiterals)
        sText = sText.Mid(nLeft);
    if (nRight > 0 && sText.GetLength() >= nRight && sText.Right(nRight) == m_arrRightLiterals)
        sText = sText.Left(sText.GetLength() - nRight);
    m_arrInputData.Empty();
    SetInputData(sText, 0);
    SetCaret(nStart);
    return lResult;
}

LRESULT KxUiOXEdit::OnUndo(WPARAM, LPARAM)
{
    return FALSE;
}
