// KxUiWindowBinary and its records: window placement, child control state and splitter position.
#include "KxUiWindowBinary.h"
#include "KxUiLayoutManager.h"
#include "KxUiSplitter.h"
#include <afxwin.h>
#include <afxdlgs.h>
#include <algorithm>
#include <vector>

static_assert(sizeof(WINDOWPLACEMENT) == 44, "the stored placement is the platform's 44-byte structure");

namespace {

// A placement kept from moving: the move is made with SWP_NOMOVE, and the same bit value (2) goes
// into the placement's own flags, as placements stored by earlier versions carry it.
const UINT kNoMovePositionFlag = SWP_NOMOVE;
const UINT kNoMovePlacementFlag = 2;
static_assert(kNoMovePositionFlag == kNoMovePlacementFlag, "one bit value in both places");

// The most characters a stored text puts into a single-line control, whatever its own limit: a line
// of hundreds of kilobytes brings the platform's text drawing down. A multi-line control takes up to
// its own limit, but never more than kMaxMultiLineText.
const UINT kMaxSingleLineText = 32767;
const UINT kMaxMultiLineText = 1u << 20;

// The two low style bits of a combo box give its type (simple, drop-down, drop-down list).
const DWORD kComboTypeBits = 3;

CString runtimeClassName(const CWnd* pWnd)
{
    const CRuntimeClass* pClass = pWnd ? pWnd->GetRuntimeClass() : nullptr;
    return pClass && pClass->m_lpszClassName ? CString(pClass->m_lpszClassName) : CString();
}

// Reads a 32-bit value; false when fewer than 4 bytes are left.
bool readInt(CMemFile& stream, int& nValue)
{
    return stream.Read(&nValue, sizeof(nValue)) == sizeof(nValue);
}

void writeInt(CMemFile& stream, int nValue)
{
    stream.Write(&nValue, sizeof(nValue));
}

}  // namespace

// --- KxUiWindowBinary ------------------------------------------------------------------------------

KxUiWindowBinary::~KxUiWindowBinary()
{
}

bool KxUiWindowBinary::loadData(CWnd* pWnd)
{
    // Without an application object there is no profile: nothing is read or applied and the
    // record stays as it was, so that it loads once the application exists.
    if (!pWnd || m_bLoaded || !AfxGetApp())
        return false;
    CMemFile stream(1024);
    bool bResult = getProfileBinary(pWnd, stream) ? setFromStream(pWnd, stream) : initializeWhenNoStream(pWnd);
    m_bLoaded = bResult;
    return bResult;
}

bool KxUiWindowBinary::saveData(const CWnd* pWnd)
{
    // A window that is gone has no state to give; writing would replace the stored state with nothing.
    if (!pWnd || !::IsWindow(pWnd->GetSafeHwnd()) || !AfxGetApp())
        return false;
    CMemFile stream(1024);
    getStream(pWnd, stream);
    return writeProfileBinary(pWnd, stream);
}

bool KxUiWindowBinary::getProfileBinary(const CWnd* pWnd, CMemFile& stream)
{
    CWinApp* pApp = AfxGetApp();
    if (!pApp)
        return false;
    CString strSection = getSectionName(pWnd);
    if (strSection.IsEmpty())
        return false;
    BYTE* pData = nullptr;
    UINT nBytes = 0;
    if (!pApp->GetProfileBinary(strSection, getEntryName(), &pData, &nBytes)) {
        delete[] pData;
        return false;
    }
    if (pData && nBytes)
        stream.Write(pData, nBytes);
    delete[] pData;
    stream.SeekToBegin();
    return true;
}

bool KxUiWindowBinary::writeProfileBinary(const CWnd* pWnd, CMemFile& stream)
{
    CWinApp* pApp = AfxGetApp();
    if (!pApp)
        return false;
    CString strSection = getSectionName(pWnd);
    if (strSection.IsEmpty())
        return false;
    UINT nLength = (UINT)stream.GetLength();
    std::vector<BYTE> bytes(nLength ? nLength : 1);
    stream.SeekToBegin();
    nLength = stream.Read(bytes.data(), nLength);
    stream.SeekToBegin();
    return pApp->WriteProfileBinary(strSection, getEntryName(), bytes.data(), nLength) != FALSE;
}

// --- section names ---------------------------------------------------------------------------------

CString KxUiContainerWindowBinary::getSectionName(const CWnd* pWnd)
{
    CString strClass = runtimeClassName(pWnd);
    if (strClass.IsEmpty())
        return CString();
    CString strSection;
    strSection.Format(L"Window\\%s", (LPCTSTR)strClass);
    return strSection;
}

CWnd* KxUiChildWindowBinary::getCWnd(const CWnd* pWnd) const
{
    if (!pWnd || !::IsWindow(pWnd->GetSafeHwnd()))
        return nullptr;
    return pWnd->GetDlgItem((int)m_nId);
}

CString KxUiChildWindowBinary::getWndName(const CWnd* pWnd) const
{
    return pWnd ? KxUiLayoutManager::_getWndName(*pWnd) : CString();
}

CString KxUiChildWindowBinary::getSectionName(const CWnd* pWnd)
{
    CWnd* pChild = getCWnd(pWnd);
    CString strContainer = KxUiContainerWindowBinary::getSectionName(pWnd);
    CString strChild = runtimeClassName(pChild);
    if (!pChild || strContainer.IsEmpty() || strChild.IsEmpty())
        return CString();
    CString strSection;
    strSection.Format(L"%s\\%s_%d", (LPCTSTR)strContainer, (LPCTSTR)strChild, (int)m_nId);
    return strSection;
}

// --- placement -------------------------------------------------------------------------------------

CString KxUiWindowPlacementBinary::getEntryName()
{
    return L"WINDOWPLACEMENT";
}

bool KxUiWindowPlacementBinary::initializeWhenNoStream(CWnd*)
{
    return true;
}

void KxUiWindowPlacementBinary::getStream(const CWnd* pWnd, CMemFile& stream)
{
    WINDOWPLACEMENT wp = {};
    wp.length = sizeof(wp);
    if (pWnd && ::GetWindowPlacement(pWnd->GetSafeHwnd(), &wp))
        stream.Write(&wp, sizeof(wp));
}

bool KxUiWindowPlacementBinary::isOnScreen(const RECT& rcNormal, bool bAskMonitor)
{
    if (bAskMonitor) {
        if (HMODULE hUser = ::LoadLibraryW(L"user32.dll")) {
            typedef HMONITOR(WINAPI * MonitorFromRectFn)(LPCRECT, DWORD);
            MonitorFromRectFn pfn = reinterpret_cast<MonitorFromRectFn>(::GetProcAddress(hUser, "MonitorFromRect"));
            HMONITOR hMonitor = pfn ? pfn(&rcNormal, 2 /* MONITOR_DEFAULTTONEAREST */) : nullptr;
            ::FreeLibrary(hUser);
            if (pfn)
                return hMonitor != nullptr;
        }
    }
    RECT rcScreen = {0, 0, ::GetSystemMetrics(SM_CXSCREEN), ::GetSystemMetrics(SM_CYSCREEN)};
    RECT rcCommon;
    return ::IntersectRect(&rcCommon, &rcNormal, &rcScreen) != FALSE;
}

bool KxUiWindowPlacementBinary::setFromStream(CWnd* pWnd, CMemFile& stream)
{
    HWND hWnd = pWnd ? pWnd->GetSafeHwnd() : nullptr;
    if (!::IsWindow(hWnd) || stream.GetLength() != sizeof(WINDOWPLACEMENT))
        return false;

    DWORD dwStyle = pWnd->GetStyle();
    if (pWnd->IsKindOf(RUNTIME_CLASS(CFileDialog))) {
        if (HWND hParent = ::GetParent(hWnd))
            dwStyle = (DWORD)::GetWindowLongW(hParent, GWL_STYLE);
    }
    bool bResizable = (dwStyle & WS_THICKFRAME) != 0;

    WINDOWPLACEMENT wp;
    if (stream.Read(&wp, sizeof(wp)) != sizeof(wp))
        return false;
    UINT nPosFlags = 0;
    if (m_bNoMove) {
        wp.flags |= kNoMovePlacementFlag;
        nPosFlags |= kNoMovePositionFlag;
    }
    // A show command the platform does not know comes from damaged data: the window is left alone.
    if (wp.showCmd > SW_MAX)
        return true;
    if (!isOnScreen(wp.rcNormalPosition))
        return true;
    if (bResizable)
        ::SetWindowPlacement(hWnd, &wp);
    else
        ::SetWindowPos(hWnd, nullptr, wp.rcNormalPosition.left, wp.rcNormalPosition.top, 0, 0, nPosFlags | SWP_NOSIZE);
    return true;
}

// --- child state -----------------------------------------------------------------------------------

CString KxUiWindowStateBinary::getEntryName()
{
    return L"WNDSTATE";
}

bool KxUiWindowStateBinary::initializeWhenNoStream(CWnd*)
{
    return true;
}

KxUiWindowStateBinary::Kind KxUiWindowStateBinary::getKind(const CWnd* pWnd) const
{
    CWnd* pChild = getCWnd(pWnd);
    if (!pChild)
        return kindNone;
    const CString strClass = getWndName(pChild);
    if (strClass.CompareNoCase(L"button") == 0)
        return kindButton;
    if (strClass.CompareNoCase(L"combobox") == 0)
        return (pChild->GetStyle() & kComboTypeBits) == CBS_DROPDOWNLIST ? kindDropDownList : kindComboText;
    if (strClass.CompareNoCase(L"edit") == 0)
        return kindEdit;
    if (strClass.CompareNoCase(WC_TABCONTROLW) == 0)
        return kindTab;
    return kindNone;
}

bool KxUiWindowStateBinary::isButton(const CWnd* pWnd) const { return getKind(pWnd) == kindButton; }
bool KxUiWindowStateBinary::isEdit(const CWnd* pWnd) const { return getKind(pWnd) == kindEdit; }
bool KxUiWindowStateBinary::isTabCtrl(const CWnd* pWnd) const { return getKind(pWnd) == kindTab; }
bool KxUiWindowStateBinary::isCombo(const CWnd* pWnd) const
{
    const Kind kind = getKind(pWnd);
    return kind == kindDropDownList || kind == kindComboText;
}

namespace {

// Reads a stored selection for a control with nCount entries. A stored -1 (no selection) selects
// the first entry; an index the control does not have comes from damaged data and is refused.
bool readIndex(CMemFile& stream, int nCount, int& nIndex)
{
    if (!readInt(stream, nIndex))
        return false;
    if (nIndex == -1)
        nIndex = 0;
    return nIndex >= 0 && nIndex < nCount;
}

// How many characters the text control takes from a stored text.
UINT textCapacity(HWND hText)
{
    const bool bMultiLine = (::GetWindowLongW(hText, GWL_STYLE) & ES_MULTILINE) != 0;
    const UINT nBound = bMultiLine ? kMaxMultiLineText : kMaxSingleLineText;
    const UINT nLimit = (UINT)::SendMessageW(hText, EM_GETLIMITTEXT, 0, 0);
    return nLimit != 0 && nLimit < nBound ? nLimit : nBound;
}

void writeText(CMemFile& stream, HWND hWnd)
{
    int nLength = ::GetWindowTextLengthW(hWnd);
    std::vector<WCHAR> text(nLength + 1);
    nLength = ::GetWindowTextW(hWnd, text.data(), nLength + 1);
    writeInt(stream, nLength);
    stream.Write(text.data(), (UINT)(nLength * sizeof(WCHAR)));
}

// Reads a length and that many UTF-16 code units and sets them as the window's text, cut to what
// the control takes (a surrogate pair is not split). A length that is negative or runs past the
// stored bytes leaves the window unchanged.
void readText(CMemFile& stream, HWND hWnd)
{
    try {
        int nLength;
        if (!readInt(stream, nLength) || nLength < 0)
            return;
        ULONGLONG nLeft = stream.GetLength() - stream.GetPosition();
        if ((ULONGLONG)nLength * sizeof(WCHAR) > nLeft || !hWnd)
            return;
        UINT nApplied = std::min((UINT)nLength, textCapacity(hWnd));
        std::vector<WCHAR> text(nApplied + 1, L'\0');
        UINT nBytes = (UINT)(nApplied * sizeof(WCHAR));
        if (stream.Read(text.data(), nBytes) != nBytes)
            return;
        if (nApplied < (UINT)nLength && nApplied > 0 && IS_HIGH_SURROGATE(text[nApplied - 1]))
            text[nApplied - 1] = L'\0';
        ::SetWindowTextW(hWnd, text.data());
    } catch (CException* e) {
        e->Delete();
    } catch (const std::exception&) {
    }
}

}  // namespace

void KxUiWindowStateBinary::getStream(const CWnd* pWnd, CMemFile& stream)
{
    const Kind kind = getKind(pWnd);
    if (kind == kindNone)
        return;
    HWND hChild = getCWnd(pWnd)->GetSafeHwnd();
    switch (kind) {
    case kindButton:
        writeInt(stream, (int)::SendMessageW(hChild, BM_GETCHECK, 0, 0));
        break;
    case kindDropDownList:
        writeInt(stream, (int)::SendMessageW(hChild, CB_GETCURSEL, 0, 0));
        break;
    case kindComboText:
    case kindEdit:
        writeText(stream, hChild);
        break;
    case kindTab:
        writeInt(stream, (int)::SendMessageW(hChild, TCM_GETCURSEL, 0, 0));
        break;
    case kindNone:
        break;
    }
}

bool KxUiWindowStateBinary::setFromStream(CWnd* pWnd, CMemFile& stream)
{
    const Kind kind = getKind(pWnd);
    if (kind == kindNone)
        return false;
    HWND hChild = getCWnd(pWnd)->GetSafeHwnd();
    // Values no control of the kind can have come from damaged data and are not applied: a control
    // would clear its selection for an index it does not have.
    int nValue;
    switch (kind) {
    case kindButton:
        if (readInt(stream, nValue) && nValue >= BST_UNCHECKED && nValue <= BST_INDETERMINATE)
            ::SendMessageW(hChild, BM_SETCHECK, (WPARAM)nValue, 0);
        break;
    case kindDropDownList:
        if (readIndex(stream, (int)::SendMessageW(hChild, CB_GETCOUNT, 0, 0), nValue))
            ::SendMessageW(hChild, CB_SETCURSEL, (WPARAM)nValue, 0);
        break;
    case kindComboText:
        readText(stream, ::GetWindow(hChild, GW_CHILD));
        break;
    case kindEdit:
        readText(stream, hChild);
        break;
    case kindTab:
        if (readIndex(stream, (int)::SendMessageW(hChild, TCM_GETITEMCOUNT, 0, 0), nValue))
            ::SendMessageW(hChild, TCM_SETCURSEL, (WPARAM)nValue, 0);
        break;
    case kindNone:
        break;
    }
    return true;
}

// --- splitter position -----------------------------------------------------------------------------

CString KxUiSplitterPositionArchive::getEntryName()
{
    return L"SPLITTERPERCENT";
}

CString KxUiSplitterPositionArchive::getWndName(const CWnd* pWnd) const
{
    // Read into 10 characters: longer class names keep their first 9, which is part of the key.
    WCHAR szName[10] = L"";
    if (pWnd && pWnd->GetSafeHwnd())
        ::GetClassNameW(pWnd->GetSafeHwnd(), szName, 10);
    return CString(szName);
}

CString KxUiSplitterPositionArchive::getSectionName(const CWnd* pWnd)
{
    CString strContainer = runtimeClassName(pWnd);
    if (!m_pSplitter || !::IsWindow(m_pSplitter->GetSafeHwnd()) || strContainer.IsEmpty())
        return CString();
    CString strSection;
    strSection.Format(L"Window\\%s\\%s_%d", (LPCTSTR)strContainer, (LPCTSTR)getWndName(m_pSplitter),
                      m_pSplitter->GetDlgCtrlID());
    return strSection;
}

void KxUiSplitterPositionArchive::getStream(const CWnd*, CMemFile& stream)
{
    if (m_pSplitter)
        writeInt(stream, m_pSplitter->getCurrentPercent());
}

bool KxUiSplitterPositionArchive::setFromStream(CWnd*, CMemFile& stream)
{
    int nPercent;
    // A share outside 0..100 cannot come from a splitter between two panes: damaged data is ignored.
    if (m_pSplitter && readInt(stream, nPercent) && nPercent >= 0 && nPercent <= 100)
        m_pSplitter->setCurrentPercent(nPercent);
    return true;
}

bool KxUiSplitterPositionArchive::initializeWhenNoStream(CWnd*)
{
    return true;
}
