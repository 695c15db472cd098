// Clipboard data through COleDataSource and COleDataObject, checked against the plain
// clipboard functions of the platform.
#include <afxole.h>

#include <string>

namespace {

HGLOBAL GlobalText(const wchar_t* text)
{
    const size_t bytes = (wcslen(text) + 1) * sizeof(wchar_t);
    HGLOBAL h = GlobalAlloc(GMEM_MOVEABLE, bytes);
    memcpy(GlobalLock(h), text, bytes);
    GlobalUnlock(h);
    return h;
}

HGLOBAL GlobalAnsi(const char* text)
{
    const size_t bytes = strlen(text) + 1;
    HGLOBAL h = GlobalAlloc(GMEM_MOVEABLE, bytes);
    memcpy(GlobalLock(h), text, bytes);
    GlobalUnlock(h);
    return h;
}

std::wstring TextOf(HGLOBAL h)
{
    std::wstring s = static_cast<const wchar_t*>(GlobalLock(h));
    GlobalUnlock(h);
    return s;
}

// The clipboard's text as the plain API reads it.
std::wstring PlainClipboardText(UINT format)
{
    std::wstring out;
    if (!OpenClipboard(nullptr))
        return L"<clipboard not opened>";
    if (HANDLE h = GetClipboardData(format)) {
        if (format == CF_UNICODETEXT) {
            out = static_cast<const wchar_t*>(GlobalLock(h));
        } else {
            const char* a = static_cast<const char*>(GlobalLock(h));
            out.assign(a, a + strlen(a));
        }
        GlobalUnlock(h);
    } else {
        out = L"<no data>";
    }
    CloseClipboard();
    return out;
}

// Each test starts with OLE initialised and leaves an empty clipboard.
class Clipboard : public testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(AfxOleInit()); }
    void TearDown() override
    {
        OleSetClipboard(nullptr);
        if (OpenClipboard(nullptr)) {
            EmptyClipboard();
            CloseClipboard();
        }
    }
};

}  // namespace

TEST_F(Clipboard, TextFromADataSourceIsReadBackByDataObjectAndPlainApi)
{
    COleDataSource* source = new COleDataSource;
    source->CacheGlobalData(CF_UNICODETEXT, GlobalText(L"Grüße\tzwei\r\nZeile"));
    source->SetClipboard();  // the clipboard owns the source now
    EXPECT_EQ(source, COleDataSource::GetClipboardOwner());

    COleDataObject data;
    ASSERT_TRUE(data.AttachClipboard());
    EXPECT_TRUE(data.IsDataAvailable(CF_UNICODETEXT));
    EXPECT_FALSE(data.IsDataAvailable(CF_HDROP));
    HGLOBAL h = data.GetGlobalData(CF_UNICODETEXT);
    ASSERT_NE(nullptr, h);
    EXPECT_EQ(L"Grüße\tzwei\r\nZeile", TextOf(h));
    GlobalFree(h);  // a copy that belongs to the reader
    EXPECT_EQ(nullptr, data.GetGlobalData(CF_HDROP));

    EXPECT_EQ(L"Grüße\tzwei\r\nZeile", PlainClipboardText(CF_UNICODETEXT));
    // The clipboard converts to the other text formats by itself.
    EXPECT_EQ(L"Gr", PlainClipboardText(CF_TEXT).substr(0, 2));
    data.Release();
    EXPECT_EQ(nullptr, data.m_lpDataObject);
}

TEST_F(Clipboard, SeveralFormatsAreEnumeratedAndTheLastCacheWins)
{
    const CLIPFORMAT custom = static_cast<CLIPFORMAT>(RegisterClipboardFormatW(L"KxUi test format"));
    COleDataSource* source = new COleDataSource;
    source->CacheGlobalData(CF_TEXT, GlobalAnsi("first"));
    source->CacheGlobalData(CF_TEXT, GlobalAnsi("ansi text"));  // replaces the first
    source->CacheGlobalData(custom, GlobalAnsi("\x01\x02\x03"));
    source->SetClipboard();

    COleDataObject data;
    ASSERT_TRUE(data.AttachClipboard());
    data.BeginEnumFormats();
    FORMATETC fe;
    bool sawText = false, sawCustom = false;
    while (data.GetNextFormat(&fe)) {
        sawText |= fe.cfFormat == CF_TEXT;
        sawCustom |= fe.cfFormat == custom;
    }
    EXPECT_TRUE(sawText);
    EXPECT_TRUE(sawCustom);

    HGLOBAL h = data.GetGlobalData(custom);
    ASSERT_NE(nullptr, h);
    EXPECT_EQ(0, memcmp("\x01\x02\x03", GlobalLock(h), 4));
    GlobalUnlock(h);
    GlobalFree(h);
    EXPECT_EQ(L"ansi text", PlainClipboardText(CF_TEXT));
    EXPECT_EQ(L"ansi text", PlainClipboardText(CF_UNICODETEXT));
}

TEST_F(Clipboard, FlushedDataOutlivesItsSourceAndASourceNeverShownIsDeleted)
{
    COleDataSource* source = new COleDataSource;
    source->CacheGlobalData(CF_UNICODETEXT, GlobalText(L"kept"));
    source->SetClipboard();
    COleDataSource::FlushClipboard();  // renders the data; the source is released
    EXPECT_EQ(nullptr, COleDataSource::GetClipboardOwner());
    EXPECT_EQ(L"kept", PlainClipboardText(CF_UNICODETEXT));

    // Its data object's references are the object's own.
    COleDataSource* local = new COleDataSource;
    local->CacheGlobalData(CF_UNICODETEXT, GlobalText(L"never shown"));
    LPDATAOBJECT p = local->GetDataObject();
    EXPECT_EQ(2u, p->AddRef());
    FORMATETC fe = {CF_UNICODETEXT, nullptr, DVASPECT_CONTENT, -1, TYMED_HGLOBAL};
    EXPECT_EQ(S_OK, p->QueryGetData(&fe));
    fe.tymed = TYMED_ISTREAM;
    EXPECT_EQ(DV_E_FORMATETC, p->QueryGetData(&fe));
    EXPECT_EQ(1u, p->Release());
    delete local;
}

TEST_F(Clipboard, AnEmptyDataObjectAnswersNothing)
{
    COleDataObject data;
    EXPECT_FALSE(data.IsDataAvailable(CF_TEXT));
    EXPECT_EQ(nullptr, data.GetGlobalData(CF_TEXT));
    STGMEDIUM medium;
    EXPECT_FALSE(data.GetData(CF_TEXT, &medium));
    data.BeginEnumFormats();
    FORMATETC fe;
    EXPECT_FALSE(data.GetNextFormat(&fe));
}
