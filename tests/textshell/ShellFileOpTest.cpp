// Shell file operations: the exact list layout, and real copies, moves, renames and deletes
// in a temporary folder that each test removes.
#include "KxUiShellFileOp.h"
#include <string>

namespace {

const WORD quiet = FOF_NOCONFIRMATION | FOF_NOERRORUI | FOF_SILENT | FOF_NOCONFIRMMKDIR;

// The characters of a list up to and including its closing double NUL.
std::wstring listOf(LPCWSTR list)
{
    if (!list)
        return L"<null>";
    const wchar_t* p = list;
    while (p[0] || p[1])
        ++p;
    return std::wstring(list, p + 2);
}

// A unique folder under the temporary directory, removed with everything in it.
class TempFolder {
public:
    TempFolder()
    {
        wchar_t base[MAX_PATH];
        ::GetTempPathW(MAX_PATH, base);
        wchar_t name[MAX_PATH];
        swprintf_s(name, L"%skxfileop%lu_%lu", base, ::GetCurrentProcessId(), ::GetTickCount());
        m_path = name;
        ::CreateDirectoryW(m_path.c_str(), nullptr);
    }
    ~TempFolder() { removeTree(m_path); }

    std::wstring path(const std::wstring& relative) const { return m_path + L"\\" + relative; }

    void write(const std::wstring& relative, const char* content) const
    {
        HANDLE file = ::CreateFileW(path(relative).c_str(), GENERIC_WRITE, 0, nullptr,
                                    CREATE_ALWAYS, 0, nullptr);
        ASSERT_NE(INVALID_HANDLE_VALUE, file);
        DWORD written = 0;
        ::WriteFile(file, content, DWORD(strlen(content)), &written, nullptr);
        ::CloseHandle(file);
    }

    std::string read(const std::wstring& relative) const
    {
        HANDLE file = ::CreateFileW(path(relative).c_str(), GENERIC_READ, FILE_SHARE_READ,
                                    nullptr, OPEN_EXISTING, 0, nullptr);
        if (file == INVALID_HANDLE_VALUE)
            return "<missing>";
        char buffer[256];
        DWORD got = 0;
        ::ReadFile(file, buffer, sizeof buffer, &got, nullptr);
        ::CloseHandle(file);
        return std::string(buffer, got);
    }

    bool exists(const std::wstring& relative) const
    {
        return ::GetFileAttributesW(path(relative).c_str()) != INVALID_FILE_ATTRIBUTES;
    }

    void mkdir(const std::wstring& relative) const
    {
        ::CreateDirectoryW(path(relative).c_str(), nullptr);
    }

private:
    static void removeTree(const std::wstring& dir)
    {
        WIN32_FIND_DATAW found;
        HANDLE find = ::FindFirstFileW((dir + L"\\*").c_str(), &found);
        if (find != INVALID_HANDLE_VALUE) {
            do {
                const std::wstring name = found.cFileName;
                if (name == L"." || name == L"..")
                    continue;
                const std::wstring full = dir + L"\\" + name;
                if (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY)
                    removeTree(full);
                else
                    ::DeleteFileW(full.c_str());
            } while (::FindNextFileW(find, &found));
            ::FindClose(find);
        }
        ::RemoveDirectoryW(dir.c_str());
    }

    std::wstring m_path;
};

TEST(ShellFileOpLists, KeepTheDoubleNulLayout)
{
    KxUiShellFileOp op;
    EXPECT_EQ(nullptr, op.getFrom());
    EXPECT_EQ(nullptr, op.getTo());
    ASSERT_TRUE(op.AddFile(0, L"a"));
    EXPECT_EQ(std::wstring(L"a\0\0", 3), listOf(op.getFrom()));
    ASSERT_TRUE(op.AddFile(0, L"bc"));
    EXPECT_EQ(std::wstring(L"a\0bc\0\0", 6), listOf(op.getFrom()));
    ASSERT_TRUE(op.AddFile(1, L"x:\\y"));
    EXPECT_EQ(std::wstring(L"x:\\y\0\0", 6), listOf(op.getTo()));

    // Clearing one list leaves the other as it was; the cleared list starts afresh.
    op.ClearFiles(1);
    EXPECT_EQ(nullptr, op.getTo());
    EXPECT_EQ(std::wstring(L"a\0bc\0\0", 6), listOf(op.getFrom()));
    ASSERT_TRUE(op.AddFile(1, L"z"));
    EXPECT_EQ(std::wstring(L"z\0\0", 3), listOf(op.getTo()));

    // There are two lists only.
    EXPECT_FALSE(op.AddFile(2, L"q"));
    EXPECT_FALSE(op.AddFile(-1, L"q"));
    op.ClearFiles(7);
    EXPECT_EQ(std::wstring(L"a\0bc\0\0", 6), listOf(op.getFrom()));
}

TEST(ShellFileOpLists, GrowWithoutLosingNames)
{
    KxUiShellFileOp op;
    op.SetMaxCount(0, 3);
    ASSERT_NE(nullptr, op.getFrom());
    EXPECT_EQ(0, op.getFrom()[0]);
    std::wstring expected;
    for (int n = 0; n < 500; ++n) {
        const std::wstring name = L"C:\\folder\\file" + std::to_wstring(n) + L".txt";
        ASSERT_TRUE(op.AddFile(0, name.c_str()));
        expected += name;
        expected += L'\0';
    }
    expected += L'\0';
    EXPECT_EQ(expected, listOf(op.getFrom()));

    // Reserving less than the names already held keeps them; more keeps them too.
    op.SetMaxCount(0, 5);
    EXPECT_EQ(expected, listOf(op.getFrom()));
    op.SetMaxCount(0, 100000);
    EXPECT_EQ(expected, listOf(op.getFrom()));
    ASSERT_TRUE(op.AddFile(0, L"last"));
    expected.insert(expected.size() - 1, std::wstring(L"last\0", 5));
    EXPECT_EQ(expected, listOf(op.getFrom()));
}

TEST(ShellFileOpLists, CopiesAreIndependent)
{
    KxUiShellFileOp op;
    op.AddFile(0, L"a");
    op.AddFile(1, L"b");
    op.SetFlags(FOF_SILENT);
    KxUiShellFileOp copy(op);
    op.AddFile(0, L"c");
    op.ClearFiles(1);
    EXPECT_EQ(std::wstring(L"a\0\0", 3), listOf(copy.getFrom()));
    EXPECT_EQ(std::wstring(L"b\0\0", 3), listOf(copy.getTo()));
    EXPECT_EQ(WORD(FOF_SILENT), copy.GetFlags());

    KxUiShellFileOp assigned;
    assigned.AddFile(1, L"old");
    assigned = op;
    EXPECT_EQ(std::wstring(L"a\0c\0\0", 5), listOf(assigned.getFrom()));
    EXPECT_EQ(nullptr, assigned.getTo());
}

TEST(ShellFileOpRun, CopiesSeveralFilesInOneCall)
{
    TempFolder dir;
    dir.write(L"a.txt", "alpha");
    dir.write(L"b.txt", "beta");
    dir.write(L"c.txt", "gamma");
    dir.mkdir(L"out");
    KxUiShellFileOp op;
    for (LPCWSTR name : {L"a.txt", L"b.txt", L"c.txt"})
        op.AddFile(0, dir.path(name).c_str());
    op.AddFile(1, dir.path(L"out").c_str());
    op.SetFlags(quiet);
    EXPECT_EQ(0, op.CopyFiles());
    EXPECT_FALSE(op.AnyOperationsAborted());
    EXPECT_EQ("alpha", dir.read(L"out\\a.txt"));
    EXPECT_EQ("beta", dir.read(L"out\\b.txt"));
    EXPECT_EQ("gamma", dir.read(L"out\\c.txt"));
    EXPECT_EQ("alpha", dir.read(L"a.txt"));
}

TEST(ShellFileOpRun, MovesRenamesAndDeletes)
{
    TempFolder dir;
    dir.write(L"a.txt", "alpha");
    dir.write(L"b.txt", "beta");
    dir.mkdir(L"dest");

    // Several files moved in one call, each to its own destination name.
    KxUiShellFileOp move;
    move.AddFile(0, dir.path(L"a.txt").c_str());
    move.AddFile(0, dir.path(L"b.txt").c_str());
    move.AddFile(1, dir.path(L"dest\\a.txt").c_str());
    move.AddFile(1, dir.path(L"dest\\b2.txt").c_str());
    move.SetFlags(quiet | FOF_MULTIDESTFILES);
    EXPECT_EQ(0, move.MoveFiles());
    EXPECT_FALSE(dir.exists(L"a.txt"));
    EXPECT_FALSE(dir.exists(L"b.txt"));
    EXPECT_EQ("alpha", dir.read(L"dest\\a.txt"));
    EXPECT_EQ("beta", dir.read(L"dest\\b2.txt"));

    // The shell renames one file per call.
    KxUiShellFileOp rename;
    rename.AddFile(0, dir.path(L"dest\\a.txt").c_str());
    rename.AddFile(1, dir.path(L"dest\\renamed.txt").c_str());
    rename.SetFlags(quiet);
    EXPECT_EQ(0, rename.RenameFiles());
    EXPECT_FALSE(dir.exists(L"dest\\a.txt"));
    EXPECT_EQ("alpha", dir.read(L"dest\\renamed.txt"));

    // Several files deleted in one call.
    KxUiShellFileOp remove;
    remove.AddFile(0, dir.path(L"dest\\renamed.txt").c_str());
    remove.AddFile(0, dir.path(L"dest\\b2.txt").c_str());
    remove.SetFlags(quiet);
    EXPECT_EQ(0, remove.DeleteFiles());
    EXPECT_FALSE(dir.exists(L"dest\\renamed.txt"));
    EXPECT_FALSE(dir.exists(L"dest\\b2.txt"));
    EXPECT_TRUE(dir.exists(L"dest"));

    // A missing source is an error, not a silent success.
    EXPECT_NE(0, remove.DeleteFiles());
}

TEST(ShellFileOpRun, ConvenienceConstructorRunsTheGivenOperationOnly)
{
    TempFolder dir;
    dir.write(L"a.txt", "alpha");
    const CString from = dir.path(L"a.txt").c_str();
    const CString to = dir.path(L"b.txt").c_str();
    for (UINT code : {0u, 5u}) {
        KxUiShellFileOp idle(nullptr, code, from, to, quiet, L"$$Copying");
        EXPECT_EQ(std::wstring(from) + L'\0' + L'\0', listOf(idle.getFrom())) << code;
        EXPECT_EQ(WORD(quiet), idle.GetFlags());
        EXPECT_FALSE(dir.exists(L"b.txt")) << code;
        EXPECT_TRUE(dir.exists(L"a.txt")) << code;
    }
    KxUiShellFileOp copy(nullptr, FO_COPY, from, to, quiet, L"");
    EXPECT_EQ("alpha", dir.read(L"b.txt"));
    KxUiShellFileOp remove(nullptr, FO_DELETE, to, L"", quiet, L"");
    EXPECT_FALSE(dir.exists(L"b.txt"));
    KxUiShellFileOp move(nullptr, FO_MOVE, from, to, quiet, L"");
    EXPECT_FALSE(dir.exists(L"a.txt"));
    EXPECT_EQ("alpha", dir.read(L"b.txt"));
    KxUiShellFileOp rename(nullptr, FO_RENAME, to, dir.path(L"c.txt").c_str(), quiet, L"");
    EXPECT_EQ("alpha", dir.read(L"c.txt"));
}

} // namespace
