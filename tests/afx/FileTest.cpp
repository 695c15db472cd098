// CFile on real files in a private folder, CMemFile, CStdioFile text and binary modes.
#include "CollTestUtil.h"
#include <stdlib.h>
#include <string>

namespace {

std::string ReadBytes(LPCWSTR path)
{
    std::string out;
    HANDLE h = CreateFileW(path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                           OPEN_EXISTING, 0, nullptr);
    if (h == INVALID_HANDLE_VALUE)
        return "<missing>";
    char buf[4096];
    DWORD n;
    while (ReadFile(h, buf, sizeof(buf), &n, nullptr) && n > 0)
        out.append(buf, n);
    CloseHandle(h);
    return out;
}

} // namespace

TEST(File, ReadWriteSeekAndLengthOnDisk)
{
    KxTempDir dir;
    CString path = dir.Path(L"data.bin");
    {
        CFile f(path, CFile::modeCreate | CFile::modeReadWrite);
        f.Write("hello world", 11);
        EXPECT_EQ(11u, f.GetLength());
        EXPECT_EQ(11u, f.GetPosition());
        EXPECT_EQ(6u, f.Seek(-5, CFile::end));
        char buf[16] = {};
        EXPECT_EQ(5u, f.Read(buf, 16)); // only what is there
        EXPECT_STREQ("world", buf);
        EXPECT_EQ(0u, f.Read(buf, 16));
        f.SeekToBegin();
        f.Write("J", 1);
        f.SetLength(5);
        EXPECT_EQ(5u, f.GetPosition());
        EXPECT_EQ(5u, f.SeekToEnd());
        EXPECT_EQ(CString(L"data.bin"), f.GetFileName());
        EXPECT_EQ(CString(L"data"), f.GetFileTitle());
        EXPECT_EQ(path, f.GetFilePath());
        CFileStatus st;
        ASSERT_TRUE(f.GetStatus(st));
        EXPECT_EQ(5u, st.m_size);
        // Written just now, by the file system's clock and ours (Wine: the same clock).
        EXPECT_LE(std::llabs(st.m_mtime.GetTime() - CTime::GetCurrentTime().GetTime()), 120);
        SYSTEMTIME local;
        ASSERT_TRUE(st.m_mtime.GetAsSystemTime(local));
        EXPECT_EQ(st.m_mtime.GetYear(), local.wYear);
        EXPECT_EQ(st.m_mtime, CTime(local));
        f.Close();
        EXPECT_EQ(CFile::hFileNull, f.m_hFile);
    }
    EXPECT_EQ("Jello", ReadBytes(path));

    // Open without truncation keeps the content; modeCreate alone empties the file.
    {
        CFile f;
        ASSERT_TRUE(f.Open(path, CFile::modeCreate | CFile::modeNoTruncate | CFile::modeWrite));
        f.SeekToEnd();
        f.Write("!", 1);
    }
    EXPECT_EQ("Jello!", ReadBytes(path));
    CFileStatus st;
    ASSERT_TRUE(CFile::GetStatus(path, st));
    EXPECT_EQ(6u, st.m_size);
    EXPECT_EQ(0, st.m_attribute & CFile::directory);
    {
        CFile f(path, CFile::modeCreate | CFile::modeWrite);
    }
    EXPECT_EQ("", ReadBytes(path));

    CString renamed = dir.Path(L"renamed.bin");
    CFile::Rename(path, renamed);
    EXPECT_FALSE(CFile::GetStatus(path, st));
    EXPECT_TRUE(CFile::GetStatus(renamed, st));
    CFile::Remove(renamed);
    EXPECT_FALSE(CFile::GetStatus(renamed, st));
}

TEST(File, FailuresReportTheirCause)
{
    KxTempDir dir;
    CString missing = dir.Path(L"missing.txt");

    CFile f;
    CFileException e;
    EXPECT_FALSE(f.Open(missing, CFile::modeRead, &e));
    EXPECT_EQ(CFileException::fileNotFound, e.m_cause);
    EXPECT_EQ(static_cast<LONG>(ERROR_FILE_NOT_FOUND), e.m_lOsError);
    EXPECT_EQ(CFile::hFileNull, f.m_hFile);
    EXPECT_FALSE(f.Open(L"", CFile::modeRead));

    EXPECT_EQ(KxFileCause(CFileException::fileNotFound),
              KX_EXCEPTION_OF(CFile(missing, CFile::modeRead)));
    EXPECT_EQ(KxFileCause(CFileException::fileNotFound), KX_EXCEPTION_OF(CFile::Remove(missing)));
    EXPECT_EQ(KxFileCause(CFileException::fileNotFound),
              KX_EXCEPTION_OF(CFile::Rename(missing, dir.Path(L"other.txt"))));

    // An exclusive opener keeps others out.
    CString path = dir.Path(L"locked.txt");
    CFile owner(path, CFile::modeCreate | CFile::modeWrite | CFile::shareExclusive);
    CFile second;
    EXPECT_FALSE(second.Open(path, CFile::modeRead | CFile::shareDenyNone, &e));
    EXPECT_EQ(CFileException::sharingViolation, e.m_cause);

    // Reading a write-only file fails with an exception, not a silent zero.
    char c;
    EXPECT_NE("none", KX_EXCEPTION_OF(owner.Read(&c, 1)));
    EXPECT_EQ(KxFileCause(CFileException::badSeek), KX_EXCEPTION_OF(owner.Seek(-1, CFile::begin)));
}

TEST(File, DuplicateSharesThePositionAndLocksExcludeOtherLocks)
{
    KxTempDir dir;
    CString path = dir.Path(L"shared.bin");
    CFile f(path, CFile::modeCreate | CFile::modeReadWrite | CFile::shareDenyNone);
    f.Write("0123456789", 10);
    f.Seek(2, CFile::begin);
    CFile* dup = f.Duplicate();
    char c = 0;
    dup->Read(&c, 1);
    EXPECT_EQ('2', c);
    EXPECT_EQ(3u, f.GetPosition()); // one file object behind both handles
    EXPECT_EQ(path, dup->GetFilePath());
    delete dup; // closes its own handle only
    f.Read(&c, 1);
    EXPECT_EQ('3', c);

    // (Wine does not make plain reads honour the locks, so locks are checked against locks.)
    f.LockRange(4, 2);
    CFile other(path, CFile::modeRead | CFile::shareDenyNone);
    EXPECT_EQ(KxFileCause(CFileException::lockViolation), KX_EXCEPTION_OF(other.LockRange(5, 1)));
    EXPECT_EQ("none", KX_EXCEPTION_OF(other.LockRange(6, 1)));
    f.UnlockRange(4, 2);
    EXPECT_EQ("none", KX_EXCEPTION_OF(other.LockRange(5, 1)));
    EXPECT_NE("none", KX_EXCEPTION_OF(f.UnlockRange(4, 2))); // not locked any more

    CMemFile m;
    EXPECT_EQ("not-supported", KX_EXCEPTION_OF(m.LockRange(0, 1)));
    EXPECT_EQ("not-supported", KX_EXCEPTION_OF(delete m.Duplicate()));
}

TEST(MemFile, GrowsOnWriteAndReadsWhatThereIs)
{
    CMemFile f(16);
    for (int i = 0; i < 100; ++i)
        f.Write(&i, sizeof(i));
    EXPECT_EQ(400u, f.GetLength());
    f.SeekToBegin();
    int v = -1;
    f.Seek(99 * sizeof(int), CFile::begin);
    EXPECT_EQ(sizeof(int), f.Read(&v, sizeof(v)));
    EXPECT_EQ(99, v);
    char buf[8];
    EXPECT_EQ(0u, f.Read(buf, 8));
    f.Seek(-2, CFile::end);
    EXPECT_EQ(2u, f.Read(buf, 8));

    EXPECT_EQ(KxFileCause(CFileException::badSeek), KX_EXCEPTION_OF(f.Seek(-401, CFile::end)));
    EXPECT_EQ(400u, f.GetPosition()); // unchanged by the failed seek

    // A write after a seek past the end leaves zeros in the gap.
    f.SetLength(4);
    f.Seek(8, CFile::begin);
    f.Write("x", 1);
    EXPECT_EQ(9u, f.GetLength());
    BYTE* p = f.Detach();
    ASSERT_NE(nullptr, p);
    EXPECT_EQ(0, memcmp(p, "\0\0\0\0\0\0\0\0x", 9));
    free(p);
    EXPECT_EQ(0u, f.GetLength());

    // A block written from within itself while it grows.
    CMemFile g(4);
    g.Write("abcd", 4);
    BYTE* self = g.Detach();
    g.Attach(self, 4, 4);
    g.Write("abcd", 4);
    g.Write(self, 4); // 'self' lies inside the block that grows here
    BYTE* q = g.Detach();
    EXPECT_EQ(0, memcmp(q, "abcdabcd", 8));
    free(q);
}

TEST(MemFile, AttachedBuffers)
{
    // Grow step 0: the buffer's bytes are the file, and it cannot grow.
    BYTE fixed[6] = {'a', 'b', 'c', 'd', 'e', 'f'};
    CMemFile f(fixed, sizeof(fixed));
    EXPECT_EQ(6u, f.GetLength());
    char buf[4] = {};
    EXPECT_EQ(3u, f.Read(buf, 3));
    EXPECT_STREQ("abc", buf);
    f.Write("XY", 2);
    EXPECT_EQ(0, memcmp(fixed, "abcXYf", 6));
    EXPECT_EQ("memory", KX_EXCEPTION_OF(f.Write("12", 2)));
    EXPECT_EQ(fixed, f.Detach()); // never freed by the file

    // A grow step: the content is ignored and the block is reallocated as needed.
    BYTE* block = static_cast<BYTE*>(malloc(4));
    memcpy(block, "zzzz", 4);
    CMemFile g;
    g.Attach(block, 4, 8);
    EXPECT_EQ(0u, g.GetLength());
    g.Write("0123456789", 10);
    EXPECT_EQ(10u, g.GetLength());
    BYTE* grown = g.Detach();
    EXPECT_EQ(0, memcmp(grown, "0123456789", 10));
    free(grown);
    EXPECT_EQ("invalid-arg", KX_EXCEPTION_OF(g.Attach(nullptr, 5)));
}

TEST(StdioFile, TextModeWritesCrLfAndReadsLines)
{
    KxTempDir dir;
    CString path = dir.Path(L"lines.txt");
    {
        CStdioFile f(path, CFile::modeCreate | CFile::modeWrite | CFile::typeText);
        f.WriteString(L"first\tline\n");
        f.WriteString(L"\n");
        f.WriteString(L"third");
    }
    EXPECT_EQ("first\tline\r\n\r\nthird", ReadBytes(path));

    CStdioFile f(path, CFile::modeRead | CFile::typeText);
    CString line;
    ASSERT_TRUE(f.ReadString(line));
    EXPECT_EQ(CString(L"first\tline"), line);
    ASSERT_TRUE(f.ReadString(line)); // the empty line still counts as a line
    EXPECT_TRUE(line.IsEmpty());
    ASSERT_TRUE(f.ReadString(line));
    EXPECT_EQ(CString(L"third"), line);
    EXPECT_FALSE(f.ReadString(line));
    EXPECT_TRUE(line.IsEmpty());

    // The buffer form keeps the newline and stops at nMax - 1 characters.
    f.SeekToBegin();
    wchar_t buf[8];
    ASSERT_NE(nullptr, f.ReadString(buf, 6));
    EXPECT_STREQ(L"first", buf);
    ASSERT_NE(nullptr, f.ReadString(buf, 8));
    EXPECT_STREQ(L"\tline\n", buf);
    f.Close();

    // Characters of the ANSI code page survive the round trip.
    wchar_t accented[] = L"caf\u00e9";
    BOOL lossy = FALSE;
    char narrow[16];
    WideCharToMultiByte(CP_ACP, 0, accented, -1, narrow, sizeof(narrow), nullptr, &lossy);
    if (!lossy) {
        {
            CStdioFile w(path, CFile::modeCreate | CFile::modeWrite);
            w.WriteString(accented);
        }
        CStdioFile r(path, CFile::modeRead);
        ASSERT_TRUE(r.ReadString(line));
        EXPECT_EQ(CString(accented), line);
    }
}

TEST(StdioFile, BinaryModeMovesUtf16Unchanged)
{
    KxTempDir dir;
    CString path = dir.Path(L"wide.bin");
    {
        CStdioFile f(path, CFile::modeCreate | CFile::modeWrite | CFile::typeBinary);
        f.WriteString(L"\u4e2d\u6587\n");
        f.WriteString(L"x");
        EXPECT_EQ(8u, f.GetLength());
    }
    EXPECT_EQ(std::string("\x2d\x4e\x87\x65\n\0x\0", 8), ReadBytes(path));
    CStdioFile f(path, CFile::modeRead | CFile::typeBinary);
    CString line;
    ASSERT_TRUE(f.ReadString(line));
    EXPECT_EQ(CString(L"\u4e2d\u6587"), line);
    ASSERT_TRUE(f.ReadString(line));
    EXPECT_EQ(CString(L"x"), line);
    EXPECT_FALSE(f.ReadString(line));
    EXPECT_EQ(KxFileCause(CFileException::fileNotFound),
              KX_EXCEPTION_OF(CStdioFile(dir.Path(L"none.txt"), CFile::modeRead)));
}
