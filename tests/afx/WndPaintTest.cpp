// Window members and message-map entries that deal with device contexts: control colours
// reflected to the child, background erasing, painting a view, fonts.
#include <afxwin.h>

namespace {

// A static control that colours itself.
class CColorLabel : public CWnd {
public:
    CBrush brush;
    bool decline = false;
    CColorLabel() { brush.CreateSolidBrush(RGB(10, 20, 30)); }
    afx_msg HBRUSH CtlColor(CDC* pDC, UINT nCtlColor)
    {
        if (decline || nCtlColor != CTLCOLOR_STATIC)
            return nullptr;
        pDC->SetTextColor(RGB(200, 0, 0));
        return static_cast<HBRUSH>(brush.GetSafeHandle());
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(CColorLabel, CWnd)
    ON_WM_CTLCOLOR_REFLECT()
END_MESSAGE_MAP()

class CColorParent : public CWnd {
public:
    HBRUSH parentBrush = static_cast<HBRUSH>(::GetStockObject(GRAY_BRUSH));
    int asked = 0;
    afx_msg HBRUSH OnCtlColor(CDC* pDC, CWnd* pWnd, UINT nCtlColor)
    {
        HBRUSH hbr = CWnd::OnCtlColor(pDC, pWnd, nCtlColor);  // the child's, else the default
        ++asked;
        return pWnd->GetDlgCtrlID() == 2 ? parentBrush : hbr;
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(CColorParent, CWnd)
    ON_WM_CTLCOLOR()
END_MESSAGE_MAP()

}  // namespace

TEST(WndPaint, ControlColourIsReflectedToTheChildAndFallsBackToTheParent)
{
    CColorParent parent;
    ASSERT_TRUE(parent.CreateEx(0, nullptr, L"parent", WS_POPUP, 0, 0, 200, 100, nullptr, nullptr));
    CColorLabel label;
    ASSERT_TRUE(label.Create(L"STATIC", L"text", WS_VISIBLE, CRect(0, 0, 80, 20), &parent, 1));

    HDC dc = ::GetDC(label.m_hWnd);
    const LRESULT brush =
        parent.SendMessage(WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(dc), reinterpret_cast<LPARAM>(label.m_hWnd));
    EXPECT_EQ(reinterpret_cast<LRESULT>(label.brush.GetSafeHandle()), brush);
    EXPECT_EQ(RGB(200, 0, 0), ::GetTextColor(dc));
    EXPECT_EQ(1, parent.asked);

    // A child that declines leaves the default; a control without an object gets the parent's.
    label.decline = true;
    const LRESULT fallback =
        parent.SendMessage(WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(dc), reinterpret_cast<LPARAM>(label.m_hWnd));
    EXPECT_NE(0, fallback);
    EXPECT_NE(reinterpret_cast<LRESULT>(label.brush.GetSafeHandle()), fallback);
    HWND plain = ::CreateWindowExW(0, L"STATIC", L"", WS_CHILD, 0, 30, 80, 20, parent.m_hWnd,
                                   reinterpret_cast<HMENU>(2), nullptr, nullptr);
    EXPECT_EQ(reinterpret_cast<LRESULT>(parent.parentBrush),
              parent.SendMessage(WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(dc), reinterpret_cast<LPARAM>(plain)));
    EXPECT_EQ(3, parent.asked);
    ::ReleaseDC(label.m_hWnd, dc);
}

namespace {

class CErasingWnd : public CWnd {
public:
    HDC erasedWith = nullptr;
    afx_msg BOOL OnEraseBkgnd(CDC* pDC)
    {
        erasedWith = pDC->GetSafeHdc();
        return TRUE;
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(CErasingWnd, CWnd)
    ON_WM_ERASEBKGND()
END_MESSAGE_MAP()

class CCountingView : public CView {
public:
    int draws = 0;
    HDC lastDC = nullptr;
    void OnDraw(CDC* pDC) override
    {
        ++draws;
        lastDC = pDC->GetSafeHdc();
    }
};

}  // namespace

TEST(WndPaint, EraseBackgroundGetsTheMessagesDeviceContext)
{
    CErasingWnd wnd;
    ASSERT_TRUE(wnd.CreateEx(0, nullptr, L"erase", WS_POPUP, 0, 0, 50, 50, nullptr, nullptr));
    CDC* dc = wnd.GetDC();
    ASSERT_NE(nullptr, dc);
    EXPECT_EQ(TRUE, wnd.SendMessage(WM_ERASEBKGND, reinterpret_cast<WPARAM>(dc->GetSafeHdc())));
    EXPECT_EQ(dc->GetSafeHdc(), wnd.erasedWith);
    EXPECT_EQ(1, wnd.ReleaseDC(dc));
}

TEST(WndPaint, ViewDrawsWhenPainted)
{
    CWnd frame;
    ASSERT_TRUE(frame.CreateEx(0, nullptr, L"frame", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 200, 150, nullptr,
                               nullptr));
    auto* view = new CCountingView;  // views delete themselves
    ASSERT_TRUE(view->Create(nullptr, nullptr, WS_VISIBLE, CRect(0, 0, 100, 100), &frame, AFX_IDW_PANE_FIRST));
    view->UpdateWindow();
    const int before = view->draws;
    view->Invalidate();
    view->UpdateWindow();
    EXPECT_EQ(before + 1, view->draws);
    EXPECT_NE(nullptr, view->lastDC);
    // Nothing invalid, nothing drawn.
    view->UpdateWindow();
    EXPECT_EQ(before + 1, view->draws);
}

TEST(WndPaint, FontsRoundTripThroughTheWindow)
{
    CWnd parent;
    ASSERT_TRUE(parent.CreateEx(0, nullptr, L"p", WS_POPUP, 0, 0, 200, 100, nullptr, nullptr));
    CWnd edit;
    ASSERT_TRUE(edit.Create(L"EDIT", L"", WS_VISIBLE, CRect(0, 0, 100, 20), &parent, 1));
    CFont font;
    ASSERT_TRUE(font.CreatePointFont(120, L"Tahoma"));
    edit.SetFont(&font);
    CFont* got = edit.GetFont();
    ASSERT_NE(nullptr, got);
    EXPECT_EQ(font.GetSafeHandle(), got->GetSafeHandle());
    edit.DestroyWindow();
}

namespace {

// An owner-drawn menu: the window's default handlers hand the items to it.
class COwnerMenu : public CMenu {
public:
    int measured = 0;
    int drawn = 0;
    void MeasureItem(LPMEASUREITEMSTRUCT mis) override
    {
        ++measured;
        mis->itemWidth = 77;
        mis->itemHeight = 19;
    }
    void DrawItem(LPDRAWITEMSTRUCT) override { ++drawn; }
};

}  // namespace

TEST(WndPaint, OwnerDrawnMenuItemsReachTheirMenuObject)
{
    CWnd wnd;
    ASSERT_TRUE(wnd.CreateEx(0, nullptr, L"menu owner", WS_OVERLAPPEDWINDOW, 0, 0, 200, 150, nullptr, nullptr));
    CMenu bar;
    ASSERT_TRUE(bar.CreateMenu());
    COwnerMenu popup;
    ASSERT_TRUE(popup.CreatePopupMenu());
    popup.AppendMenu(MF_OWNERDRAW, 500, reinterpret_cast<LPCTSTR>(static_cast<UINT_PTR>(1)));
    bar.AppendMenu(MF_POPUP, reinterpret_cast<UINT_PTR>(popup.m_hMenu), L"&Items");
    ASSERT_TRUE(wnd.SetMenu(&bar));
    EXPECT_EQ(&bar, wnd.GetMenu());

    MEASUREITEMSTRUCT mis = {ODT_MENU, 0, 500, 0, 0, 1};
    wnd.SendMessage(WM_MEASUREITEM, 0, reinterpret_cast<LPARAM>(&mis));
    EXPECT_EQ(1, popup.measured);
    EXPECT_EQ(77u, mis.itemWidth);
    DRAWITEMSTRUCT dis = {};
    dis.CtlType = ODT_MENU;
    dis.itemID = 500;
    dis.hwndItem = reinterpret_cast<HWND>(popup.m_hMenu);
    wnd.SendMessage(WM_DRAWITEM, 0, reinterpret_cast<LPARAM>(&dis));
    EXPECT_EQ(1, popup.drawn);

    wnd.SetMenu(nullptr);
    popup.Detach();  // destroyed with the bar
}
