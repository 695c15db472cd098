// Real dialogs for the layout and persistence suites: an in-memory template without items, children
// created at run time with the platform's window classes.
#pragma once
#include <afxwin.h>
#include <ostream>

inline void PrintTo(const CRect& rc, std::ostream* os)
{
    *os << "(" << rc.left << "," << rc.top << ")-(" << rc.right << "," << rc.bottom << ")";
}

class KxTestDlg : public CDialog {
public:
    // Creates the dialog, hidden, with the given style and a client area of cx x cy pixels.
    bool create(int cx, int cy, DWORD dwStyle = WS_POPUP | WS_CLIPCHILDREN)
    {
        static bool bInit = false;
        if (!bInit) {
            INITCOMMONCONTROLSEX icc = {sizeof(icc), ICC_TAB_CLASSES | ICC_STANDARD_CLASSES};
            ::InitCommonControlsEx(&icc);
            bInit = true;
        }
        // DLGTEMPLATE (18 bytes) followed by empty menu, class and title.
        alignas(4) WORD words[12] = {};
        DWORD* pStyle = reinterpret_cast<DWORD*>(words);
        pStyle[0] = dwStyle;
        words[7] = 100;   // cx, cy in dialog units; the real size is set below
        words[8] = 60;
        if (!CreateIndirect(reinterpret_cast<LPCDLGTEMPLATE>(words), nullptr))
            return false;
        setClientSize(cx, cy);
        return true;
    }

    // A child of a platform class at (x, y) with size cx x cy in client coordinates.
    HWND addChild(UINT nId, LPCWSTR pszClass, int x, int y, int cx, int cy, DWORD dwStyle = 0, LPCWSTR pszText = L"")
    {
        return ::CreateWindowExW(0, pszClass, pszText, WS_CHILD | WS_VISIBLE | dwStyle, x, y, cx, cy, m_hWnd,
                                 reinterpret_cast<HMENU>(static_cast<UINT_PTR>(nId)), ::GetModuleHandleW(nullptr),
                                 nullptr);
    }
    HWND addStatic(UINT nId, int x, int y, int cx, int cy) { return addChild(nId, L"STATIC", x, y, cx, cy); }

    // Sizes the window so that its client area is cx x cy; the container receives WM_SIZE.
    void setClientSize(int cx, int cy)
    {
        RECT rcWnd, rcClient;
        ::GetWindowRect(m_hWnd, &rcWnd);
        ::GetClientRect(m_hWnd, &rcClient);
        int dx = (rcWnd.right - rcWnd.left) - rcClient.right, dy = (rcWnd.bottom - rcWnd.top) - rcClient.bottom;
        ::SetWindowPos(m_hWnd, nullptr, 0, 0, cx + dx, cy + dy, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    }

    CSize clientSize() const
    {
        RECT rc;
        ::GetClientRect(m_hWnd, &rc);
        return CSize(rc.right, rc.bottom);
    }

    // A child's rectangle in client coordinates; empty when the child does not exist.
    CRect childRect(UINT nId) const
    {
        RECT rc = {0, 0, 0, 0};
        if (HWND h = ::GetDlgItem(m_hWnd, (int)nId)) {
            ::GetWindowRect(h, &rc);
            ::MapWindowPoints(nullptr, m_hWnd, reinterpret_cast<POINT*>(&rc), 2);
        }
        return CRect(rc);
    }

    HWND item(UINT nId) const { return ::GetDlgItem(m_hWnd, (int)nId); }
};
