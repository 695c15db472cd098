// A page of the gallery: a child dialog, built in code, that demonstrates one capability.
#pragma once
#include <afxwin.h>
#include <memory>
#include <vector>

class CGalleryPage : public CDialog {
    DECLARE_DYNAMIC(CGalleryPage)
public:
    CGalleryPage() = default;
    ~CGalleryPage() override;

    // Creates the page as a child of pParent covering rect (client coordinates of pParent).
    BOOL CreatePage(CWnd* pParent, const CRect& rect, UINT nId);

    // Title in the page list and the window caption.
    virtual LPCWSTR GetTitle() const = 0;
    // Short name used in snapshot file names ("layout").
    virtual LPCWSTR GetSlug() const = 0;
    // One line for the status bar while the page is shown.
    virtual CString GetStatusText() const { return GetTitle(); }
    // Something for the page to do before a snapshot, so that the picture shows the page at
    // work (typing, dragging); the default does nothing.
    virtual void Animate() {}
    // Positions the user can push the page into that its layout must survive, such as a
    // splitter dragged to either end. The layout check puts the page into each in turn.
    virtual int GetExtremeCount() const { return 0; }
    virtual void ShowExtreme(int /*nIndex*/) {}
    // What the user typed survives a restart: the text of every editable edit field on the
    // page (panels included) is written to the profile section "Gallery\<slug>" when the
    // program closes and put back when the page is next built. A page with more state
    // (a splitter, a selection) adds it by overriding both and calling the base.
    virtual void SaveState();
    virtual void RestoreState();

protected:
    // Creates the page's children and their layout; called from OnInitDialog.
    virtual void BuildPage() = 0;

    // Creates a child control of a platform class with the page's font. The page owns the
    // returned object. rect is in pixels, client coordinates of the page.
    CWnd* AddControl(LPCWSTR className, LPCWSTR text, DWORD style, const CRect& rect, UINT nId,
                     DWORD exStyle = 0);
    // Adopts a control object the page creates itself (a library control), to give it the
    // page's font after creation and delete it with the page.
    template <class T>
    T* Adopt(T* pCtrl)
    {
        m_owned.emplace_back(pCtrl);
        return pCtrl;
    }
    void ApplyFont(CWnd* pWnd);

    BOOL OnInitDialog() override;
    // The frame's accelerators come before the page's dialog navigation, which would otherwise
    // eat them (as a form view does).
    BOOL PreTranslateMessage(MSG* pMsg) override;
    void OnOK() override {}      // Enter and Escape do not close a page
    void OnCancel() override {}

private:
    std::vector<std::unique_ptr<CWnd>> m_owned;
    CRect m_rectInitial;
};

// Creates dlg as an empty child dialog of pParent covering rect (client coordinates), in the
// system's dialog font, taking part in its parent's tab order; it adds its children in code.
BOOL CreateChildDialog(CDialog& dlg, CWnd* pParent, const CRect& rect, UINT nId);

// The pages, in gallery order. Each page file registers its class with KXGALLERY_PAGE.
using CGalleryPageFactory = CGalleryPage* (*)();
struct CGalleryPageEntry {
    int order;
    CGalleryPageFactory create;
};
std::vector<CGalleryPageEntry>& GalleryPages();

struct CGalleryPageRegistrar {
    CGalleryPageRegistrar(int order, CGalleryPageFactory create);
};

#define KXGALLERY_PAGE(order, Class)                                                            \
    static CGalleryPage* Create##Class() { return new Class; }                                  \
    static CGalleryPageRegistrar s_register##Class(order, &Create##Class)
