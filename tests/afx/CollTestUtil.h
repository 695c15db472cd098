// Helpers of the collection, file and archive tests.
#pragma once
#include <afxcoll.h>
#include <string>

// Runs the statement and reports which framework exception it raised (deleted here):
// "invalid-arg", "memory", "not-supported", "file:<cause>", "archive:<cause>", "other", or "none".
#define KX_EXCEPTION_OF(stmt)                                                                       \
    ([&]() -> std::string {                                                                        \
        try {                                                                                      \
            stmt;                                                                                  \
        } catch (CException* e_) {                                                                 \
            std::string kind_ = KxTestDescribe(e_);                                                \
            e_->Delete();                                                                          \
            return kind_;                                                                          \
        }                                                                                          \
        return "none";                                                                             \
    }())

inline std::string KxTestDescribe(CException* e)
{
    if (dynamic_cast<CInvalidArgException*>(e))
        return "invalid-arg";
    if (dynamic_cast<CMemoryException*>(e))
        return "memory";
    if (dynamic_cast<CNotSupportedException*>(e))
        return "not-supported";
    if (auto* f = dynamic_cast<CFileException*>(e))
        return "file:" + std::to_string(f->m_cause);
    if (auto* a = dynamic_cast<CArchiveException*>(e))
        return "archive:" + std::to_string(a->m_cause);
    return "other";
}

inline std::string KxArchiveCause(int cause)
{
    return "archive:" + std::to_string(cause);
}

inline std::string KxFileCause(int cause)
{
    return "file:" + std::to_string(cause);
}

// Counts live instances; the virtual destructor makes it a polymorphic, non-trivial element.
struct KxCounted {
    static inline int constructed = 0;
    static inline int destroyed = 0;
    static void Reset() { constructed = destroyed = 0; }
    static int Live() { return constructed - destroyed; }

    int value;
    KxCounted() : value(0) { ++constructed; }
    KxCounted(int v) : value(v) { ++constructed; }
    KxCounted(const KxCounted& o) : value(o.value) { ++constructed; }
    KxCounted& operator=(const KxCounted& o)
    {
        value = o.value;
        return *this;
    }
    virtual ~KxCounted()
    {
        value = -999;
        ++destroyed;
    }
    bool operator==(const KxCounted& o) const { return value == o.value; }
};

// A private temporary folder, removed with everything in it when the test ends.
class KxTempDir {
public:
    KxTempDir()
    {
        wchar_t base[MAX_PATH];
        GetTempPathW(MAX_PATH, base);
        static int counter = 0;
        m_path.Format(L"%skxafx_%lu_%d", base, GetCurrentProcessId(), ++counter);
        CreateDirectoryW(m_path, nullptr);
    }
    ~KxTempDir() { RemoveTree(m_path); }
    CString Path(LPCWSTR name) const { return m_path + L"\\" + name; }
    const CString& Root() const { return m_path; }

private:
    static void RemoveTree(const CString& dir)
    {
        WIN32_FIND_DATAW fd;
        HANDLE h = FindFirstFileW(dir + L"\\*", &fd);
        if (h != INVALID_HANDLE_VALUE) {
            do {
                CString name = fd.cFileName;
                if (name == L"." || name == L"..")
                    continue;
                CString full = dir + L"\\" + name;
                if (fd.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY)
                    RemoveTree(full);
                else {
                    SetFileAttributesW(full, FILE_ATTRIBUTE_NORMAL);
                    DeleteFileW(full);
                }
            } while (FindNextFileW(h, &fd));
            FindClose(h);
        }
        RemoveDirectoryW(dir);
    }
    CString m_path;
};
