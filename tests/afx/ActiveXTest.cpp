// ActiveX controls hosted in a CWnd: the web browser control answers through its interface.
#include <afxdisp.h>
#include <exdisp.h>
#include "KxControlHost.h"

namespace {

class ActiveX : public testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(AfxOleInit());
        ASSERT_TRUE(AfxEnableControlContainer());
        ASSERT_TRUE(m_host.Open());
    }
    ControlHost m_host;
};

}  // namespace

TEST_F(ActiveX, WebBrowserIsHostedAndNavigates)
{
    CWnd browser;
    ASSERT_TRUE(browser.CreateControl(CLSID_WebBrowser, L"browser", WS_CHILD | WS_VISIBLE | WS_VSCROLL | WS_TABSTOP,
                                      CRect(0, 0, 300, 200), &m_host, 50));
    EXPECT_EQ(50, browser.GetDlgCtrlID());
    EXPECT_EQ(m_host.GetSafeHwnd(), ::GetParent(browser));
    IUnknown* unk = browser.GetControlUnknown();
    ASSERT_NE(nullptr, unk);
    IWebBrowser2* web = nullptr;
    ASSERT_EQ(S_OK, unk->QueryInterface(IID_IWebBrowser2, reinterpret_cast<void**>(&web)));
    VARIANT url, none;
    VariantInit(&url);
    VariantInit(&none);
    url.vt = VT_BSTR;
    url.bstrVal = SysAllocString(L"about:blank");
    EXPECT_EQ(S_OK, web->Navigate2(&url, &none, &none, &none, &none));
    VariantClear(&url);
    READYSTATE state = READYSTATE_UNINITIALIZED;
    EXPECT_EQ(S_OK, web->get_ReadyState(&state));
    EXPECT_NE(READYSTATE_UNINITIALIZED, state);
    web->Release();

    ASSERT_TRUE(browser.DestroyWindow());
    EXPECT_EQ(nullptr, browser.GetControlUnknown());
}

TEST_F(ActiveX, AnUnknownControlLeavesNoWindowBehind)
{
    const CLSID bogus = {0x0badc0de, 0x1234, 0x5678, {1, 2, 3, 4, 5, 6, 7, 8}};
    CWnd wnd;
    EXPECT_FALSE(wnd.CreateControl(bogus, nullptr, WS_CHILD | WS_VISIBLE, CRect(0, 0, 50, 50), &m_host, 51));
    EXPECT_EQ(nullptr, wnd.GetSafeHwnd());
    EXPECT_FALSE(wnd.CreateControl(L"KxUi.NoSuchControl", nullptr, WS_CHILD, CRect(0, 0, 50, 50), &m_host, 52));
    EXPECT_EQ(nullptr, ::GetWindow(m_host, GW_CHILD));
    EXPECT_EQ(nullptr, wnd.GetControlUnknown());
}
