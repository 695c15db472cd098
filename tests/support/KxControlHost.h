// A shown top-level window that hosts the controls of a test, destroyed with the object.
#pragma once
#include <afxcmn.h>

class ControlHost : public CWnd {
public:
    BOOL Open(int cx = 480, int cy = 320)
    {
        LPCTSTR cls = AfxRegisterWndClass(0, ::LoadCursorW(nullptr, IDC_ARROW),
                                          reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1));
        return CreateEx(0, cls, L"controls", WS_OVERLAPPEDWINDOW | WS_VISIBLE, CRect(0, 0, cx, cy), nullptr, 0);
    }
};
