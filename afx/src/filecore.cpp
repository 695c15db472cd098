// CTime and CFile: file times and files on disk through their Win32 handles.
#include "afx.h"
#include <time.h>

// ---------------------------------------------------------------------------------------------
// CTime

namespace {

// 100-ns intervals between 1601-01-01 (FILETIME) and 1970-01-01 (time_t).
const ULONGLONG kFileTimeEpoch = 116444736000000000ULL;

bool LocalTm(__time64_t t, struct tm& out)
{
    return _localtime64_s(&out, &t) == 0;
}

} // namespace

CTime WINAPI CTime::GetCurrentTime()
{
    return CTime(_time64(nullptr));
}

CTime::CTime(int nYear, int nMonth, int nDay, int nHour, int nMin, int nSec, int nDST)
{
    struct tm t = {};
    t.tm_year = nYear - 1900;
    t.tm_mon = nMonth - 1;
    t.tm_mday = nDay;
    t.tm_hour = nHour;
    t.tm_min = nMin;
    t.tm_sec = nSec;
    t.tm_isdst = nDST;
    m_time = _mktime64(&t);
    if (m_time == -1)
        AfxThrowInvalidArgException();
}

CTime::CTime(const SYSTEMTIME& st, int nDST)
{
    // Dates before 1900 cannot be represented; they become the epoch.
    if (st.wYear >= 1900)
        *this = CTime(st.wYear, st.wMonth, st.wDay, st.wHour, st.wMinute, st.wSecond, nDST);
}

CTime::CTime(const FILETIME& ft, int /*nDST*/)
{
    ULONGLONG v = (static_cast<ULONGLONG>(ft.dwHighDateTime) << 32) | ft.dwLowDateTime;
    m_time = v > kFileTimeEpoch ? static_cast<__time64_t>((v - kFileTimeEpoch) / 10000000ULL) : 0;
}

bool CTime::GetAsSystemTime(SYSTEMTIME& st) const
{
    struct tm t;
    if (!LocalTm(m_time, t))
        return false;
    st = SYSTEMTIME{};
    st.wYear = static_cast<WORD>(t.tm_year + 1900);
    st.wMonth = static_cast<WORD>(t.tm_mon + 1);
    st.wDayOfWeek = static_cast<WORD>(t.tm_wday);
    st.wDay = static_cast<WORD>(t.tm_mday);
    st.wHour = static_cast<WORD>(t.tm_hour);
    st.wMinute = static_cast<WORD>(t.tm_min);
    st.wSecond = static_cast<WORD>(t.tm_sec);
    return true;
}

#define KXAFX_TIME_FIELD(name, expr)                                                                \
    int CTime::name() const                                                                        \
    {                                                                                              \
        struct tm t;                                                                               \
        return LocalTm(m_time, t) ? (expr) : -1;                                                   \
    }
KXAFX_TIME_FIELD(GetYear, t.tm_year + 1900)
KXAFX_TIME_FIELD(GetMonth, t.tm_mon + 1)
KXAFX_TIME_FIELD(GetDay, t.tm_mday)
KXAFX_TIME_FIELD(GetHour, t.tm_hour)
KXAFX_TIME_FIELD(GetMinute, t.tm_min)
KXAFX_TIME_FIELD(GetSecond, t.tm_sec)
KXAFX_TIME_FIELD(GetDayOfWeek, t.tm_wday + 1)
#undef KXAFX_TIME_FIELD

// ---------------------------------------------------------------------------------------------
// CFile

IMPLEMENT_DYNAMIC(CFile, CObject)

const HANDLE CFile::hFileNull = INVALID_HANDLE_VALUE;

namespace {

[[noreturn]] void ThrowLastError(const CString& strFileName)
{
    CFileException::ThrowOsError(static_cast<LONG>(::GetLastError()), strFileName);
}

CString FullPath(LPCTSTR lpszFileName)
{
    DWORD n = ::GetFullPathNameW(lpszFileName, 0, nullptr, nullptr);
    if (n == 0)
        return CString(lpszFileName);
    CString str;
    DWORD len = ::GetFullPathNameW(lpszFileName, n, str.GetBuffer(static_cast<int>(n)), nullptr);
    str.ReleaseBuffer(len < n ? static_cast<int>(len) : 0);
    return str.IsEmpty() ? CString(lpszFileName) : str;
}

void FillStatus(CFileStatus& rStatus, const FILETIME& ctime, const FILETIME& atime,
                const FILETIME& mtime, DWORD nSizeHigh, DWORD nSizeLow, DWORD dwAttributes)
{
    rStatus.m_ctime = CTime(ctime);
    rStatus.m_atime = CTime(atime);
    rStatus.m_mtime = CTime(mtime);
    if (rStatus.m_ctime.GetTime() == 0)
        rStatus.m_ctime = rStatus.m_mtime;
    if (rStatus.m_atime.GetTime() == 0)
        rStatus.m_atime = rStatus.m_mtime;
    rStatus.m_size = (static_cast<ULONGLONG>(nSizeHigh) << 32) | nSizeLow;
    rStatus.m_attribute = static_cast<BYTE>(dwAttributes & 0xFF);
}

} // namespace

CFile::CFile() : m_hFile(hFileNull), m_bCloseOnDelete(FALSE) {}

CFile::CFile(HANDLE hFile) : m_hFile(hFile), m_bCloseOnDelete(FALSE) {}

CFile::CFile(LPCTSTR lpszFileName, UINT nOpenFlags) : m_hFile(hFileNull), m_bCloseOnDelete(FALSE)
{
    CFileException e;
    if (!Open(lpszFileName, nOpenFlags, &e))
        AfxThrowFileException(e.m_cause, e.m_lOsError, e.m_strFileName);
}

CFile::~CFile()
{
    if (m_hFile != hFileNull && m_bCloseOnDelete) {
        try {
            Close();
        } catch (CException* e) {
            e->Delete();
        }
    }
}

BOOL CFile::Open(LPCTSTR lpszFileName, UINT nOpenFlags, CFileException* pException)
{
    auto fail = [&](int cause, LONG lOsError) {
        if (pException != nullptr) {
            pException->m_cause = cause;
            pException->m_lOsError = lOsError;
            pException->m_strFileName = lpszFileName;
        }
        return FALSE;
    };
    if (lpszFileName == nullptr || *lpszFileName == 0)
        return fail(CFileException::badPath, ERROR_INVALID_NAME);
    if (m_hFile != hFileNull)
        return fail(CFileException::genericException, ERROR_ALREADY_EXISTS);

    DWORD dwAccess;
    switch (nOpenFlags & 3) {
    case modeRead: dwAccess = GENERIC_READ; break;
    case modeWrite: dwAccess = GENERIC_WRITE; break;
    case modeReadWrite: dwAccess = GENERIC_READ | GENERIC_WRITE; break;
    default: return fail(CFileException::genericException, ERROR_INVALID_PARAMETER);
    }

    DWORD dwShare;
    switch (nOpenFlags & 0x70) {
    case shareCompat:
    case shareExclusive: dwShare = 0; break;
    case shareDenyWrite: dwShare = FILE_SHARE_READ; break;
    case shareDenyRead: dwShare = FILE_SHARE_WRITE; break;
    case shareDenyNone: dwShare = FILE_SHARE_READ | FILE_SHARE_WRITE; break;
    default: return fail(CFileException::genericException, ERROR_INVALID_PARAMETER);
    }

    SECURITY_ATTRIBUTES sa = {sizeof(sa), nullptr, (nOpenFlags & modeNoInherit) == 0};

    DWORD dwCreate = OPEN_EXISTING;
    if (nOpenFlags & modeCreate)
        dwCreate = (nOpenFlags & modeNoTruncate) ? OPEN_ALWAYS : CREATE_ALWAYS;

    DWORD dwFlags = FILE_ATTRIBUTE_NORMAL;
    if (nOpenFlags & osNoBuffer)
        dwFlags |= FILE_FLAG_NO_BUFFERING;
    if (nOpenFlags & osWriteThrough)
        dwFlags |= FILE_FLAG_WRITE_THROUGH;
    if (nOpenFlags & osRandomAccess)
        dwFlags |= FILE_FLAG_RANDOM_ACCESS;
    if (nOpenFlags & osSequentialScan)
        dwFlags |= FILE_FLAG_SEQUENTIAL_SCAN;

    HANDLE hFile = ::CreateFileW(lpszFileName, dwAccess, dwShare, &sa, dwCreate, dwFlags, nullptr);
    if (hFile == INVALID_HANDLE_VALUE) {
        LONG err = static_cast<LONG>(::GetLastError());
        return fail(CFileException::OsErrorToException(err), err);
    }
    m_hFile = hFile;
    m_bCloseOnDelete = TRUE;
    m_strFileName = FullPath(lpszFileName);
    return TRUE;
}

UINT CFile::Read(void* lpBuf, UINT nCount)
{
    if (nCount == 0)
        return 0;
    if (lpBuf == nullptr)
        AfxThrowInvalidArgException();
    DWORD dwRead = 0;
    if (!::ReadFile(m_hFile, lpBuf, nCount, &dwRead, nullptr))
        ThrowLastError(m_strFileName);
    return dwRead;
}

void CFile::Write(const void* lpBuf, UINT nCount)
{
    if (nCount == 0)
        return;
    if (lpBuf == nullptr)
        AfxThrowInvalidArgException();
    DWORD dwWritten = 0;
    if (!::WriteFile(m_hFile, lpBuf, nCount, &dwWritten, nullptr))
        ThrowLastError(m_strFileName);
    if (dwWritten != nCount)
        AfxThrowFileException(CFileException::diskFull, -1, m_strFileName);
}

CFile* CFile::Duplicate() const
{
    HANDLE hFile;
    if (!::DuplicateHandle(::GetCurrentProcess(), m_hFile, ::GetCurrentProcess(), &hFile, 0, FALSE,
                           DUPLICATE_SAME_ACCESS))
        ThrowLastError(m_strFileName);
    CFile* pFile = new CFile(hFile);
    pFile->m_bCloseOnDelete = TRUE;
    pFile->m_strFileName = m_strFileName;
    return pFile;
}

void CFile::LockRange(ULONGLONG dwPos, ULONGLONG dwCount)
{
    if (!::LockFile(m_hFile, static_cast<DWORD>(dwPos), static_cast<DWORD>(dwPos >> 32),
                    static_cast<DWORD>(dwCount), static_cast<DWORD>(dwCount >> 32)))
        ThrowLastError(m_strFileName);
}

void CFile::UnlockRange(ULONGLONG dwPos, ULONGLONG dwCount)
{
    if (!::UnlockFile(m_hFile, static_cast<DWORD>(dwPos), static_cast<DWORD>(dwPos >> 32),
                      static_cast<DWORD>(dwCount), static_cast<DWORD>(dwCount >> 32)))
        ThrowLastError(m_strFileName);
}

ULONGLONG CFile::Seek(LONGLONG lOff, UINT nFrom)
{
    if (nFrom != begin && nFrom != current && nFrom != end)
        AfxThrowInvalidArgException();
    LARGE_INTEGER li, liNew;
    li.QuadPart = lOff;
    if (!::SetFilePointerEx(m_hFile, li, &liNew, nFrom))
        ThrowLastError(m_strFileName);
    return static_cast<ULONGLONG>(liNew.QuadPart);
}

ULONGLONG CFile::GetPosition() const
{
    LARGE_INTEGER li, liNew;
    li.QuadPart = 0;
    if (!::SetFilePointerEx(m_hFile, li, &liNew, FILE_CURRENT))
        ThrowLastError(m_strFileName);
    return static_cast<ULONGLONG>(liNew.QuadPart);
}

ULONGLONG CFile::GetLength() const
{
    LARGE_INTEGER li;
    if (!::GetFileSizeEx(m_hFile, &li))
        ThrowLastError(m_strFileName);
    return static_cast<ULONGLONG>(li.QuadPart);
}

void CFile::SetLength(ULONGLONG dwNewLen)
{
    Seek(static_cast<LONGLONG>(dwNewLen), begin);
    if (!::SetEndOfFile(m_hFile))
        ThrowLastError(m_strFileName);
}

void CFile::Flush()
{
    if (m_hFile == hFileNull)
        return;
    if (!::FlushFileBuffers(m_hFile))
        ThrowLastError(m_strFileName);
}

void CFile::Close()
{
    BOOL bError = FALSE;
    DWORD err = 0;
    if (m_hFile != hFileNull) {
        bError = !::CloseHandle(m_hFile);
        err = ::GetLastError();
    }
    m_hFile = hFileNull;
    m_bCloseOnDelete = FALSE;
    CString strName = m_strFileName;
    m_strFileName.Empty();
    if (bError)
        CFileException::ThrowOsError(static_cast<LONG>(err), strName);
}

void CFile::Abort()
{
    if (m_hFile != hFileNull) {
        ::CloseHandle(m_hFile);
        m_hFile = hFileNull;
    }
    m_bCloseOnDelete = FALSE;
    m_strFileName.Empty();
}

CString CFile::GetFileName() const
{
    int n = m_strFileName.GetLength();
    int i = n;
    while (i > 0 && m_strFileName[i - 1] != L'\\' && m_strFileName[i - 1] != L'/' &&
           m_strFileName[i - 1] != L':')
        --i;
    return m_strFileName.Mid(i);
}

CString CFile::GetFileTitle() const
{
    CString strName = GetFileName();
    int nDot = strName.ReverseFind(L'.');
    return nDot > 0 ? strName.Left(nDot) : strName;
}

CString CFile::GetFilePath() const
{
    return m_strFileName;
}

void CFile::SetFilePath(LPCTSTR lpszNewName)
{
    if (lpszNewName == nullptr)
        AfxThrowInvalidArgException();
    m_strFileName = FullPath(lpszNewName);
}

BOOL CFile::GetStatus(CFileStatus& rStatus) const
{
    rStatus = CFileStatus{};
    lstrcpynW(rStatus.m_szFullName, m_strFileName, _MAX_PATH);
    BY_HANDLE_FILE_INFORMATION info;
    if (m_hFile == hFileNull || !::GetFileInformationByHandle(m_hFile, &info))
        return FALSE;
    FillStatus(rStatus, info.ftCreationTime, info.ftLastAccessTime, info.ftLastWriteTime,
               info.nFileSizeHigh, info.nFileSizeLow, info.dwFileAttributes);
    return TRUE;
}

BOOL PASCAL CFile::GetStatus(LPCTSTR lpszFileName, CFileStatus& rStatus)
{
    rStatus = CFileStatus{};
    if (lpszFileName == nullptr || *lpszFileName == 0)
        return FALSE;
    lstrcpynW(rStatus.m_szFullName, FullPath(lpszFileName), _MAX_PATH);
    WIN32_FILE_ATTRIBUTE_DATA data;
    if (!::GetFileAttributesExW(lpszFileName, GetFileExInfoStandard, &data))
        return FALSE;
    FillStatus(rStatus, data.ftCreationTime, data.ftLastAccessTime, data.ftLastWriteTime,
               data.nFileSizeHigh, data.nFileSizeLow, data.dwFileAttributes);
    return TRUE;
}

void PASCAL CFile::Rename(LPCTSTR lpszOldName, LPCTSTR lpszNewName)
{
    if (lpszOldName == nullptr || lpszNewName == nullptr)
        AfxThrowInvalidArgException();
    if (!::MoveFileW(lpszOldName, lpszNewName))
        ThrowLastError(lpszOldName);
}

void PASCAL CFile::Remove(LPCTSTR lpszFileName)
{
    if (lpszFileName == nullptr)
        AfxThrowInvalidArgException();
    if (!::DeleteFileW(lpszFileName))
        ThrowLastError(lpszFileName);
}
