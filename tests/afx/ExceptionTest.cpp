// Exceptions: types thrown by the framework, their texts, the TRY/CATCH macros, and the
// diagnostic macros of a release build.

namespace {

// An exception that counts its destructions, to see who deletes it.
class CCountedException : public CException {
public:
    static int s_destroyed;
    ~CCountedException() override { ++s_destroyed; }
};
int CCountedException::s_destroyed = 0;

// Runs f, which must throw a CException*; returns it (the caller deletes it).
template <class F>
CException* Caught(F f)
{
    try {
        f();
    } catch (CException* e) {
        return e;
    }
    return nullptr;
}

CString Message(const CException* e, UINT nMax = 256)
{
    CString s;
    e->GetErrorMessage(s.GetBuffer(nMax), nMax);
    s.ReleaseBuffer();
    return s;
}

}  // namespace

TEST(Exception, EachThrowFunctionThrowsItsType)
{
    struct Case {
        void (*thrower)();
        CRuntimeClass* cls;
    } cases[] = {
        {[] { AfxThrowInvalidArgException(); }, RUNTIME_CLASS(CInvalidArgException)},
        {[] { AfxThrowNotSupportedException(); }, RUNTIME_CLASS(CNotSupportedException)},
        {[] { AfxThrowMemoryException(); }, RUNTIME_CLASS(CMemoryException)},
        {[] { AfxThrowFileException(CFileException::diskFull, ERROR_DISK_FULL, L"d.bin"); },
         RUNTIME_CLASS(CFileException)},
        {[] { AfxThrowArchiveException(CArchiveException::badSchema, L"a.dat"); }, RUNTIME_CLASS(CArchiveException)},
    };
    for (const Case& c : cases) {
        CException* e = Caught(c.thrower);
        ASSERT_NE(nullptr, e);
        EXPECT_EQ(c.cls, e->GetRuntimeClass()) << c.cls->m_lpszClassName;
        EXPECT_TRUE(e->IsKindOf(RUNTIME_CLASS(CException)));
        if (auto* f = DYNAMIC_DOWNCAST(CFileException, e)) {
            EXPECT_EQ(CFileException::diskFull, f->m_cause);
            EXPECT_EQ(ERROR_DISK_FULL, f->m_lOsError);
            EXPECT_STREQ(L"d.bin", f->m_strFileName);
        }
        if (auto* a = DYNAMIC_DOWNCAST(CArchiveException, e)) {
            EXPECT_EQ(CArchiveException::badSchema, a->m_cause);
            EXPECT_STREQ(L"a.dat", a->m_strFileName);
        }
        e->Delete();
    }
}

TEST(Exception, OutOfMemoryThrowsOnePreallocatedObject)
{
    CException* first = Caught([] { AfxThrowMemoryException(); });
    CException* second = Caught([] { AfxThrowMemoryException(); });
    EXPECT_EQ(first, second);
    EXPECT_FALSE(first->m_bAutoDelete);
    first->Delete();  // not auto-delete: stays usable
    second->Delete();
    EXPECT_STREQ(L"Out of memory.", Message(first));
}

TEST(Exception, MessagesNameTheFileAndFitTheBuffer)
{
    CFileException notFound(CFileException::fileNotFound, ERROR_FILE_NOT_FOUND, L"C:\\data\\x.txt");
    EXPECT_STREQ(L"C:\\data\\x.txt was not found.", Message(&notFound));
    CFileException unnamed(CFileException::accessDenied);
    EXPECT_STREQ(L"Access to an unnamed file was denied.", Message(&unnamed));
    CFileException odd(999);
    EXPECT_STREQ(L"An unknown error occurred while accessing an unnamed file.", Message(&odd));
    CArchiveException arch(CArchiveException::endOfFile, L"doc.kx");
    EXPECT_STREQ(L"An attempt was made to read past the end of doc.kx.", Message(&arch));
    CInvalidArgException arg;
    EXPECT_STREQ(L"Encountered an improper argument.", Message(&arg));

    // Truncated to the buffer, always terminated; help context cleared.
    wchar_t buf[6];
    UINT help = 77;
    EXPECT_TRUE(notFound.GetErrorMessage(buf, 6, &help));
    EXPECT_STREQ(L"C:\\da", buf);
    EXPECT_EQ(0u, help);
    EXPECT_FALSE(notFound.GetErrorMessage(nullptr, 10));

    // An exception without a text says so and leaves an empty string.
    CCountedException plain;
    buf[0] = L'x';
    EXPECT_FALSE(plain.GetErrorMessage(buf, 6));
    EXPECT_STREQ(L"", buf);
    // The non-const overload (older overrides) gives the same text.
    CException& nonConst = notFound;
    EXPECT_TRUE(nonConst.GetErrorMessage(buf, 6));
    EXPECT_STREQ(L"C:\\da", buf);
}

TEST(Exception, SystemErrorsMapToFileCauses)
{
    EXPECT_EQ(CFileException::none, CFileException::OsErrorToException(NO_ERROR));
    EXPECT_EQ(CFileException::fileNotFound, CFileException::OsErrorToException(ERROR_FILE_NOT_FOUND));
    EXPECT_EQ(CFileException::badPath, CFileException::OsErrorToException(ERROR_PATH_NOT_FOUND));
    EXPECT_EQ(CFileException::accessDenied, CFileException::OsErrorToException(ERROR_ACCESS_DENIED));
    EXPECT_EQ(CFileException::sharingViolation, CFileException::OsErrorToException(ERROR_SHARING_VIOLATION));
    EXPECT_EQ(CFileException::lockViolation, CFileException::OsErrorToException(ERROR_LOCK_VIOLATION));
    EXPECT_EQ(CFileException::diskFull, CFileException::OsErrorToException(ERROR_DISK_FULL));
    EXPECT_EQ(CFileException::endOfFile, CFileException::OsErrorToException(ERROR_HANDLE_EOF));
    EXPECT_EQ(CFileException::genericException, CFileException::OsErrorToException(123456));
    EXPECT_EQ(CFileException::fileNotFound, CFileException::ErrnoToException(ENOENT));
    EXPECT_EQ(CFileException::accessDenied, CFileException::ErrnoToException(EACCES));

    // What the platform reports for a missing file becomes fileNotFound.
    LPCWSTR path = L"C:\\kxui-no-such-dir\\missing.txt";
    HANDLE h = CreateFileW(L"C:\\windows\\kxui-missing.txt", GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_EQ(INVALID_HANDLE_VALUE, h);
    CException* e = Caught([&] { CFileException::ThrowOsError(static_cast<LONG>(GetLastError()), L"missing.txt"); });
    auto* f = DYNAMIC_DOWNCAST(CFileException, e);
    ASSERT_NE(nullptr, f);
    EXPECT_EQ(CFileException::fileNotFound, f->m_cause);
    EXPECT_EQ(ERROR_FILE_NOT_FOUND, f->m_lOsError);
    e->Delete();
    h = CreateFileW(path, GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_EQ(INVALID_HANDLE_VALUE, h);
    EXPECT_EQ(CFileException::badPath, CFileException::OsErrorToException(static_cast<LONG>(GetLastError())));
}

TEST(Exception, CatchMacrosDeleteTheExceptionUnlessRethrown)
{
    CCountedException::s_destroyed = 0;
    bool caught = false;
    TRY {
        throw new CCountedException;
    }
    CATCH(CCountedException, e) {
        caught = e != nullptr;
    }
    END_CATCH
    EXPECT_TRUE(caught);
    EXPECT_EQ(1, CCountedException::s_destroyed);

    // The first matching handler runs.
    int cause = -1;
    TRY {
        AfxThrowFileException(CFileException::badSeek);
    }
    CATCH(CMemoryException, e) {
        cause = -2;
    }
    AND_CATCH(CFileException, e) {
        cause = e->m_cause;
    }
    AND_CATCH(CException, e) {
        cause = -3;
    }
    END_CATCH
    EXPECT_EQ(CFileException::badSeek, cause);

    // THROW_LAST passes the same object on, alive.
    CCountedException::s_destroyed = 0;
    CException* thrown = nullptr;
    CException* outer = nullptr;
    try {
        TRY {
            THROW(thrown = new CCountedException);
        }
        CATCH_ALL(e) {
            THROW_LAST();
        }
        END_CATCH_ALL
    } catch (CException* e) {
        outer = e;
    }
    EXPECT_EQ(thrown, outer);
    EXPECT_EQ(0, CCountedException::s_destroyed);
    outer->Delete();
    EXPECT_EQ(1, CCountedException::s_destroyed);

    // END_TRY swallows and deletes.
    TRY {
        throw new CCountedException;
    }
    END_TRY
    EXPECT_EQ(2, CCountedException::s_destroyed);
}

#ifndef _DEBUG
TEST(Exception, ReleaseBuildDropsAssertionsButKeepsVerify)
{
    int evaluated = 0;
    ASSERT(++evaluated == 1);
    ASSERT_VALID(reinterpret_cast<CObject*>(++evaluated));
    TRACE(L"%s %d\n", CString(L"x"), ++evaluated);
    EXPECT_EQ(0, evaluated);
    VERIFY(++evaluated == 1);
    EXPECT_EQ(1, evaluated);
}
#endif
