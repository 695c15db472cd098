// Column widths of a list kept in the host's profile.
#include "KxUiCtrlColumnProfileBinary.h"
#include "KxUiListCtrlBase.h"
#include <afxcmn.h>
#include <afxfile_.h>

KxUiCtrlColumnProfileBinary::Kind KxUiCtrlColumnProfileBinary::getKind(CWnd* pChild) const
{
    if (pChild == nullptr)
        return kindNone;
    if (pChild->IsKindOf(RUNTIME_CLASS(KxUiListCtrlBase)))
        return static_cast<KxUiListCtrlBase*>(pChild)->getShowHideColumnMenu() ? kindListState : kindList;
    if (pChild->IsKindOf(RUNTIME_CLASS(CListCtrl)))
        return kindList;
    return kindNone;
}

CString KxUiCtrlColumnProfileBinary::getEntryName()
{
    return _T("SIZECOLUMN");
}

void KxUiCtrlColumnProfileBinary::getStream(const CWnd* pWnd, CMemFile& stream)
{
    CWnd* pChild = getCWnd(pWnd);
    Kind kind = getKind(pChild);
    if (kind == kindListState) {
        static_cast<KxUiListCtrlBase*>(pChild)->SaveState(stream);
        return;
    }
    if (kind != kindList)
        return;
    HWND hList = pChild->GetSafeHwnd();
    HWND hHeader = (HWND)::SendMessageW(hList, LVM_GETHEADER, 0, 0);
    if (hHeader == nullptr)
        return;
    int n = (int)::SendMessageW(hHeader, HDM_GETITEMCOUNT, 0, 0);
    stream.Write(&n, 4);
    for (int i = 0; i < n; ++i) {
        LVCOLUMNW col = {};
        col.mask = LVCF_WIDTH;
        ::SendMessageW(hList, LVM_GETCOLUMNW, i, (LPARAM)&col);
        int cx = col.cx;
        stream.Write(&cx, 4);
    }
}

bool KxUiCtrlColumnProfileBinary::setFromStream(CWnd* pWnd, CMemFile& stream)
{
    CWnd* pChild = getCWnd(pWnd);
    Kind kind = getKind(pChild);
    if (kind == kindListState)
        return static_cast<KxUiListCtrlBase*>(pChild)->RestoreState(stream);
    if (kind != kindList)
        return false;
    HWND hList = pChild->GetSafeHwnd();
    HWND hHeader = (HWND)::SendMessageW(hList, LVM_GETHEADER, 0, 0);
    if (hHeader == nullptr)
        return false;
    int n = 0;
    if (stream.Read(&n, 4) != 4)
        n = 0;
    int nCount = (int)::SendMessageW(hHeader, HDM_GETITEMCOUNT, 0, 0);
    // Applied as far as both sides have columns (and the value has bytes); another layout is
    // a failure all the same.
    for (int i = 0; i < n && i < nCount; ++i) {
        int cx = 0;
        if (stream.Read(&cx, 4) != 4)
            return false;
        LVCOLUMNW col = {};
        col.mask = LVCF_WIDTH;
        col.cx = cx;
        ::SendMessageW(hList, LVM_SETCOLUMNW, i, (LPARAM)&col);
    }
    return n == nCount;
}

bool KxUiCtrlColumnProfileBinary::initializeWhenNoStream(CWnd* pWnd)
{
    CWnd* pChild = getCWnd(pWnd);
    if (getKind(pChild) == kindNone)
        return false;
    HWND hList = pChild->GetSafeHwnd();
    HWND hHeader = (HWND)::SendMessageW(hList, LVM_GETHEADER, 0, 0);
    if (hHeader == nullptr || m_nFlags < 2)
        return false;
    ::SendMessageW(hList, WM_SETREDRAW, FALSE, 0);
    int n = (int)::SendMessageW(hHeader, HDM_GETITEMCOUNT, 0, 0);
    for (int i = 0; i < n; ++i) {
        if (m_nFlags & sizeToHeader)
            ::SendMessageW(hList, LVM_SETCOLUMNWIDTH, i, MAKELPARAM(LVSCW_AUTOSIZE_USEHEADER, 0));
        int cx = (int)::SendMessageW(hList, LVM_GETCOLUMNWIDTH, i, 0);
        if (m_nFlags & sizeToContents)
            ::SendMessageW(hList, LVM_SETCOLUMNWIDTH, i, MAKELPARAM(LVSCW_AUTOSIZE, 0));
        // The wider header fit wins, with one pixel more.
        if (cx > (int)::SendMessageW(hList, LVM_GETCOLUMNWIDTH, i, 0))
            ::SendMessageW(hList, LVM_SETCOLUMNWIDTH, i, MAKELPARAM(cx + 1, 0));
    }
    ::SendMessageW(hList, WM_SETREDRAW, TRUE, 0);
    return true;
}
