// Masked, numeric and currency edits: an order form whose fields accept only what fits
// their mask or number format, each value shown live as it is typed.
#include "KxUiGalleryPage.h"
#include "KxUiLayoutManager.h"
#include "KxUiOXNumericEdit.h"

namespace {

enum : UINT {
    IDC_FIRST_LABEL = 2300,  // labels: 2300..2304
    IDC_PHONE = 2310,
    IDC_PART,
    IDC_QUANTITY,
    IDC_PRICE,
    IDC_DISCOUNT,
    IDC_FIRST_VALUE = 2320,  // live values: 2320..2324
    IDC_NOTE = 2330,
};

const int kFields = 5;
// Where the page keeps its fields between runs, and the names of the number fields there.
const wchar_t kSection[] = L"Gallery\\edits";
const wchar_t* const kNumberNames[] = {L"Quantity", L"UnitPrice", L"Discount"};

// A masked edit for telephone numbers: digits and spaces only. The masked edit takes any
// character; this one adds its filter with one message-map entry and leaves the rest
// (literals, caret, selection) to the base.
class CPhoneEdit : public KxUiOXEdit {
protected:
    afx_msg void OnChar(UINT nChar, UINT nRepCnt, UINT nFlags)
    {
        const bool bControl = nChar < 0x20 || nChar == 0x7F;
        if (bControl || (nChar >= L'0' && nChar <= L'9') || nChar == L' ')
            KxUiOXEdit::OnChar(nChar, nRepCnt, nFlags);
        else
            ValidationError();
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(CPhoneEdit, KxUiOXEdit)
    ON_WM_CHAR()
END_MESSAGE_MAP()

}  // namespace

class CEditsPage : public CGalleryPage {
    DECLARE_DYNAMIC(CEditsPage)

public:
    ~CEditsPage() override
    {
        if (GetSafeHwnd())
            DestroyWindow();
    }
    LPCWSTR GetTitle() const override { return L"Masked and numeric edits"; }
    LPCWSTR GetSlug() const override { return L"edits"; }
    CString GetStatusText() const override
    {
        return L"Literals stay in place, numbers are grouped and normalised after every keystroke.";
    }
    void Animate() override
    {
        // Typing 1 2 3 4 into the price: the control shows the amount formatted as it grows.
        m_price.SetFocus();
        m_price.SetSel(0, -1);
        for (const wchar_t* p = L"1234"; *p; ++p)
            m_price.SendMessage(WM_CHAR, *p, 1);
        // Leave the field as tabbing into it would: the whole value selected, no caret
        // standing inside the number.
        m_price.SetSel(0, -1);
        ShowValues();
    }

    // The fields keep what the user typed, not their shown text: put back through
    // WM_SETTEXT, a masked field's text would take its literals in as input ("+44 (0) +44
    // (0) 20 ...") and a currency field's "($5.00)" would lose its sign.
    void SaveState() override
    {
        CWinApp* app = AfxGetApp();
        if (app == nullptr || GetSafeHwnd() == nullptr)
            return;
        app->WriteProfileString(kSection, L"Phone", m_phone.GetInputData());
        app->WriteProfileString(kSection, L"PartNumber", m_part.GetInputData());
        const KxUiOXNumericEdit* numbers[] = {&m_quantity, &m_price, &m_discount};
        for (int i = 0; i < 3; ++i) {
            CString value;
            value.Format(L"%.17g", numbers[i]->GetValue());
            app->WriteProfileString(kSection, kNumberNames[i], value);
        }
    }
    void RestoreState() override
    {
        CWinApp* app = AfxGetApp();
        if (app == nullptr)
            return;
        // A marker that can never be a saved text tells "never saved" from "saved empty".
        const wchar_t kUnset[] = L"\x01";
        KxUiOXEdit* masked[] = {&m_phone, &m_part};
        const wchar_t* maskedNames[] = {L"Phone", L"PartNumber"};
        for (int i = 0; i < 2; ++i) {
            const CString text = app->GetProfileString(kSection, maskedNames[i], kUnset);
            if (text != kUnset) {
                masked[i]->EmptyData(TRUE);
                masked[i]->SetInputData(text, 0);
            }
        }
        KxUiOXNumericEdit* numbers[] = {&m_quantity, &m_price, &m_discount};
        for (int i = 0; i < 3; ++i) {
            const CString text = app->GetProfileString(kSection, kNumberNames[i], kUnset);
            if (text != kUnset)
                numbers[i]->SetValue(_wtof(text));
        }
        ShowValues();
    }

protected:
    void BuildPage() override
    {
        CRect rc;
        GetClientRect(&rc);
        const int w = rc.Width();
        const wchar_t* labels[kFields] = {L"Phone", L"Part number", L"Quantity", L"Unit price", L"Discount (%)"};
        KxUiOXEdit* edits[kFields] = {&m_phone, &m_part, &m_quantity, &m_price, &m_discount};
        // The fields stretch with the page; the live values keep a fixed width at its right
        // edge, so nothing wraps or clips at the frame's minimum size.
        const int editLeft = 130, valueWidth = 150, editRight = w - 10 - valueWidth - 16;
        for (int i = 0; i < kFields; ++i) {
            const int top = 20 + i * 40;
            AddControl(L"STATIC", labels[i], SS_RIGHT, CRect(10, top + 4, editLeft - 10, top + 22),
                       IDC_FIRST_LABEL + static_cast<UINT>(i));
            edits[i]->CreateEx(WS_EX_CLIENTEDGE, L"EDIT", L"", WS_CHILD | WS_VISIBLE | WS_TABSTOP | ES_AUTOHSCROLL,
                               CRect(editLeft, top, editRight, top + 24), this, IDC_PHONE + static_cast<UINT>(i));
            ApplyFont(edits[i]);
            // Tabbing into a field selects its contents, as in a dialog.
            edits[i]->SetHighlightOnSetFocus(TRUE);
            AddControl(L"STATIC", L"", SS_LEFTNOWORDWRAP | SS_NOPREFIX | SS_ENDELLIPSIS,
                       CRect(w - 10 - valueWidth, top + 4, w - 10, top + 22),
                       IDC_FIRST_VALUE + static_cast<UINT>(i));
        }
        m_phone.SetMask(L"+44 (0) #");
        m_phone.SetInputData(L"20 7946 0958");
        m_part.SetMask(L"PN-#/EU");
        m_part.SetInputData(L"48213");
        // The numbers follow the user's locale (separators, grouping, currency formats);
        // what the page sets itself afterwards is kept.
        m_quantity.GetLocaleSettings();
        m_price.GetLocaleSettings();
        m_discount.GetLocaleSettings();
        m_quantity.SetFractionalDigitCount(0);
        m_quantity.SetValue(1250);
        m_price.SetValue(89.9);
        m_discount.SetFractionalDigitCount(2);
        m_discount.SetValue(12.5);
        AddControl(L"STATIC",
                   L"Phone (digits and spaces) and part number keep their literals around what you type; quantity, unit price "
                   L"(in your locale's currency format) and discount accept digits, one decimal separator and "
                   L"a minus sign, and group the thousands themselves.",
                   SS_LEFT, CRect(10, 230, w - 10, 290), IDC_NOTE);

        using LM = KxUiLayoutManager;
        m_layout.Attach(this);
        for (int i = 0; i < kFields; ++i) {
            m_layout.TieChild(IDC_FIRST_LABEL + static_cast<UINT>(i), LM::sideTop | LM::sideLeft, LM::typeSameSide);
            m_layout.TieChild(IDC_PHONE + static_cast<UINT>(i), LM::sideTop | LM::sideLeft | LM::sideRight,
                              LM::typeSameSide);
            m_layout.TieChild(IDC_FIRST_VALUE + static_cast<UINT>(i), LM::sideTop | LM::sideRight, LM::typeSameSide);
            m_layout.TieChild(IDC_FIRST_VALUE + static_cast<UINT>(i), LM::sideLeft, LM::typeOppositeSide);
        }
        m_layout.TieChild(IDC_NOTE, LM::sideTop | LM::sideLeft | LM::sideRight, LM::typeSameSide);
        m_layout.RedrawLayout();
        ShowValues();
    }

    // Every field shows its input or value beside it as it changes.
    afx_msg void OnFieldChange(UINT) { ShowValues(); }
    DECLARE_MESSAGE_MAP()

private:
    void ShowValues()
    {
        CString text;
        text.Format(L"input: %s", static_cast<LPCWSTR>(m_phone.GetInputData()));
        SetDlgItemText(IDC_FIRST_VALUE, text);
        text.Format(L"input: %s", static_cast<LPCWSTR>(m_part.GetInputData()));
        SetDlgItemText(IDC_FIRST_VALUE + 1, text);
        const KxUiOXNumericEdit* numbers[] = {&m_quantity, &m_price, &m_discount};
        for (int i = 0; i < 3; ++i) {
            text.Format(L"value: %.*f", i == 0 ? 0 : 2, numbers[i]->GetValue());
            SetDlgItemText(IDC_FIRST_VALUE + 2 + static_cast<UINT>(i), text);
        }
    }

    CPhoneEdit m_phone;
    KxUiOXEdit m_part;
    KxUiOXNumericEdit m_quantity;
    KxUiOXCurrencyEdit m_price;
    KxUiOXNumericEdit m_discount;
    KxUiLayoutManager m_layout;
};

BEGIN_MESSAGE_MAP(CEditsPage, CGalleryPage)
    ON_CONTROL_RANGE(EN_CHANGE, IDC_PHONE, IDC_DISCOUNT, &CEditsPage::OnFieldChange)
END_MESSAGE_MAP()

IMPLEMENT_DYNAMIC(CEditsPage, CGalleryPage)
KXGALLERY_PAGE(30, CEditsPage);
