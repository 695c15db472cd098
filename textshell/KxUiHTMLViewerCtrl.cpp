#include "KxUiHTMLViewerCtrl.h"
#include <afxdisp.h>
#include <exdisp.h>
#include <new>
#include <utility>

using Microsoft::WRL::ComPtr;

namespace {
// The web browser control, its automation interface and its event interface.
const CLSID clsidWebBrowser = {0x8856F961, 0x340A, 0x11D0,
                               {0xA9, 0x6B, 0x00, 0xC0, 0x4F, 0xD7, 0x05, 0xA2}};
const IID iidWebBrowser2 = {0xD30C1661, 0xCDAF, 0x11D0,
                            {0x8A, 0x3E, 0x00, 0xC0, 0x4F, 0xC9, 0xE2, 0x6E}};
const IID iidWebBrowserEvents2 = {0x34A715A0, 0x6587, 0x11D0,
                                  {0x92, 0x4A, 0x00, 0x20, 0xAF, 0xC7, 0xAC, 0x4D}};
const DISPID dispidNavigateError = 271;

// Listens to the browser's events during a synchronous load and notes a failed navigation.
class NavigationWatch : public IDispatch {
public:
    // Connects to the browser's events; null when the browser offers none.
    static ComPtr<NavigationWatch> connect(IWebBrowser2* browser)
    {
        ComPtr<IConnectionPointContainer> container;
        ComPtr<IConnectionPoint> point;
        if (FAILED(browser->QueryInterface(IID_IConnectionPointContainer,
                                           reinterpret_cast<void**>(container.GetAddressOf()))) ||
            FAILED(container->FindConnectionPoint(iidWebBrowserEvents2, point.GetAddressOf())))
            return nullptr;
        // A failed allocation raises the framework's memory exception.
        ComPtr<NavigationWatch> watch;
        watch.Attach(new (std::nothrow) NavigationWatch(point));
        if (!watch)
            AfxThrowMemoryException();
        if (FAILED(point->Advise(watch.Get(), &watch->m_cookie))) {
            watch->m_cookie = 0;
            return nullptr;
        }
        return watch;
    }

    // Stops listening; the browser lets go of this watch.
    void disconnect()
    {
        if (m_cookie)
            m_point->Unadvise(m_cookie);
        m_cookie = 0;
    }

    bool failed() const { return m_failed; }

    STDMETHODIMP QueryInterface(REFIID riid, void** object) override
    {
        if (!object)
            return E_POINTER;
        if (IsEqualIID(riid, IID_IUnknown) || IsEqualIID(riid, IID_IDispatch) ||
            IsEqualIID(riid, iidWebBrowserEvents2)) {
            *object = static_cast<IDispatch*>(this);
            AddRef();
            return S_OK;
        }
        *object = nullptr;
        return E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ULONG(InterlockedIncrement(&m_refs)); }
    STDMETHODIMP_(ULONG) Release() override
    {
        const LONG refs = InterlockedDecrement(&m_refs);
        if (refs == 0)
            delete this;
        return ULONG(refs);
    }
    STDMETHODIMP GetTypeInfoCount(UINT* count) override
    {
        if (count)
            *count = 0;
        return S_OK;
    }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override
    {
        return E_NOTIMPL;
    }
    STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                        UINT*) override
    {
        if (id == dispidNavigateError)
            m_failed = true;
        return S_OK;
    }

private:
    explicit NavigationWatch(ComPtr<IConnectionPoint> point) : m_point(std::move(point)) {}
    virtual ~NavigationWatch() = default;

    LONG m_refs = 1;  // the object's own COM count, as IUnknown requires
    ComPtr<IConnectionPoint> m_point;
    DWORD m_cookie = 0;
    bool m_failed = false;
};
} // namespace

BEGIN_MESSAGE_MAP(KxUiHTMLViewerCtrl, CWnd)
    ON_WM_DESTROY()
END_MESSAGE_MAP()

KxUiHTMLViewerCtrl::KxUiHTMLViewerCtrl() : m_bLoadAsynchrone(false)
{
}

KxUiHTMLViewerCtrl::~KxUiHTMLViewerCtrl()
{
    m_pBrowser.Reset();
    if (m_hWnd)
        DestroyWindow();
}

void KxUiHTMLViewerCtrl::OnDestroy()
{
    m_pBrowser.Reset();
    CWnd::OnDestroy();
}

bool KxUiHTMLViewerCtrl::create(const RECT& rect, CWnd* parent, UINT id)
{
    if (m_hWnd || !parent || !::IsWindow(parent->GetSafeHwnd()))
        return false;
    AfxEnableControlContainer();
    if (!CreateControl(clsidWebBrowser, nullptr, WS_CHILD | WS_VISIBLE | WS_VSCROLL | WS_TABSTOP,
                       rect, parent, id)) {
        m_pBrowser.Reset();
        if (m_hWnd)
            DestroyWindow();
        return false;
    }
    IUnknown* control = GetControlUnknown();
    if (!control || FAILED(control->QueryInterface(
                        iidWebBrowser2, reinterpret_cast<void**>(m_pBrowser.ReleaseAndGetAddressOf())))) {
        m_pBrowser.Reset();
        DestroyWindow();
        return false;
    }
    m_pBrowser->put_Resizable(VARIANT_FALSE);
    return isValid();
}

bool KxUiHTMLViewerCtrl::isValid() const
{
    return m_hWnd && ::IsWindow(m_hWnd) && m_pBrowser;
}

bool KxUiHTMLViewerCtrl::loadURL(LPCWSTR url)
{
    if (!isValid() || !url)
        return false;
    // A synchronous load listens for a failed navigation from before it starts.
    ComPtr<NavigationWatch> watch =
        m_bLoadAsynchrone ? nullptr : NavigationWatch::connect(m_pBrowser.Get());
    VARIANT address;
    VariantInit(&address);
    address.vt = VT_BSTR;
    address.bstrVal = SysAllocString(url);
    VARIANT none;
    VariantInit(&none);
    bool result = SUCCEEDED(m_pBrowser->Navigate2(&address, &none, &none, &none, &none));
    VariantClear(&address);
    if (result && !m_bLoadAsynchrone)
        result = waitUntilComplete(watch.Get());
    if (watch)
        watch->disconnect();
    return result;
}

bool KxUiHTMLViewerCtrl::waitUntilComplete(void* navigationWatch)
{
    const auto* watch = static_cast<const NavigationWatch*>(navigationWatch);
    // No time limit: a working browser completes every navigation, a failed one with its
    // error page, and stays busy until then. A browser without an HTML engine reports the
    // error and stops, idle, in the "loading" state: that ends the wait, as do the window
    // going away, the browser failing to answer and the thread being asked to quit.
    for (;;) {
        READYSTATE state = READYSTATE_UNINITIALIZED;
        if (FAILED(m_pBrowser->get_ReadyState(&state)))
            return false;
        if (state == READYSTATE_COMPLETE)
            return true;
        if (watch && watch->failed()) {
            VARIANT_BOOL busy = VARIANT_TRUE;
            if (FAILED(m_pBrowser->get_Busy(&busy)) || !busy)
                return false;
        }
        // A pending quit is left in the queue for the application's own loop.
        MSG quit;
        if (::PeekMessageW(&quit, nullptr, WM_QUIT, WM_QUIT, PM_NOREMOVE))
            return false;
        if (!AfxPumpMessage()) {
            ::PostQuitMessage(0);
            return false;
        }
        if (!isValid())
            return false;
    }
}

bool KxUiHTMLViewerCtrl::loadCHM(LPCWSTR helpFile, LPCWSTR page)
{
    if (!helpFile || !page)
        return false;
    CString address;
    address.Format(L"its:%s::/%s", helpFile, page);
    return loadURL(address);
}
