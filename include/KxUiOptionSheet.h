// KxUiOptionSheet and KxUiOptionPage: a dialog of option pages, chosen from a list, from tabs or (in a
// wizard) by Back and Next, with its own row of push buttons.
//
// Model. The sheet keeps its pages in sheet order as PageInfo records (the page, its group page, whether
// it is a group). Pages belong to the caller; the sheet creates a page's window the first time the page is
// activated, as a child dialog in the page rectangle, and destroys it with the sheet. A chooser (a
// COptionList: KxUiOptionListBox, KxUiOptionTabCtrl, or none) shows the pages in the same order and
// follows the active page. The sheet builds its own dialog template in memory, sizes itself to the
// largest page, creates its buttons from its flags and keeps chooser, page and buttons in place through a
// layout manager when it is resized.
//
// Options dialog (OK, Apply, Cancel, Help, custom) or wizard (Back, Next, Finish, Cancel, ...):
//
//     KxUiSimpleOptionSheet sheet(L"Editor", pMainWnd);      // title "Options for Editor" with PSH_PROPTITLE
//     sheet.setOptionListType(1);                             // a list with icons on the left
//     sheet.AddGroup(&pageGeneral);
//     sheet.AddPage(&pageFonts, &pageGeneral);
//     sheet.AddPage(&pageSaving);
//     if (sheet.DoModal() == IDOK) ...                        // each page's OnOK saved its settings
//
// A page reports an unsaved change with SetModified(TRUE), which enables Apply. A page refuses to be left
// by returning FALSE from OnKillActive; in a wizard, OnWizardNext/OnWizardBack return -1 to stay, 0 to
// go to the next (previous) page or the index of the page to go to.
//
// Button texts are "$$" keys ("$$OK", "$$< Back", ...) that the host translates; a derived sheet
// overrides getButtonText to supply other texts.
#pragma once
#include "KxUiDef.h"
#include "KxArrayPtrDelete.h"
#include <afxwin.h>
#include <memory>
#include <vector>

class KxUiOptionSheet;
class KxUiLayoutManager;
class CImageList;

// Message number of "KXUIM_ENABLE", registered when the library loads. Sent to a sheet with the id of a
// button in wParam and the enable flag in lParam: the sheet enables or disables that button.
extern KXUI_API UINT KXUIM_ENABLE;

////////////////////////////////////////////////////////////////////////////
// KxUiOptionPage: one page of a sheet, a child dialog.

class KXUI_API KxUiOptionPage : public CDialog {
    DECLARE_DYNAMIC(KxUiOptionPage)
public:
    // A page without template builds its controls itself in OnInitDialog (give it a size with
    // SetTemplateSize); the others come from a dialog resource, whose style is turned into a child's.
    KxUiOptionPage();
    explicit KxUiOptionPage(UINT nIDTemplate, CWnd* pParent = NULL, UINT nIDCaption = 0);
    explicit KxUiOptionPage(LPCTSTR lpszTemplateName, CWnd* pParent = NULL, UINT nIDCaption = 0);
    ~KxUiOptionPage() override;

    // ---- overridables ----
    // Creates the page's window as a child of pParent covering rect; FALSE when the template is missing.
    virtual BOOL Create(CRect& rect, CWnd* pParent);
    // Apply: commits the page's settings; FALSE keeps the page modified. The default calls OnOK.
    virtual BOOL OnApply();
    // Cancel: the default calls OnCancel.
    virtual void OnReset();
    // OK on the sheet: save the settings here. Does nothing by default (it never ends a dialog).
    void OnOK() override;
    // Cancel on the sheet: does nothing by default.
    void OnCancel() override;
    // The page is about to be shown; FALSE keeps the sheet where it was. The default refreshes the
    // controls from the members (UpdateData(FALSE)) on every activation after the first.
    virtual BOOL OnSetActive();
    // The page is about to be left; FALSE keeps it. The default validates (UpdateData(TRUE)).
    virtual BOOL OnKillActive();
    // Cancel was pressed; FALSE keeps the sheet open.
    virtual BOOL OnQueryCancel();
    // Wizard Back and Next: -1 stays, 0 goes to the previous (next) page, else the index of the page.
    virtual LRESULT OnWizardBack();
    virtual LRESULT OnWizardNext();
    // Wizard Finish: FALSE keeps the wizard open.
    virtual BOOL OnWizardFinish();
    // Marks the page as changed (or not) and has the sheet update its Apply button.
    virtual void SetModified(BOOL bChanged = TRUE);
    // The icon shown for the page by a chooser (0: none) and the module it is loaded from (NULL: the
    // system's icons, IDI_ and OIC_ identifiers).
    virtual UINT GetIconID();
    virtual HINSTANCE GetIconResourceHandle();
    // The page's icon (GetIconID from GetIconResourceHandle) at nSize x nSize pixels, owned by the caller;
    // NULL when the page has none or it cannot be loaded.
    HICON CreatePageIcon(int nSize);
    // The page's name in the chooser: the text set with SetTitle, the caption string, or the caption of
    // its dialog template.
    virtual CString GetTitle();

    // ---- attributes ----
    LPCTSTR GetTemplateName() const { return m_lpszTemplateName; }
    void SetTitle(LPCTSTR lpszTitle) { m_strTitle = lpszTitle; }
    // The chooser's icon for the page and the module holding it: the caller's resources by default,
    // NULL for the system's icons (IDI_ and OIC_ identifiers).
    void SetIconID(UINT nIconID, HINSTANCE hInstance = AfxGetResourceHandle())
    {
        m_nIconID = nIconID;
        m_hIconInstance = hInstance;
    }
    BOOL IsModified() const { return m_bModified; }
    // Size of the page in dialog units: the template's, or the one set (a page without template).
    CSize GetTemplateSize() const;
    void SetTemplateSize(CSize sizeDlu) { m_sizeTemplate = sizeDlu; }
    // The sheet the page was added to, or NULL.
    KxUiOptionSheet* GetSheet() const { return m_pSheet; }

protected:
    // Creates the window at rect from a copy of a dialog template (DLGTEMPLATE or DLGTEMPLATEEX of
    // nBytes bytes) whose style is turned into a child's.
    BOOL CreateFromTemplate(const void* pTemplate, size_t nBytes, const CRect& rect, CWnd* pParent);

    friend class KxUiOptionSheet;
    KxUiOptionSheet* m_pSheet;  // set while the page is in a sheet
    BOOL m_bModified;
    BOOL m_bFirstSetActive;
    CString m_strTitle;
    UINT m_nIconID;
    HINSTANCE m_hIconInstance;
    CSize m_sizeTemplate;       // dialog units, for a page without template
};

////////////////////////////////////////////////////////////////////////////
// KxUiOptionSheet

class KXUI_API KxUiOptionSheet : public CDialog {
    DECLARE_DYNAMIC(KxUiOptionSheet)
public:
    // The page chooser's interface, implemented beside a window class. Its entries follow the sheet's
    // page order. All int results are BOOL or an index (-1: none).
    class KXUI_API COptionList {
    public:
        virtual ~COptionList() = default;
        // Creates the chooser's window in the sheet with control id nID.
        virtual BOOL Create(KxUiOptionSheet* pSheet, UINT nID) = 0;
        // Appends a group entry.
        virtual BOOL AddGroup(KxUiOptionPage* pGroup) = 0;
        // Appends an entry for a page of a group (NULL: a top-level page).
        virtual BOOL AddPage(KxUiOptionPage* pPage, KxUiOptionPage* pGroup) = 0;
        // Inserts an entry at nIndex; its group is the sheet's record of the page.
        virtual BOOL InsertPage(int nIndex, KxUiOptionPage* pPage) = 0;
        virtual BOOL RemovePage(KxUiOptionPage* pPage) = 0;
        // Selects the page's entry without telling the sheet.
        virtual BOOL SetSelection(KxUiOptionPage* pPage) = 0;
        virtual int FindPage(KxUiOptionPage* pPage) const = 0;
        virtual KxUiOptionPage* GetSelection() = 0;
        virtual CWnd* GetControlWnd() = 0;
        // Images for the entries (entry i shows image i) instead of the pages' icons; not owned.
        virtual void SetImageList(CImageList* pImageList) = 0;
    };

    // A page in sheet order.
    struct PageInfo {
        KxUiOptionPage* m_pPage;
        KxUiOptionPage* m_pGroup;  // NULL for a top-level page or a group
        int m_bIsGroup;
    };

    // Sheet flags.
    enum : DWORD {
        flagWizardHasFinish = 0x10,  // the wizard shows its Finish button at all times
        flagWizard = 0x20,
        flagNoApply = 0x80,
        flagHelp = 0x200,
        flagCustom = 0x2000,
    };
    // State flags.
    enum : DWORD { stateFinishDisabled = 0x8 };
    // Button ids.
    enum : UINT {
        idOK = 1,
        idCancel = 2,
        idHelp = 9,
        idCustom = 10,
        idApply = 12321,
        idBack = 12323,
        idNext = 12324,
        idFinish = 12325,  // also DoModal's result when a wizard is finished
    };
    // Control ids of the chooser and the first page window.
    enum : UINT { idChooser = 0x7F00, idFirstPage = 0x7F10 };
    // PressButton's numbers: the PSBTN_ values and the custom button.
    enum { btnBack = 0, btnNext = 1, btnFinish = 2, btnOK = 3, btnApply = 4, btnCancel = 5, btnHelp = 6, btnCustom = 7 };

    KxUiOptionSheet();
    // selectPage: index of the page shown first.
    explicit KxUiOptionSheet(LPCTSTR lpszTitle, CWnd* pParent = NULL, UINT nSelectPage = 0);
    explicit KxUiOptionSheet(UINT nIDTitle, CWnd* pParent = NULL, UINT nSelectPage = 0);
    ~KxUiOptionSheet() override;
    void Construct(LPCTSTR lpszTitle, CWnd* pParent = NULL, UINT nSelectPage = 0);
    void Construct(UINT nIDTitle, CWnd* pParent = NULL, UINT nSelectPage = 0);

    // ---- running ----
    // Modeless: dwStyle 0 gives a popup with caption and system menu (WS_CHILD embeds the sheet in
    // pParent). Shown when dwStyle has WS_VISIBLE (or is 0).
    virtual BOOL Create(CWnd* pParent = NULL, DWORD dwStyle = 0, DWORD dwExStyle = 0);
    // Modal: IDOK, IDCANCEL, idFinish (wizard) or -1 when the sheet cannot be shown (no pages).
    INT_PTR DoModal() override;
    // Ends a modal sheet with nResult; destroys a modeless one.
    void EndDialog(int nResult);

    // ---- pages ----
    // Appends a page (after the last page of its group; a group not in the sheet yet is added).
    // FALSE for NULL or a page already in the sheet.
    bool AddPage(KxUiOptionPage* pPage, KxUiOptionPage* pGroup = NULL);
    bool InsertPage(int nIndex, KxUiOptionPage* pPage, KxUiOptionPage* pGroup = NULL);
    bool AddGroup(KxUiOptionPage* pGroup);
    // Removes a page (its window is destroyed; the active page moves to a neighbour). Removing a group
    // makes its pages top-level.
    bool RemovePage(KxUiOptionPage* pPage);
    bool RemovePage(int nPage);
    KxUiOptionPage* GetPage(int nPage) const;
    KxUiOptionPage* GetPageGroup(int nPage) const;
    BOOL IsGroup(int nPage) const;
    int GetPageCount() const { return static_cast<int>(m_pages.size()); }
    int GetPageIndex(const KxUiOptionPage* pPage) const;
    KxUiOptionPage* GetActivePage() const { return GetPage(m_nActive); }
    int GetActiveIndex() const { return m_nActive; }
    // Leaves the active page (OnKillActive) and shows this one (OnSetActive); FALSE when either refuses,
    // the page is not in the sheet or its window cannot be created.
    virtual BOOL SetActivePage(KxUiOptionPage* pPage);
    BOOL SetActivePage(int nPage);

    // ---- look ----
    // Bit 0x1 of nStyle (PSH_PROPTITLE) gives "Options for " + the text.
    void SetTitle(LPCTSTR lpszText, UINT nStyle = 0);
    void SetTitle(UINT nIDText, UINT nStyle = 0);
    CString GetTitle() const { return m_strTitle; }
    // The Finish button's text (shown at once when it exists).
    void SetFinishText(LPCTSTR lpszText);
    void SetWizardMode();
    BOOL IsWizardMode() const { return (m_dwFlags & flagWizard) != 0; }
    // Back, Next and Finish from PSWIZB_BACK, PSWIZB_NEXT, PSWIZB_FINISH, PSWIZB_DISABLEDFINISH. Without
    // flagWizardHasFinish, Finish takes the place of Next while PSWIZB_FINISH or PSWIZB_DISABLEDFINISH is
    // given without PSWIZB_NEXT.
    void SetWizardButtons(DWORD dwFlags);
    // Window styles added to the sheet's own (WS_THICKFRAME makes it resizable).
    void setStyle(DWORD dwStyle) { m_dwStyle = dwStyle; }
    DWORD getStyle() const { return m_dwStyle; }
    // The sheet's own change flag; Apply is enabled while it or any page is modified.
    void SetModified(BOOL bChanged = TRUE);
    // The chooser (not owned), NULL for none. Set it before the sheet is created.
    void SetListControl(COptionList* pList) { m_pList = pList; }
    COptionList* GetListControl() const { return m_pList; }
    CWnd* GetListControlWnd() const;
    DWORD GetFlags() const { return m_dwFlags; }
    DWORD GetState() const { return m_dwState; }
    // Where pages go, in client coordinates.
    CRect getPageRect() const;
    int GetButtonHeight() const { return m_nButtonHeight; }

    // ---- buttons ----
    // Sends the button's command (btnBack ... btnCustom); FALSE when the sheet has no window or the
    // button does not apply (wizard buttons outside a wizard, the custom button without its flag).
    BOOL PressButton(int nButton);
    // The created button with this id, or NULL.
    CButton* GetButton(UINT nID) const;

    // ---- overridables ----
    // The page has become the active one.
    virtual void OnSetActivePage(KxUiOptionPage* pPage);
    // A button's text: the "$$" key of its id.
    virtual CString getButtonText(UINT nID);
    // A button's width in pixels; the default is GetButtonWidth.
    virtual int getButtonWidth(UINT nID);
    // Commands of the buttons.
    void OnOK() override;
    void OnCancel() override;
    virtual void OnApply();
    virtual void OnFinish();
    virtual void OnNext();
    virtual void OnBack();
    virtual void OnCustom();
    virtual void OnHelp();
    // The chooser's selection is about to change (*pResult = TRUE vetoes: the active page refused to be
    // left) and has changed (the chosen page is activated).
    virtual void ListSelectionChanging(NMHDR* pNMHDR, LRESULT* pResult);
    virtual void ListSelectionChanged(NMHDR* pNMHDR, LRESULT* pResult);

protected:
    void SetFlags(DWORD dwFlags) { m_dwFlags |= dwFlags; }
    void ClearFlags(DWORD dwFlags) { m_dwFlags &= ~dwFlags; }
    // Wizard moves; nothing unless Next (Back) is enabled.
    void goToNextPage();
    void goToPreviousPage();

    // Creates the button row from the flags, left to right, right-aligned.
    void AddButtons();
    CButton* AddButton(int x, int nWidth, UINT nID, BOOL bVisible);
    // 100 for a button that is shown, 0 for one created hidden.
    int GetButtonWidth(UINT nID);
    // Button height and margins from the font.
    void CalcSpacing(CFont& font);
    // Apply follows the modified flags; Finish its disabled state.
    void UpdateAllButtonsState();
    // The in-memory template of the sheet.
    void CreateDlgTemplate();
    // Sizes the client area for the largest page, the chooser and the buttons.
    void SizeToPages();
    void attachLayoutManager();
    // Creates the page's window at the page rectangle and puts it under the layout.
    BOOL CreatePageWindow(KxUiOptionPage* pPage);
    void FillChooser();
    bool InsertRecord(int nIndex, const PageInfo& info);

    BOOL OnInitDialog() override;
    afx_msg void OnDestroy();
    afx_msg LRESULT OnEnableButton(WPARAM wParam, LPARAM lParam);
    afx_msg LRESULT OnHelpMessage(WPARAM wParam, LPARAM lParam);

    std::vector<PageInfo> m_pages;
    COptionList* m_pList;
    int m_nActive;              // -1 before the first activation
    UINT m_nSelectPage;         // index shown first
    DWORD m_dwFlags;
    DWORD m_dwStyle;
    DWORD m_dwState;
    DWORD m_dwWizardButtons;    // last SetWizardButtons flags
    BOOL m_bModified;
    bool m_bModal;
    bool m_bLeaveAgreed;        // ListSelectionChanging has had the active page agree to be left
    CString m_strTitle;
    CString m_strFinishText;
    CWnd* m_pParent;
    CFont m_font;               // the sheet font, given to the buttons
    int m_nButtonHeight;
    int m_nMargin;              // around the page area and between buttons
    int m_nListWidth;           // width of a list chooser
    int m_nChooserSpacing;      // list: gap to the page; tabs: height of the tab strip
    UINT m_nNextPageId;
    KxArrayPtrDelete<CArray<CButton*, CButton*>> m_buttons;   // owned, in creation order
    std::unique_ptr<KxUiLayoutManager> m_pLayout;
    std::vector<WORD> m_template;

    friend class KxUiOptionPage;
    DECLARE_MESSAGE_MAP()
};
