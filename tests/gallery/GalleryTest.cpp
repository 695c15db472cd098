// The gallery program, run as a user's script runs it: snapshot mode writes one picture per
// page at the requested size, each showing something; the tour visits every page and exits 0.
#include <wincodec.h>
#include <string>
#include <vector>

namespace {

std::wstring ExeDir()
{
    wchar_t path[MAX_PATH];
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    std::wstring dir(path);
    return dir.substr(0, dir.find_last_of(L'\\'));
}

struct RunResult {
    DWORD exitCode = 0xFFFFFFFF;
    std::string output;
};

// Starts the gallery with the arguments, collects its standard output, waits (bounded).
RunResult RunGallery(const std::wstring& args)
{
    RunResult r;
    SECURITY_ATTRIBUTES sa = {sizeof sa, nullptr, TRUE};
    HANDLE readEnd = nullptr, writeEnd = nullptr;
    if (!CreatePipe(&readEnd, &writeEnd, &sa, 0))
        return r;
    SetHandleInformation(readEnd, HANDLE_FLAG_INHERIT, 0);
    STARTUPINFOW si = {sizeof si};
    si.dwFlags = STARTF_USESTDHANDLES;
    si.hStdOutput = writeEnd;
    si.hStdError = writeEnd;
    si.hStdInput = GetStdHandle(STD_INPUT_HANDLE);
    std::wstring cmd = L"\"" + ExeDir() + L"\\KxUiGallery.exe\" " + args;
    PROCESS_INFORMATION pi = {};
    const BOOL started = CreateProcessW(nullptr, &cmd[0], nullptr, nullptr, TRUE, 0, nullptr, nullptr, &si, &pi);
    CloseHandle(writeEnd);
    if (!started) {
        CloseHandle(readEnd);
        return r;
    }
    char buf[4096];
    DWORD got = 0;
    while (ReadFile(readEnd, buf, sizeof buf, &got, nullptr) && got > 0)
        r.output.append(buf, got);
    CloseHandle(readEnd);
    if (WaitForSingleObject(pi.hProcess, 120000) == WAIT_OBJECT_0)
        GetExitCodeProcess(pi.hProcess, &r.exitCode);
    else
        TerminateProcess(pi.hProcess, 99);
    CloseHandle(pi.hProcess);
    CloseHandle(pi.hThread);
    return r;
}

std::vector<std::string> Lines(const std::string& text)
{
    std::vector<std::string> lines;
    size_t start = 0;
    while (start < text.size()) {
        size_t end = text.find('\n', start);
        if (end == std::string::npos)
            end = text.size();
        std::string line = text.substr(start, end - start);
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        if (!line.empty())
            lines.push_back(line);
        start = end + 1;
    }
    return lines;
}

struct Image {
    UINT width = 0, height = 0;
    std::vector<DWORD> pixels;  // BGRA
};

bool LoadPng(const std::wstring& path, Image& img)
{
    IWICImagingFactory* factory = nullptr;
    if (FAILED(CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER, IID_IWICImagingFactory,
                                reinterpret_cast<void**>(&factory))))
        return false;
    bool ok = false;
    IWICBitmapDecoder* decoder = nullptr;
    IWICBitmapFrameDecode* frame = nullptr;
    IWICFormatConverter* conv = nullptr;
    if (SUCCEEDED(factory->CreateDecoderFromFilename(path.c_str(), nullptr, GENERIC_READ,
                                                     WICDecodeMetadataCacheOnDemand, &decoder)) &&
        SUCCEEDED(decoder->GetFrame(0, &frame)) && SUCCEEDED(frame->GetSize(&img.width, &img.height)) &&
        SUCCEEDED(factory->CreateFormatConverter(&conv)) &&
        SUCCEEDED(conv->Initialize(frame, GUID_WICPixelFormat32bppBGRA, WICBitmapDitherTypeNone, nullptr, 0,
                                   WICBitmapPaletteTypeCustom))) {
        img.pixels.resize(static_cast<size_t>(img.width) * img.height);
        ok = SUCCEEDED(conv->CopyPixels(nullptr, img.width * 4, static_cast<UINT>(img.pixels.size() * 4),
                                        reinterpret_cast<BYTE*>(img.pixels.data())));
    }
    if (conv)
        conv->Release();
    if (frame)
        frame->Release();
    if (decoder)
        decoder->Release();
    factory->Release();
    return ok;
}

// Number of distinct colours, capped: a page that failed to draw has one or two.
size_t DistinctColours(const Image& img, size_t cap)
{
    std::vector<DWORD> seen;
    for (DWORD p : img.pixels) {
        p &= 0xFFFFFF;
        bool known = false;
        for (DWORD s : seen)
            if (s == p) {
                known = true;
                break;
            }
        if (!known) {
            seen.push_back(p);
            if (seen.size() >= cap)
                break;
        }
    }
    return seen.size();
}

class GalleryTest : public testing::Test {
protected:
    void SetUp() override
    {
        CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
        wchar_t tmp[MAX_PATH];
        GetTempPathW(MAX_PATH, tmp);
        m_dir = std::wstring(tmp) + L"kxui-gallery-test-" + std::to_wstring(GetCurrentProcessId());
        CreateDirectoryW(m_dir.c_str(), nullptr);
    }
    void TearDown() override
    {
        WIN32_FIND_DATAW fd;
        HANDLE h = FindFirstFileW((m_dir + L"\\*").c_str(), &fd);
        if (h != INVALID_HANDLE_VALUE) {
            do {
                if (!(fd.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY))
                    DeleteFileW((m_dir + L"\\" + fd.cFileName).c_str());
            } while (FindNextFileW(h, &fd));
            FindClose(h);
        }
        RemoveDirectoryW(m_dir.c_str());
        CoUninitialize();
    }
    std::wstring m_dir;
};

}  // namespace

TEST_F(GalleryTest, SnapshotWritesOneNonBlankPictureOfTheRequestedSizePerPage)
{
    const RunResult run = RunGallery(L"--snapshot \"" + m_dir + L"\" --size 820x540");
    ASSERT_EQ(0u, run.exitCode) << run.output;
    const std::vector<std::string> lines = Lines(run.output);
    ASSERT_GE(lines.size(), 2u) << "one line per page expected:\n" << run.output;
    int index = 1;
    for (const std::string& line : lines) {
        SCOPED_TRACE(line);
        char prefix[8];
        snprintf(prefix, sizeof prefix, "%02d-", index++);
        EXPECT_NE(std::string::npos, line.find(std::string("\\") + prefix)) << "pages are numbered in order";
        EXPECT_EQ(".png", line.substr(line.size() - 4));
        Image img;
        ASSERT_TRUE(LoadPng(std::wstring(line.begin(), line.end()), img));
        EXPECT_EQ(820u, img.width);
        EXPECT_EQ(540u, img.height);
        EXPECT_GE(DistinctColours(img, 16), 8u) << "the page drew little or nothing";
    }
}

TEST_F(GalleryTest, BadArgumentsAreRefusedWithoutAWindow)
{
    const RunResult run = RunGallery(L"--size 10x10 --snapshot \"" + m_dir + L"\"");
    EXPECT_EQ(2u, run.exitCode);
    EXPECT_NE(std::string::npos, run.output.find("--size")) << run.output;
}

TEST_F(GalleryTest, TourVisitsEveryPageAndExitsCleanly)
{
    const RunResult run = RunGallery(L"--tour");
    ASSERT_EQ(0u, run.exitCode) << run.output;
    const std::vector<std::string> lines = Lines(run.output);
    ASSERT_GE(lines.size(), 2u) << run.output;
    for (size_t i = 0; i < lines.size(); ++i)
        EXPECT_EQ(0u, lines[i].find("shown page " + std::to_string(i + 1) + ":")) << lines[i];
}

// Every page, laid out at the usual size and at the frame's smallest, keeps its controls inside
// the page, apart from each other and wide enough for their texts.
TEST_F(GalleryTest, NoPageClipsOverlapsOrLosesAControlAtTheUsualAndTheSmallestSize)
{
    for (const wchar_t* size : {L" --size 900x600", L""}) {
        const RunResult run = RunGallery(std::wstring(L"--check-layout") + size);
        EXPECT_EQ(0u, run.exitCode) << run.output;
        const std::vector<std::string> lines = Lines(run.output);
        ASSERT_FALSE(lines.empty());
        EXPECT_NE(std::string::npos, lines.back().find(", 0 problems")) << run.output;
    }
}

// The smallest window the frame allows is the size the layout check uses by default.
TEST_F(GalleryTest, TheFrameCannotBeMadeSmallerThanItsPagesAreLaidOutFor)
{
    const RunResult run = RunGallery(L"--check-layout --size 400x300");
    const std::vector<std::string> lines = Lines(run.output);
    ASSERT_FALSE(lines.empty()) << run.output;
    EXPECT_NE(std::string::npos, lines.back().find("layout checked at 720x480")) << run.output;
}

namespace {

const wchar_t kTestKey[] = L"Software\\KxUi Gallery test profile";

bool ReadValue(const std::wstring& subkey, const wchar_t* name, std::vector<BYTE>& data, DWORD& type)
{
    HKEY key;
    if (RegOpenKeyExW(HKEY_CURRENT_USER, (std::wstring(kTestKey) + L"\\KxUiGallery\\" + subkey).c_str(), 0,
                      KEY_READ, &key) != ERROR_SUCCESS)
        return false;
    DWORD size = 0;
    LONG rc = RegQueryValueExW(key, name, nullptr, &type, nullptr, &size);
    data.resize(size);
    if (rc == ERROR_SUCCESS && size)
        rc = RegQueryValueExW(key, name, nullptr, &type, data.data(), &size);
    RegCloseKey(key);
    return rc == ERROR_SUCCESS;
}

}  // namespace

TEST_F(GalleryTest, RestartRestoresPlacementPageAndLayoutState)
{
    RegDeleteTreeW(HKEY_CURRENT_USER, kTestKey);
    const std::wstring profile = L"--profile \"KxUi Gallery test profile\" ";

    // First session: the layout page, closed at once; its state and the frame's are saved.
    RunResult first = RunGallery(profile + L"--page 2 --quit");
    ASSERT_EQ(0u, first.exitCode) << first.output;
    ASSERT_EQ(0u, first.output.find("page 2: Layout and splitter;")) << first.output;

    std::vector<BYTE> data;
    DWORD type = 0;
    ASSERT_TRUE(ReadValue(L"Window\\CGalleryFrame", L"WINDOWPLACEMENT", data, type));
    ASSERT_EQ(44u, data.size());
    ASSERT_TRUE(ReadValue(L"Gallery", L"Page", data, type));
    EXPECT_EQ(static_cast<DWORD>(REG_DWORD), type);
    EXPECT_EQ(1u, *reinterpret_cast<DWORD*>(data.data()));
    ASSERT_TRUE(ReadValue(L"Window\\CLayoutSplitArea\\Static_2002", L"SPLITTERPERCENT", data, type));
    EXPECT_EQ(4u, data.size());
    ASSERT_TRUE(ReadValue(L"Window\\CLayoutPage\\CWnd_2005", L"WNDSTATE", data, type));
    EXPECT_EQ((std::vector<BYTE>{0, 0, 0, 0}), data) << "\"Show archived customers\" starts unchecked";

    // Move the stored window as a user would have, then start again without naming a page.
    ASSERT_TRUE(ReadValue(L"Window\\CGalleryFrame", L"WINDOWPLACEMENT", data, type));
    auto* wp = reinterpret_cast<WINDOWPLACEMENT*>(data.data());
    wp->rcNormalPosition = RECT{60, 50, 60 + 760, 50 + 520};
    wp->showCmd = SW_SHOWNORMAL;
    HKEY key;
    ASSERT_EQ(ERROR_SUCCESS, RegOpenKeyExW(HKEY_CURRENT_USER,
                                           (std::wstring(kTestKey) + L"\\KxUiGallery\\Window\\CGalleryFrame").c_str(),
                                           0, KEY_WRITE, &key));
    RegSetValueExW(key, L"WINDOWPLACEMENT", 0, REG_BINARY, data.data(), static_cast<DWORD>(data.size()));
    RegCloseKey(key);
    // ... and as if the user had checked "Show archived customers" and dragged the splitter to
    // 55% (in a 760x520 window the bar goes up to 57%, where the details reach their minimum).
    const std::wstring page = std::wstring(kTestKey) + L"\\KxUiGallery\\Window\\CLayoutPage\\";
    const std::wstring area = std::wstring(kTestKey) + L"\\KxUiGallery\\Window\\CLayoutSplitArea\\";
    const DWORD checked = 1, percent = 55;
    ASSERT_EQ(ERROR_SUCCESS, RegSetKeyValueW(HKEY_CURRENT_USER, (page + L"CWnd_2005").c_str(), L"WNDSTATE",
                                             REG_BINARY, &checked, sizeof checked));
    ASSERT_EQ(ERROR_SUCCESS, RegSetKeyValueW(HKEY_CURRENT_USER, (area + L"Static_2002").c_str(), L"SPLITTERPERCENT",
                                             REG_BINARY, &percent, sizeof percent));

    RunResult second = RunGallery(profile + L"--quit");
    EXPECT_EQ(0u, second.exitCode);
    EXPECT_EQ(0u, second.output.find("page 2: Layout and splitter; window 60,50 760x520")) << second.output;
    // The page came back with that state: closing it again saved the same values.
    ASSERT_TRUE(ReadValue(L"Window\\CLayoutPage\\CWnd_2005", L"WNDSTATE", data, type));
    EXPECT_EQ((std::vector<BYTE>{1, 0, 0, 0}), data);
    ASSERT_TRUE(ReadValue(L"Window\\CLayoutSplitArea\\Static_2002", L"SPLITTERPERCENT", data, type));
    ASSERT_EQ(4u, data.size());
    EXPECT_EQ(55u, *reinterpret_cast<DWORD*>(data.data()));
    RegDeleteTreeW(HKEY_CURRENT_USER, kTestKey);
}

TEST_F(GalleryTest, TypedTextComesBackAfterARestartAndReadOnlyTextIsNotKept)
{
    RegDeleteTreeW(HKEY_CURRENT_USER, kTestKey);
    const std::wstring profile = L"--profile \"KxUi Gallery test profile\" ";

    // The hooks page's edit field is saved when the program closes, empty at first.
    RunResult first = RunGallery(profile + L"--page 1 --quit");
    ASSERT_EQ(0u, first.exitCode) << first.output;
    const std::wstring section = std::wstring(kTestKey) + L"\\KxUiGallery\\Gallery\\hooks";
    HKEY key;
    ASSERT_EQ(ERROR_SUCCESS, RegOpenKeyExW(HKEY_CURRENT_USER, section.c_str(), 0, KEY_READ | KEY_WRITE, &key));
    wchar_t name[64];
    DWORD nameLen = 64;
    ASSERT_EQ(ERROR_SUCCESS, RegEnumValueW(key, 0, name, &nameLen, nullptr, nullptr, nullptr, nullptr));
    EXPECT_EQ(0, wcsncmp(name, L"Field", 5)) << name;
    // As if the user had typed into it before closing.
    const wchar_t typed[] = L"typed before the restart";
    ASSERT_EQ(ERROR_SUCCESS, RegSetValueExW(key, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(typed), sizeof typed));
    RegCloseKey(key);

    // The second session puts the text back into the field, and saves it again when it closes.
    RunResult second = RunGallery(profile + L"--page 1 --quit");
    ASSERT_EQ(0u, second.exitCode) << second.output;
    std::vector<BYTE> data;
    DWORD type = 0;
    ASSERT_TRUE(ReadValue(L"Gallery\\hooks", name, data, type));
    EXPECT_EQ(std::wstring(typed), std::wstring(reinterpret_cast<const wchar_t*>(data.data())));

    // The layout page's details pane shows the chosen customer's notes: a view, not a field.
    RunResult third = RunGallery(profile + L"--page 2 --quit");
    ASSERT_EQ(0u, third.exitCode) << third.output;
    EXPECT_NE(ERROR_SUCCESS, RegOpenKeyExW(HKEY_CURRENT_USER,
                                           (std::wstring(kTestKey) + L"\\KxUiGallery\\Gallery\\layout").c_str(),
                                           0, KEY_READ, &key));
    RegDeleteTreeW(HKEY_CURRENT_USER, kTestKey);
}
