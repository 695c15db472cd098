// Random keystroke, key, selection, clipboard, text and format sequences against masked,
// numeric and currency edits (fixed seeds). After every step the shown text must be a
// well-formed number in the control's formats, read back to the control's value (never
// infinite), and agree with its input data; a refused keystroke must change nothing.
//
// The suite runs a short form (a few thousand steps per control). The long form runs
// KXUI_EDIT_STRESS_STEPS steps per control, by hand or from `make bench`:
//     KXUI_EDIT_STRESS_STEPS=100000 cmake/wine-run.sh build/bin/edits_tests.exe
//         --gtest_filter='OXEditProperty.*'        (one command line)
// Each run prints what it covered.
#include "KxEditHost.h"
#include "KxUiOXNumericEdit.h"
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <sstream>

namespace {

// Steps per control: the short form unless the environment asks for more.
int StressSteps()
{
    const char* env = std::getenv("KXUI_EDIT_STRESS_STEPS");
    int n = env != nullptr ? std::atoi(env) : 0;
    return n > 0 ? n : 1500;
}

// What the text of a numeric edit must look like under its present settings.
struct Shape {
    wchar_t dec, group;
    int groupLength, fraction, intLimit;
    bool leadingZero;
    std::wstring before, after; // literals of the format that applies
};

Shape ShapeOf(KxUiOXNumericEdit& e, const std::wstring& currency)
{
    Shape s;
    s.dec = e.GetDecimalSeparator();
    s.group = e.GetGroupSeparator();
    s.groupLength = e.GetGroupLength();
    s.fraction = e.GetFractionalDigitCount();
    s.intLimit = e.GetDecimalDigitCount();
    s.leadingZero = e.GetShowLeadingZero() != 0;
    std::wstring format(e.IsNegative() ? e.GetNegativeFormat() : e.GetPositiveFormat());
    size_t at = format.find(L"1.1");
    s.before = format.substr(0, at);
    s.after = format.substr(at + 3);
    for (std::wstring* part : {&s.before, &s.after}) {
        for (size_t p; !currency.empty() && (p = part->find(L'$')) != std::wstring::npos;)
            part->replace(p, 1, currency);
    }
    return s;
}

// Checks text against the shape; returns the reason it is malformed, or "" and the
// number's digits with "." as separator.
std::string Check(const Shape& s, const std::wstring& text, std::wstring& number)
{
    if (text.size() < s.before.size() + s.after.size() || text.compare(0, s.before.size(), s.before) ||
        text.compare(text.size() - s.after.size(), s.after.size(), s.after))
        return "literals of the format missing";
    std::wstring body = text.substr(s.before.size(), text.size() - s.before.size() - s.after.size());
    size_t sep = body.find(s.dec);
    std::wstring integer = body.substr(0, sep);
    std::wstring fraction = sep == std::wstring::npos ? L"" : body.substr(sep + 1);
    if (s.fraction > 0) {
        if (sep == std::wstring::npos)
            return "decimal separator missing";
        if (static_cast<int>(fraction.size()) != s.fraction)
            return "fraction has the wrong number of digits";
    } else if (sep != std::wstring::npos) {
        return "separator without a fraction";
    }
    for (wchar_t c : fraction)
        if (c < L'0' || c > L'9')
            return "non-digit in the fraction";
    // Integer part: groups of groupLength from the right, the first one shorter or equal.
    std::wstring digits;
    int run = 0;
    for (size_t i = 0; i < integer.size(); ++i) {
        wchar_t c = integer[i];
        if (c >= L'0' && c <= L'9') {
            digits += c;
            ++run;
        } else if (s.groupLength > 0 && c == s.group) {
            if (run == 0 || (digits.size() > static_cast<size_t>(run) && run != s.groupLength) ||
                run > s.groupLength)
                return "misplaced group separator";
            run = 0;
        } else {
            return "stray character in the integer part";
        }
    }
    if (s.groupLength > 0 && (run > s.groupLength ||
                              (digits.size() > static_cast<size_t>(run) && run != s.groupLength)))
        return "misplaced group separator";
    if (s.groupLength > 0 && !integer.empty() && integer.back() == s.group)
        return "group separator at the end";
    if (digits.size() >= 2 && digits[0] == L'0')
        return "leading zero";
    if (s.fraction > 0 && digits.empty() && s.leadingZero)
        return "missing leading zero";
    if (s.fraction > 0 && digits == L"0" && !s.leadingZero)
        return "leading zero shown while switched off";
    if (s.intLimit >= 0 && static_cast<int>(digits.size()) > std::max(s.intLimit, 1))
        return "too many integer digits";
    if (static_cast<int>(digits.size()) > KxUiNumberModel::kMaxIntegerDigits)
        return "more integer digits than a double holds";
    number = digits + (s.fraction > 0 ? L"." + fraction : L"");
    return "";
}

std::string Narrow(const std::wstring& w)
{
    std::string s;
    for (wchar_t c : w)
        s += c >= 0x20 && c < 0x7F ? static_cast<char>(c) : '?';
    return s;
}

class Fuzzer {
public:
    // A numeric or currency edit (with its currency name).
    Fuzzer(KxUiOXNumericEdit& e, int& refusals, std::wstring currency, unsigned seed)
        : edit_(e), numeric_(&e), refusals_(refusals), currency_(std::move(currency)), rng_(seed)
    {
    }
    // A plain masked edit.
    Fuzzer(KxUiOXEdit& e, int& refusals, unsigned seed)
        : edit_(e), refusals_(refusals), left_(e.GetLeftLiterals()), right_(e.GetRightLiterals()), rng_(seed)
    {
    }

    int Pick(int n)
    {
        return std::uniform_int_distribution<int>(0, n - 1)(rng_);
    }

    std::wstring RandomText()
    {
        static const wchar_t* pieces[] = {
            L"1", L"23", L"0", L"00", L"456789", L".", L",", L"-", L" ", L"a", L"x1",
            L"\t", L"\r\n", L"\xD83D\xDE00", L"\x0663", L"$", L"(", L")", L"1.1", L"'",
            L"\x00A0", L"EUR", L"99999999999999999999",
        };
        std::wstring s;
        for (int n = Pick(6); n > 0; --n)
            s += pieces[Pick(sizeof pieces / sizeof *pieces)];
        if (Pick(50) == 0)
            s += std::wstring(400 + Pick(3000), L'7');
        return s;
    }

    // One random action; returns what it did, for the failure message.
    std::wstring Step()
    {
        HWND h = edit_.m_hWnd;
        int len = GetWindowTextLengthW(h);
        int action = Pick(100);
        if (action < 45) {
            static const wchar_t keys[] = L"0123456789012345678901234567890..,--- a+\b\b\b";
            wchar_t c = keys[Pick(sizeof keys / sizeof *keys - 1)];
            if (Pick(40) == 0) {
                static const wchar_t controls[] = {0x01, 0x03, 0x16, 0x18, 0x1A, 0x7F, L'\r', 0xD83D};
                c = controls[Pick(sizeof controls / sizeof *controls)];
            }
            SendMessageW(h, WM_CHAR, c, 1);
            return L"char " + std::to_wstring(c);
        }
        if (action < 62) {
            static const UINT vks[] = {VK_LEFT, VK_RIGHT, VK_HOME, VK_END, VK_DELETE, VK_DELETE, VK_INSERT,
                                       VK_UP, VK_DOWN};
            UINT vk = vks[Pick(sizeof vks / sizeof *vks)];
            UINT mods = Pick(4) == 0 ? KxShift : KxNoMod;
            KxKeyState held(mods);
            SendMessageW(h, WM_KEYDOWN, vk, 1);
            return L"key " + std::to_wstring(vk) + (mods ? L" shift" : L"");
        }
        if (action < 75) {
            int a = Pick(len + 3) - 1, b = Pick(len + 3) - 1;
            SendMessageW(h, EM_SETSEL, a, b);
            return L"select " + std::to_wstring(a) + L"," + std::to_wstring(b);
        }
        if (action < 85) {
            std::wstring t = RandomText();
            if (!PutClipboard(t))
                return L"clipboard busy";
            SendMessageW(h, WM_PASTE, 0, 0);
            return L"paste '" + t.substr(0, 40) + L"'";
        }
        if (action < 92) {
            std::wstring t = RandomText();
            SetWindowTextW(h, t.c_str());
            return L"settext '" + t.substr(0, 40) + L"'";
        }
        if (action < 95) {
            UINT msg = Pick(2) ? WM_CUT : WM_CLEAR;
            SendMessageW(h, msg, 0, 0);
            return msg == WM_CUT ? L"cut" : L"clear";
        }
        if (action < 97 && numeric_ != nullptr) {
            // Formats whose literals hold "#" on either side, and plain ones.
            static const wchar_t* formats[] = {L"1.1", L"#1.1#", L"1.1#", L"a#1.1#b", L"##1.1", L"($ 1.1)",
                                               L"1.1 -", L"-1.1", L"$1.1"};
            const wchar_t* f = formats[Pick(sizeof formats / sizeof *formats)];
            bool negative = Pick(2) != 0;
            if (negative)
                numeric_->SetNegativeFormat(f);
            else
                numeric_->SetPositiveFormat(f);
            ++formatChanges_;
            return std::wstring(negative ? L"negative format " : L"positive format ") + f;
        }
        double v = (Pick(2) ? -1 : 1) * std::ldexp(static_cast<double>(Pick(1 << 30)), -Pick(40));
        if (numeric_ == nullptr) {
            edit_.EmptyData(TRUE);
            return L"empty";
        }
        numeric_->SetValue(v);
        return L"setvalue " + std::to_wstring(v);
    }

    // Runs sequences of steps from an empty control; stops at the first broken property.
    // Prints what it covered.
    void Run(const char* name, int steps, int stepsPerSequence = 25)
    {
        RunSequences(steps / stepsPerSequence, stepsPerSequence);
        std::printf("[ stress   ] %s: %d steps, %d refused, %d format changes, %d negative states, "
                    "longest text %d, %d states at the integer digit limit\n",
                    name, steps_, refusalsSeen_, formatChanges_, negativeStates_, longest_, atDigitLimit_);
    }

private:
    void RunSequences(int sequences, int steps)
    {
        for (int seq = 0; seq < sequences; ++seq) {
            if (numeric_)
                numeric_->SetValue(0);
            else
                edit_.EmptyData(TRUE);
            std::wostringstream log;
            for (int i = 0; i < steps; ++i) {
                HWND h = edit_.m_hWnd;
                std::wstring before = WindowText(h);
                double valueBefore = Value();
                auto sel = Selection(h);
                int refused = refusals_;
                std::wstring did = Step();
                log << L"  " << did << L" -> '" << WindowText(h) << L"'\n";
                std::wstring text = WindowText(h);
                Count(text, refusals_ != refused);
                std::string why = numeric_ ? CheckNumber(text) : CheckMasked(text);
                if (why.empty() && text != std::wstring(edit_.GetFormattedText()))
                    why = "window text differs from the control's formatted text";
                if (why.empty() && refusals_ != refused && sel.first == sel.second &&
                    (text != before || Value() != valueBefore))
                    why = "a refused keystroke changed the control";
                if (!why.empty()) {
                    ADD_FAILURE() << why << " in sequence " << seq << " step " << i << ": '"
                                  << Narrow(text) << "'\n" << Narrow(log.str());
                    return;
                }
            }
        }
    }

    void Count(const std::wstring& text, bool refused)
    {
        ++steps_;
        refusalsSeen_ += refused;
        longest_ = std::max(longest_, static_cast<int>(text.size()));
        if (numeric_ != nullptr) {
            negativeStates_ += numeric_->IsNegative() != 0;
            atDigitLimit_ += numeric_->GetDecimalDigitsInserted() == KxUiNumberModel::kMaxIntegerDigits;
        }
    }

    double Value() const
    {
        return numeric_ ? numeric_->GetValue() : 0.0;
    }

    // Literals around the input, which holds no control characters on one line.
    std::string CheckMasked(const std::wstring& text)
    {
        if (text != left_ + std::wstring(edit_.GetInputData()) + right_)
            return "text is not the mask's literals around the input";
        for (wchar_t c : std::wstring(edit_.GetInputData()))
            if (c < 0x20)
                return "control character in the input";
        return "";
    }

    std::string CheckNumber(const std::wstring& text)
    {
        std::wstring number;
        std::string why = Check(ShapeOf(*numeric_, currency_), text, number);
        if (!why.empty())
            return why;
        std::wstring expect = number;
        for (wchar_t& c : expect)
            if (c == L'.')
                c = numeric_->GetDecimalSeparator();
        if (std::wstring(numeric_->GetInputData()) != expect)
            return "input data does not match the text";
        double value = wcstod(number.c_str(), nullptr);
        if (numeric_->IsNegative())
            value = -value;
        if (!(value == numeric_->GetValue()))
            return "value does not match the text";
        if (!std::isfinite(numeric_->GetValue()))
            return "value is not finite";
        return "";
    }

    KxUiOXEdit& edit_;
    KxUiOXNumericEdit* numeric_ = nullptr;
    int& refusals_;
    std::wstring currency_;
    std::wstring left_, right_;
    std::mt19937 rng_;
    int steps_ = 0, refusalsSeen_ = 0, formatChanges_ = 0, negativeStates_ = 0, longest_ = 0, atDigitLimit_ = 0;
};

TEST(OXEditProperty, MaskedEditKeepsItsLiteralsAroundTheInput)
{
    EditHost host;
    Counting<KxUiOXEdit> edit;
    ASSERT_TRUE(CreateEdit(edit, host));
    ASSERT_TRUE(edit.SetMask(L"Tel. (#) ##"));
    Fuzzer(edit, edit.refusals, 4242).Run("masked", StressSteps());
}

TEST(OXEditProperty, NumericEditWithDefaultSettings)
{
    EditHost host;
    Counting<KxUiOXNumericEdit> edit;
    ASSERT_TRUE(CreateEdit(edit, host));
    Fuzzer(edit, edit.refusals, L"", 20261122).Run("numeric", StressSteps());
}

TEST(OXEditProperty, NumericEditWithCommaSeparatorLimitAndInfiniteFraction)
{
    EditHost host;
    Counting<KxUiOXNumericEdit> edit;
    ASSERT_TRUE(CreateEdit(edit, host));
    ASSERT_TRUE(edit.SetGroupSeparator(L'\''));
    ASSERT_TRUE(edit.SetDecimalSeparator(L','));
    ASSERT_TRUE(edit.SetGroupLength(2));
    ASSERT_TRUE(edit.SetDecimalDigitCount(7));
    ASSERT_TRUE(edit.SetShowLeadingZero(FALSE));
    ASSERT_TRUE(edit.SetNegativeFormat(L"1.1 -"));
    edit.setInfiniteFractionalDigitCount(true);
    Fuzzer(edit, edit.refusals, L"", 7).Run("numeric, comma and limits", StressSteps());
}

TEST(OXEditProperty, CurrencyEditWithNameAndFormatsAroundTheNumber)
{
    EditHost host;
    Counting<KxUiOXCurrencyEdit> edit;
    ASSERT_TRUE(CreateEdit(edit, host));
    ASSERT_TRUE(edit.SetCurrencyName(L"EUR"));
    ASSERT_TRUE(edit.SetPositiveFormat(L"1.1 $"));
    ASSERT_TRUE(edit.SetNegativeFormat(L"($ -1.1)"));
    ASSERT_TRUE(edit.SetFractionalDigitCount(3));
    Fuzzer(edit, edit.refusals, L"EUR", 99).Run("currency", StressSteps());
}

} // namespace
