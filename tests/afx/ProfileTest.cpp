// CWinApp profile in the real registry and in an .ini file; message boxes through the
// application.
#include <afxwin.h>
#include <string>
#include "KxAfxTestRes.h"
#include "KxTestApp.h"

namespace {

// Raw access to the test's profile key, to check what the profile functions wrote.
class RegKey {
public:
    explicit RegKey(const CString& section)
    {
        const CString path = KxTestApp::Get().ProfileKeyPath() + L"\\" + section;
        ::RegCreateKeyExW(HKEY_CURRENT_USER, path, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &m_key, nullptr);
    }
    ~RegKey() { ::RegCloseKey(m_key); }
    DWORD Type(LPCWSTR entry) const
    {
        DWORD type = REG_NONE;
        return ::RegQueryValueExW(m_key, entry, nullptr, &type, nullptr, nullptr) == ERROR_SUCCESS ? type : REG_NONE;
    }
    void Set(LPCWSTR entry, DWORD type, const void* data, DWORD size)
    {
        ::RegSetValueExW(m_key, entry, 0, type, static_cast<const BYTE*>(data), size);
    }

private:
    HKEY m_key = nullptr;
};

std::string Bytes(const BYTE* p, UINT n)
{
    return std::string(reinterpret_cast<const char*>(p), n);
}

}  // namespace

TEST(Profile, RegistryRoundTripsIntsStringsAndBinariesByteExact)
{
    CWinApp& app = KxTestApp::Get();
    ASSERT_NE(nullptr, app.m_pszRegistryKey);
    EXPECT_TRUE(app.WriteProfileInt(L"Numbers", L"Negative", -17));
    EXPECT_TRUE(app.WriteProfileInt(L"Numbers", L"Zero", 0));
    EXPECT_EQ(static_cast<UINT>(-17), app.GetProfileInt(L"Numbers", L"Negative", 5));
    EXPECT_EQ(0u, app.GetProfileInt(L"Numbers", L"Zero", 5));

    EXPECT_TRUE(app.WriteProfileString(L"Texts", L"Name", L"Grüße \x4E2D"));
    EXPECT_TRUE(app.WriteProfileString(L"Texts", L"Empty", L""));
    EXPECT_EQ(CString(L"Grüße \x4E2D"), app.GetProfileString(L"Texts", L"Name"));
    EXPECT_EQ(CString(), app.GetProfileString(L"Texts", L"Empty", L"default"));

    const BYTE blob[] = {0, 1, 0xFF, 0, 0x80, 'a', 0};
    EXPECT_TRUE(app.WriteProfileBinary(L"Blobs", L"Blob", const_cast<BYTE*>(blob), sizeof blob));
    BYTE* data = nullptr;
    UINT size = 0;
    ASSERT_TRUE(app.GetProfileBinary(L"Blobs", L"Blob", &data, &size));
    EXPECT_EQ(Bytes(blob, sizeof blob), Bytes(data, size));
    delete[] data;
    // An empty record is a record.
    EXPECT_TRUE(app.WriteProfileBinary(L"Blobs", L"None", nullptr, 0));
    ASSERT_TRUE(app.GetProfileBinary(L"Blobs", L"None", &data, &size));
    EXPECT_EQ(0u, size);
    delete[] data;

    // Each kind is stored with its own registry type.
    EXPECT_EQ(static_cast<DWORD>(REG_DWORD), RegKey(L"Numbers").Type(L"Negative"));
    EXPECT_EQ(static_cast<DWORD>(REG_SZ), RegKey(L"Texts").Type(L"Name"));
    EXPECT_EQ(static_cast<DWORD>(REG_BINARY), RegKey(L"Blobs").Type(L"Blob"));
}

TEST(Profile, SectionsWithBackslashesAreNestedKeys)
{
    CWinApp& app = KxTestApp::Get();
    EXPECT_TRUE(app.WriteProfileInt(L"Window\\Main\\Pane", L"Width", 321));
    HKEY key = nullptr;
    const CString path = KxTestApp::Get().ProfileKeyPath() + L"\\Window\\Main\\Pane";
    ASSERT_EQ(ERROR_SUCCESS, ::RegOpenKeyExW(HKEY_CURRENT_USER, path, 0, KEY_READ, &key));
    DWORD value = 0, size = sizeof value;
    EXPECT_EQ(ERROR_SUCCESS, ::RegQueryValueExW(key, L"Width", nullptr, nullptr, reinterpret_cast<BYTE*>(&value), &size));
    ::RegCloseKey(key);
    EXPECT_EQ(321u, value);
    EXPECT_EQ(321u, app.GetProfileInt(L"Window\\Main\\Pane", L"Width", 0));

    // Removing a section takes its nested keys along.
    EXPECT_TRUE(app.WriteProfileString(L"Window", nullptr, nullptr));
    EXPECT_EQ(7u, app.GetProfileInt(L"Window\\Main\\Pane", L"Width", 7));
    // Removing one entry.
    EXPECT_TRUE(app.WriteProfileString(L"Texts", L"Gone", L"x"));
    EXPECT_TRUE(app.WriteProfileString(L"Texts", L"Gone", nullptr));
    EXPECT_EQ(CString(L"dflt"), app.GetProfileString(L"Texts", L"Gone", L"dflt"));
}

TEST(Profile, MissingAndWronglyTypedValuesGiveTheDefault)
{
    CWinApp& app = KxTestApp::Get();
    EXPECT_EQ(42u, app.GetProfileInt(L"Nowhere", L"Nothing", 42));
    EXPECT_EQ(CString(L"d"), app.GetProfileString(L"Nowhere", L"Nothing", L"d"));
    EXPECT_EQ(CString(), app.GetProfileString(L"Nowhere", L"Nothing"));
    BYTE* data = reinterpret_cast<BYTE*>(1);
    UINT size = 99;
    EXPECT_FALSE(app.GetProfileBinary(L"Nowhere", L"Nothing", &data, &size));
    EXPECT_EQ(nullptr, data);
    EXPECT_EQ(0u, size);

    // Values written by someone else with another type are not read as this one.
    RegKey key(L"Foreign");
    const wchar_t text[] = L"1234";
    const DWORD dword = 77;
    const BYTE four[] = {1, 2, 3, 4};
    key.Set(L"Text", REG_SZ, text, sizeof text);
    key.Set(L"Dword", REG_DWORD, &dword, sizeof dword);
    key.Set(L"Four", REG_BINARY, four, sizeof four);
    EXPECT_EQ(5u, app.GetProfileInt(L"Foreign", L"Text", 5));
    EXPECT_EQ(5u, app.GetProfileInt(L"Foreign", L"Four", 5));
    EXPECT_EQ(CString(L"d"), app.GetProfileString(L"Foreign", L"Dword", L"d"));
    EXPECT_EQ(CString(L"d"), app.GetProfileString(L"Foreign", L"Four", L"d"));
    EXPECT_FALSE(app.GetProfileBinary(L"Foreign", L"Text", &data, &size));
    EXPECT_FALSE(app.GetProfileBinary(L"Foreign", L"Dword", &data, &size));
    EXPECT_EQ(nullptr, data);
    // Bad arguments get a clear answer.
    EXPECT_FALSE(app.GetProfileBinary(L"Foreign", L"Four", nullptr, &size));
    EXPECT_FALSE(app.WriteProfileBinary(L"Foreign", L"X", nullptr, 3));
    EXPECT_FALSE(app.WriteProfileInt(nullptr, L"X", 1));
}

TEST(Profile, IniFileRoundTripsWithBinariesAsLetters)
{
    KxTestApp& app = KxTestApp::Get();
    const CString ini = app.UseIniFile();
    EXPECT_EQ(nullptr, app.m_pszRegistryKey);
    EXPECT_TRUE(app.WriteProfileInt(L"Numbers", L"Value", -3));
    EXPECT_EQ(static_cast<UINT>(-3), app.GetProfileInt(L"Numbers", L"Value", 0));
    EXPECT_TRUE(app.WriteProfileString(L"Texts", L"Name", L"a b=c"));
    EXPECT_EQ(CString(L"a b=c"), app.GetProfileString(L"Texts", L"Name"));
    EXPECT_EQ(CString(L"d"), app.GetProfileString(L"Texts", L"Missing", L"d"));

    const BYTE blob[] = {0xAB, 0x00, 0xFF, 0x01};
    EXPECT_TRUE(app.WriteProfileBinary(L"Blobs", L"Blob", const_cast<BYTE*>(blob), sizeof blob));
    // Each byte is two letters: 'A' + low nibble, then 'A' + high nibble.
    wchar_t raw[64] = {};
    ::GetPrivateProfileStringW(L"Blobs", L"Blob", L"", raw, 64, ini);
    EXPECT_STREQ(L"LKAAPPBA", raw);
    BYTE* data = nullptr;
    UINT size = 0;
    ASSERT_TRUE(app.GetProfileBinary(L"Blobs", L"Blob", &data, &size));
    EXPECT_EQ(Bytes(blob, sizeof blob), Bytes(data, size));
    delete[] data;

    // Text that was not written as a binary value is refused.
    ::WritePrivateProfileStringW(L"Blobs", L"Odd", L"ABC", ini);
    ::WritePrivateProfileStringW(L"Blobs", L"Bad", L"AZ", ini);
    EXPECT_FALSE(app.GetProfileBinary(L"Blobs", L"Odd", &data, &size));
    EXPECT_FALSE(app.GetProfileBinary(L"Blobs", L"Bad", &data, &size));
    EXPECT_FALSE(app.GetProfileBinary(L"Blobs", L"Missing", &data, &size));

    // Long values are read whole.
    const CString longText(L'x', 3000);
    EXPECT_TRUE(app.WriteProfileString(L"Texts", L"Long", longText));
    EXPECT_EQ(longText, app.GetProfileString(L"Texts", L"Long"));
}

TEST(App, MessageBoxesGoThroughTheApplicationAndAreRecorded)
{
    KxTestApp& app = KxTestApp::Get();
    EXPECT_EQ(IDYES, AfxMessageBox(L"Continue?", MB_YESNO));
    app.QueueAnswer(IDNO);
    EXPECT_EQ(IDNO, AfxMessageBox(L"Really?", MB_YESNO | MB_ICONQUESTION));
    // From a string resource of the current module; the default button decides.
    EXPECT_EQ(IDCANCEL, AfxMessageBox(IDS_TEST_PROMPT, MB_OKCANCEL | MB_DEFBUTTON2));
    // A missing string shows nothing.
    EXPECT_EQ(0, AfxMessageBox(9999u));

    ASSERT_EQ(3u, app.Boxes().size());
    EXPECT_EQ(CString(L"Continue?"), app.Boxes()[0].text);
    EXPECT_EQ(static_cast<UINT>(MB_YESNO), app.Boxes()[0].type);
    EXPECT_EQ(CString(L"Save the changes?"), app.Boxes()[2].text);
    EXPECT_EQ(static_cast<UINT>(IDS_TEST_PROMPT), app.Boxes()[2].idPrompt);
    EXPECT_EQ(&app, AfxGetApp());
    EXPECT_STREQ(L"KxUiTests", AfxGetAppName());
}
