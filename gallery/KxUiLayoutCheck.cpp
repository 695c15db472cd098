#include "KxUiLayoutCheck.h"
#include <algorithm>

namespace {

CString ClassOf(HWND hWnd)
{
    wchar_t name[64] = {};
    ::GetClassNameW(hWnd, name, 64);
    return name;
}

CString TextOf(HWND hWnd)
{
    const int n = ::GetWindowTextLengthW(hWnd);
    CString text;
    if (n > 0) {
        ::GetWindowTextW(hWnd, text.GetBuffer(n + 1), n + 1);
        text.ReleaseBuffer();
    }
    return text;
}

CString Describe(HWND hWnd)
{
    CString text = TextOf(hWnd);
    if (text.GetLength() > 24)
        text = text.Left(24) + L"...";
    CString d;
    d.Format(L"%s %d '%s'", static_cast<LPCWSTR>(ClassOf(hWnd)), ::GetDlgCtrlID(hWnd), static_cast<LPCWSTR>(text));
    return d;
}

CRect RectIn(HWND hWnd, HWND hParent)
{
    CRect rc;
    ::GetWindowRect(hWnd, &rc);
    ::MapWindowPoints(nullptr, hParent, reinterpret_cast<POINT*>(&rc), 2);
    return rc;
}

// A window that holds other controls by design: a tab control's pages and a group box's
// members lie inside it.
bool IsFrameControl(HWND hWnd)
{
    const CString cls = ClassOf(hWnd);
    if (cls.CompareNoCase(WC_TABCONTROLW) == 0)
        return true;
    return cls.CompareNoCase(L"Button") == 0 && (::GetWindowLongW(hWnd, GWL_STYLE) & BS_TYPEMASK) == BS_GROUPBOX;
}

// The width a control's text needs on one line, in its own font.
CSize TextExtent(HWND hWnd, const CString& text, UINT format)
{
    HDC dc = ::GetDC(hWnd);
    HGDIOBJ old = ::SelectObject(dc, reinterpret_cast<HFONT>(::SendMessageW(hWnd, WM_GETFONT, 0, 0)));
    CRect rc(0, 0, 0, 0);
    if (format & DT_WORDBREAK) {
        ::GetClientRect(hWnd, &rc);
        rc.bottom = rc.top;
    }
    ::DrawTextW(dc, text, text.GetLength(), &rc, format | DT_CALCRECT);
    ::SelectObject(dc, old);
    ::ReleaseDC(hWnd, dc);
    return rc.Size();
}

void CheckText(HWND hWnd, std::vector<CString>& problems)
{
    const CString text = TextOf(hWnd);
    if (text.IsEmpty())
        return;
    const CString cls = ClassOf(hWnd);
    const DWORD style = static_cast<DWORD>(::GetWindowLongW(hWnd, GWL_STYLE));
    CRect client;
    ::GetClientRect(hWnd, &client);
    CString problem;
    if (cls.CompareNoCase(L"Static") == 0) {
        const DWORD type = style & SS_TYPEMASK;
        if (type != SS_LEFT && type != SS_RIGHT && type != SS_CENTER && type != SS_LEFTNOWORDWRAP)
            return;
        const UINT noPrefix = (style & SS_NOPREFIX) ? DT_NOPREFIX : 0;
        if (type == SS_LEFTNOWORDWRAP) {
            const CSize need = TextExtent(hWnd, text, DT_SINGLELINE | noPrefix);
            if (need.cx > client.Width())
                problem.Format(L"needs %d px wide, has %d", need.cx, client.Width());
        } else {
            // Statics wrap at word breaks: the wrapped text must fit the height, and no single
            // word may be wider than the control.
            const CSize need = TextExtent(hWnd, text, DT_WORDBREAK | noPrefix);
            if (need.cy > client.Height())
                problem.Format(L"wraps to %d px high, has %d", need.cy, client.Height());
            else if (need.cx > client.Width())
                problem.Format(L"needs %d px wide, has %d", need.cx, client.Width());
        }
    } else if (cls.CompareNoCase(L"Button") == 0) {
        const DWORD type = style & BS_TYPEMASK;
        int extra = 0;
        switch (type) {
        case BS_CHECKBOX: case BS_AUTOCHECKBOX: case BS_3STATE: case BS_AUTO3STATE:
        case BS_RADIOBUTTON: case BS_AUTORADIOBUTTON:
            extra = ::GetSystemMetrics(SM_CXMENUCHECK) + 4;  // the box and the gap after it
            break;
        case BS_PUSHBUTTON: case BS_DEFPUSHBUTTON:
            extra = 8;  // the button's edges
            break;
        default:
            return;
        }
        if (style & BS_MULTILINE)
            return;
        const CSize need = TextExtent(hWnd, text, DT_SINGLELINE);
        if (need.cx + extra > client.Width())
            problem.Format(L"needs %d px wide, has %d", need.cx + extra, client.Width());
    }
    if (!problem.IsEmpty())
        problems.push_back(Describe(hWnd) + L" is clipped: " + problem);
}

void CheckChildren(HWND hParent, std::vector<CString>& problems)
{
    CRect area;
    ::GetClientRect(hParent, &area);
    std::vector<HWND> children;
    for (HWND h = ::GetWindow(hParent, GW_CHILD); h; h = ::GetWindow(h, GW_HWNDNEXT))
        if (::IsWindowVisible(h))
            children.push_back(h);
    for (size_t i = 0; i < children.size(); ++i) {
        HWND h = children[i];
        const CRect rc = RectIn(h, hParent);
        CRect inside;
        if (rc.IsRectEmpty())
            problems.push_back(Describe(h) + L" has no size");
        else if (!inside.IntersectRect(rc, area) || inside != rc)
            problems.push_back(Describe(h) + L" lies outside its parent");
        for (size_t j = i + 1; j < children.size(); ++j) {
            const CRect other = RectIn(children[j], hParent);
            CRect common;
            if (!common.IntersectRect(rc, other))
                continue;
            const bool nested = (IsFrameControl(h) && common == other) || (IsFrameControl(children[j]) && common == rc);
            if (!nested)
                problems.push_back(Describe(h) + L" overlaps " + Describe(children[j]));
        }
        CheckText(h, problems);
        // Panels (child dialogs) hold controls of their own.
        if (ClassOf(h) == L"#32770")
            CheckChildren(h, problems);
    }
}

}  // namespace

std::vector<CString> KxCheckPageLayout(HWND hPage)
{
    std::vector<CString> problems;
    if (::IsWindow(hPage))
        CheckChildren(hPage, problems);
    return problems;
}
