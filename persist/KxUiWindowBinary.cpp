// KxUiWindowBinary and its records: window placement, child control state and splitter position.
#include "KxUiPch.h"
#include "KxUiWindowBinary.h"
#include "KxUiLayoutManager.h"
#include "KxUiSplitter.h"
#include <afxwin.h>
#include <afxdlgs.h>
#include <vector>

static_assert(sizeof(WINDOWPLACEMENT) == 44, "the stored placement is the platform's 44-byte structure");

namespace {

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
        // 2 in the placement's flags as well: kept as the stored format has always had it.
        wp.flags |= 2;
        nPosFlags |= 2;
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

bool KxUiWindowStateBinary::isClass(const CWnd* pWnd, const wchar_t* pszClass) const
{
    CWnd* pChild = getCWnd(pWnd);
    return pChild && getWndName(pChild).CompareNoCase(pszClass) == 0;
}

bool KxUiWindowStateBinary::isButton(const CWnd* pWnd) const { return isClass(pWnd, L"button"); }
bool KxUiWindowStateBinary::isCombo(const CWnd* pWnd) const { return isClass(pWnd, L"combobox"); }
bool KxUiWindowStateBinary::isEdit(const CWnd* pWnd) const { return isClass(pWnd, L"edit"); }
bool KxUiWindowStateBinary::isTabCtrl(const CWnd* pWnd) const { return isClass(pWnd, WC_TABCONTROLW); }

namespace {

bool isDropDownList(HWND hCombo)
{
    return (::GetWindowLongW(hCombo, GWL_STYLE) & 3) == CBS_DROPDOWNLIST;
}

void writeText(CMemFile& stream, HWND hWnd)
{
    int nLength = ::GetWindowTextLengthW(hWnd);
    std::vector<WCHAR> text(nLength + 1);
    nLength = ::GetWindowTextW(hWnd, text.data(), nLength + 1);
    writeInt(stream, nLength);
    stream.Write(text.data(), (UINT)(nLength * sizeof(WCHAR)));
}

// Reads a length and that many UTF-16 code units and sets them as the window's text. A length that
// is negative or runs past the stored bytes leaves the window unchanged.
void readText(CMemFile& stream, HWND hWnd)
{
    try {
        int nLength;
        if (!readInt(stream, nLength) || nLength < 0)
            return;
        ULONGLONG nLeft = stream.GetLength() - stream.GetPosition();
        if ((ULONGLONG)nLength * sizeof(WCHAR) > nLeft)
            return;
        std::vector<WCHAR> text(nLength + 1, L'\0');
        UINT nBytes = (UINT)(nLength * sizeof(WCHAR));
        if (stream.Read(text.data(), nBytes) != nBytes || !hWnd)
            return;
        ::SetWindowTextW(hWnd, text.data());
    } catch (CException* e) {
        e->Delete();
    } catch (const std::exception&) {
    }
}

}  // namespace

void KxUiWindowStateBinary::getStream(const CWnd* pWnd, CMemFile& stream)
{
    CWnd* pChild = getCWnd(pWnd);
    if (!pChild)
        return;
    HWND hChild = pChild->GetSafeHwnd();
    if (isButton(pWnd))
        writeInt(stream, (int)::SendMessageW(hChild, BM_GETCHECK, 0, 0));
    else if (isCombo(pWnd) && isDropDownList(hChild))
        writeInt(stream, (int)::SendMessageW(hChild, CB_GETCURSEL, 0, 0));
    else if (isCombo(pWnd) || isEdit(pWnd))
        writeText(stream, hChild);
    else if (isTabCtrl(pWnd))
        writeInt(stream, (int)::SendMessageW(hChild, TCM_GETCURSEL, 0, 0));
}

bool KxUiWindowStateBinary::setFromStream(CWnd* pWnd, CMemFile& stream)
{
    CWnd* pChild = getCWnd(pWnd);
    if (!pChild)
        return false;
    HWND hChild = pChild->GetSafeHwnd();
    // Values no control of the kind can have come from damaged data and are not applied: a control
    // would clear its selection for an index it does not have.
    int nValue;
    if (isButton(pWnd)) {
        if (readInt(stream, nValue) && nValue >= BST_UNCHECKED && nValue <= BST_INDETERMINATE)
            ::SendMessageW(hChild, BM_SETCHECK, (WPARAM)nValue, 0);
    } else if (isCombo(pWnd) && isDropDownList(hChild)) {
        // No selection stored: the first entry is chosen.
        if (readInt(stream, nValue) && (nValue == -1 ? (nValue = 0, true) : nValue >= 0) &&
            nValue < (int)::SendMessageW(hChild, CB_GETCOUNT, 0, 0))
            ::SendMessageW(hChild, CB_SETCURSEL, (WPARAM)nValue, 0);
    } else if (isCombo(pWnd)) {
        readText(stream, ::GetWindow(hChild, GW_CHILD));
    } else if (isEdit(pWnd)) {
        readText(stream, hChild);
    } else if (isTabCtrl(pWnd)) {
        if (readInt(stream, nValue) && (nValue == -1 ? (nValue = 0, true) : nValue >= 0) &&
            nValue < (int)::SendMessageW(hChild, TCM_GETITEMCOUNT, 0, 0))
            ::SendMessageW(hChild, TCM_SETCURSEL, (WPARAM)nValue, 0);
    } else {
        return false;
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
