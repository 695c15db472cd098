// A child window hosting the system's web browser control.
#pragma once
#include "KxUiDef.h"
#include <afxwin.h>
#include <wrl/client.h>

struct IWebBrowser2;

// Shows a URL or a page of a compiled help file in the web browser ActiveX control.
class KXUI_API KxUiHTMLViewerCtrl : public CWnd {
public:
    KxUiHTMLViewerCtrl();
    virtual ~KxUiHTMLViewerCtrl();

    // Creates the browser as a child of parent; false (and no window) when the control or
    // its browser interface cannot be had.
    bool create(const RECT& rect, CWnd* parent, UINT id);
    // The window exists and holds a browser.
    bool isValid() const;
    // Navigates to url. Unless loading asynchronously, waits (pumping messages) until the
    // page is complete; the wait ends early, with false, when the browser reports a failed
    // navigation and stops loading, the window is destroyed, the browser fails to answer or
    // the thread is asked to quit.
    bool loadURL(LPCWSTR url);
    // Shows page of the compiled help file helpFile.
    bool loadCHM(LPCWSTR helpFile, LPCWSTR page);
    void setLoadAsynchrone(bool async) { m_bLoadAsynchrone = async; }

protected:
    afx_msg void OnDestroy();
    DECLARE_MESSAGE_MAP()

private:
    bool waitUntilComplete(void* navigationWatch);

    Microsoft::WRL::ComPtr<IWebBrowser2> m_pBrowser;  // null while not created
    bool m_bLoadAsynchrone;
};
