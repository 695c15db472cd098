// Window objects: handle map, subclassing, temporary objects, self-deleting objects and
// the pre-translation of messages.
#include <afxwin.h>
#include "KxMsgRecorder.h"

namespace {

HWND MakeTopLevel(const wchar_t* text = L"top")
{
    return ::CreateWindowExW(0, L"STATIC", text, WS_OVERLAPPEDWINDOW, 0, 0, 300, 200, nullptr, nullptr, nullptr,
                             nullptr);
}

class CCharRecorder : public CWnd {
public:
    std::wstring seen;
    afx_msg void OnChar(UINT nChar, UINT, UINT)
    {
        seen += static_cast<wchar_t>(nChar);
        Default();  // the edit control's own procedure inserts the character
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(CCharRecorder, CWnd)
    ON_WM_CHAR()
END_MESSAGE_MAP()

}  // namespace

TEST(Wnd, SubclassDlgItemChainsToThePreviousProcedureAndUnsubclassRestoresIt)
{
    HWND top = MakeTopLevel();
    HWND edit = ::CreateWindowExW(0, L"EDIT", L"", WS_CHILD | WS_VISIBLE, 0, 0, 100, 20, top,
                                  reinterpret_cast<HMENU>(10), nullptr, nullptr);
    ASSERT_NE(nullptr, edit);
    const LONG_PTR editProc = ::GetWindowLongPtrW(edit, GWLP_WNDPROC);

    CCharRecorder wnd;
    ASSERT_TRUE(wnd.SubclassDlgItem(10, CWnd::FromHandle(top)));
    EXPECT_EQ(edit, wnd.m_hWnd);
    EXPECT_EQ(&wnd, CWnd::FromHandlePermanent(edit));
    EXPECT_EQ(reinterpret_cast<LONG_PTR>(AfxWndProc), ::GetWindowLongPtrW(edit, GWLP_WNDPROC));
    // An item that is not there, or a window that has an object already, is refused.
    CWnd other;
    EXPECT_FALSE(other.SubclassDlgItem(11, CWnd::FromHandle(top)));
    EXPECT_FALSE(other.SubclassWindow(edit));

    wnd.SendMessage(WM_CHAR, L'a', 1);
    wnd.SendMessage(WM_CHAR, L'b', 1);
    EXPECT_EQ(L"ab", wnd.seen);
    wchar_t text[16] = {};
    ::GetWindowTextW(edit, text, 16);
    EXPECT_STREQ(L"ab", text);

    EXPECT_EQ(edit, wnd.UnsubclassWindow());
    EXPECT_EQ(nullptr, wnd.m_hWnd);
    EXPECT_EQ(nullptr, CWnd::FromHandlePermanent(edit));
    EXPECT_EQ(editProc, ::GetWindowLongPtrW(edit, GWLP_WNDPROC));
    ::SendMessageW(edit, WM_CHAR, L'c', 1);
    EXPECT_EQ(L"ab", wnd.seen);
    ::GetWindowTextW(edit, text, 16);
    EXPECT_STREQ(L"abc", text);
    ::DestroyWindow(top);
}

TEST(Wnd, TemporaryObjectsLiveUntilIdleTimeAndLeaveTheirWindowAlone)
{
    HWND h = MakeTopLevel();
    CWnd* temp = CWnd::FromHandle(h);
    ASSERT_NE(nullptr, temp);
    EXPECT_EQ(h, temp->m_hWnd);
    EXPECT_EQ(temp, CWnd::FromHandle(h));  // the same object until idle time
    EXPECT_EQ(nullptr, CWnd::FromHandlePermanent(h));
    EXPECT_EQ(temp, afxMapHWND()->LookupTemporary(h));

    // Locked maps keep their temporaries through idle time.
    AfxLockTempMaps();
    AfxGetThread()->OnIdle(1);
    EXPECT_EQ(temp, afxMapHWND()->LookupTemporary(h));
    AfxUnlockTempMaps(FALSE);

    EXPECT_FALSE(AfxGetThread()->OnIdle(1));
    EXPECT_EQ(nullptr, afxMapHWND()->LookupTemporary(h));
    EXPECT_TRUE(::IsWindow(h));

    // Attaching makes the handle's object permanent.
    CWnd wnd;
    ASSERT_TRUE(wnd.Attach(h));
    EXPECT_EQ(&wnd, CWnd::FromHandle(h));
    EXPECT_EQ(h, wnd.Detach());
    EXPECT_EQ(nullptr, CWnd::FromHandlePermanent(h));
    EXPECT_TRUE(::IsWindow(h));
    EXPECT_FALSE(wnd.Attach(nullptr));
    EXPECT_EQ(nullptr, CWnd::FromHandle(nullptr));
    ::DestroyWindow(h);
}

namespace {

class CSelfDeleting : public CWnd {
public:
    static int alive;
    CSelfDeleting() { ++alive; }
    ~CSelfDeleting() override { --alive; }
    void PostNcDestroy() override { delete this; }
};
int CSelfDeleting::alive = 0;

}  // namespace

TEST(Wnd, PostNcDestroyLetsAnObjectDeleteItselfWithItsWindow)
{
    auto* a = new CSelfDeleting;
    ASSERT_TRUE(a->CreateEx(0, nullptr, L"a", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr));
    auto* b = new CSelfDeleting;
    ASSERT_TRUE(b->CreateEx(0, nullptr, L"b", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr));
    EXPECT_EQ(2, CSelfDeleting::alive);
    HWND hb = b->m_hWnd;
    a->DestroyWindow();
    EXPECT_EQ(1, CSelfDeleting::alive);
    ::DestroyWindow(hb);  // destroyed behind the object's back: it goes too
    EXPECT_EQ(0, CSelfDeleting::alive);
    EXPECT_EQ(nullptr, CWnd::FromHandlePermanent(hb));

    // An object whose window cannot be created goes too.
    auto* c = new CSelfDeleting;
    EXPECT_FALSE(c->CreateEx(0, L"NoSuchClass", L"c", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr));
    EXPECT_EQ(0, CSelfDeleting::alive);
}

TEST(Wnd, APermanentObjectDestroysItsWindowWhenItGoes)
{
    HWND h;
    {
        CWnd wnd;
        ASSERT_TRUE(wnd.CreateEx(0, nullptr, L"scoped", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr));
        h = wnd.m_hWnd;
        EXPECT_TRUE(::IsWindow(h));
    }
    EXPECT_FALSE(::IsWindow(h));
}

namespace {

class CAppMsgWnd : public CWnd {
public:
    KxMsgRecorder* rec = nullptr;
    afx_msg LRESULT OnApp(WPARAM w, LPARAM)
    {
        rec->Add("child map", WM_APP, w);
        return 0;
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(CAppMsgWnd, CWnd)
    ON_MESSAGE(WM_APP, &CAppMsgWnd::OnApp)
END_MESSAGE_MAP()

}  // namespace

TEST(Wnd, SendMessageToDescendantsReachesGrandchildrenAndOnlyPermanentOnesWhenAsked)
{
    KxMsgRecorder rec;
    HWND top = MakeTopLevel();
    CAppMsgWnd child;
    child.rec = &rec;
    ASSERT_TRUE(child.Create(nullptr, L"child", WS_VISIBLE, CRect(0, 0, 50, 50), CWnd::FromHandle(top), 1));
    HWND grandchild = ::CreateWindowExW(0, L"STATIC", L"", WS_CHILD, 0, 0, 10, 10, child.m_hWnd, nullptr, nullptr,
                                        nullptr);
    rec.Watch(grandchild, "grandchild", {WM_APP});

    CWnd::FromHandle(top)->SendMessageToDescendants(WM_APP, 1, 0, TRUE, FALSE);
    CWnd::FromHandle(top)->SendMessageToDescendants(WM_APP, 2, 0, FALSE, FALSE);
    // Only the window objects, called directly.
    CWnd::FromHandle(top)->SendMessageToDescendants(WM_APP, 3, 0, TRUE, TRUE);
    EXPECT_TRUE(rec.Matches({{"child map", WM_APP, 1}, {"grandchild", WM_APP, 1}, {"child map", WM_APP, 2},
                             {"child map", WM_APP, 3}}));
    child.DestroyWindow();
    ::DestroyWindow(top);
}

namespace {

// Keys for the child: the parent takes F5 in PreTranslateMessage, before the child sees it.
class CKeyParent : public CWnd {
public:
    KxMsgRecorder* rec = nullptr;
    BOOL PreTranslateMessage(MSG* pMsg) override
    {
        if (pMsg->message != WM_KEYDOWN)
            return FALSE;
        rec->Add("parent pretranslate", WM_KEYDOWN, pMsg->wParam);
        return pMsg->wParam == VK_F5;
    }
};

class CKeyChild : public CWnd {
public:
    KxMsgRecorder* rec = nullptr;
    BOOL PreTranslateMessage(MSG* pMsg) override
    {
        if (pMsg->message == WM_KEYDOWN)
            rec->Add("child pretranslate", WM_KEYDOWN, pMsg->wParam);
        return FALSE;
    }
};

}  // namespace

TEST(Wnd, PumpedMessagesArePreTranslatedFromTheTargetUpItsParents)
{
    KxMsgRecorder rec;
    CKeyParent parent;
    parent.rec = &rec;
    ASSERT_TRUE(parent.CreateEx(0, nullptr, L"parent", WS_POPUP, 0, 0, 100, 100, nullptr, nullptr));
    CKeyChild child;
    child.rec = &rec;
    ASSERT_TRUE(child.Create(nullptr, L"child", WS_VISIBLE, CRect(0, 0, 50, 50), &parent, 1));
    rec.Watch(child.m_hWnd, "child", {WM_KEYDOWN});

    child.PostMessage(WM_KEYDOWN, VK_F5, 1);
    child.PostMessage(WM_KEYDOWN, VK_F6, 1);
    EXPECT_TRUE(AfxPumpMessage());
    EXPECT_TRUE(AfxPumpMessage());
    EXPECT_TRUE(rec.Matches({{"child pretranslate", WM_KEYDOWN, VK_F5},
                             {"parent pretranslate", WM_KEYDOWN, VK_F5},
                             {"child pretranslate", WM_KEYDOWN, VK_F6},
                             {"parent pretranslate", WM_KEYDOWN, VK_F6},
                             {"child", WM_KEYDOWN, VK_F6}}));
}
