// Exceptions of the framework and the functions that throw them.
#include "afx.h"
#include "afxwin.h"
#include <cerrno>

IMPLEMENT_DYNAMIC(CException, CObject)
IMPLEMENT_DYNAMIC(CSimpleException, CException)
IMPLEMENT_DYNAMIC(CMemoryException, CSimpleException)
IMPLEMENT_DYNAMIC(CNotSupportedException, CSimpleException)
IMPLEMENT_DYNAMIC(CInvalidArgException, CSimpleException)
IMPLEMENT_DYNAMIC(CFileException, CException)
IMPLEMENT_DYNAMIC(CArchiveException, CException)

namespace {

// Copies text into a caller's buffer, truncated to fit. FALSE when there is no room.
BOOL CopyMessage(LPCWSTR text, LPTSTR lpszError, UINT nMaxError)
{
    if (!lpszError || nMaxError == 0)
        return FALSE;
    lstrcpynW(lpszError, text, static_cast<int>(nMaxError));
    return TRUE;
}

// A sentence with %1 replaced by the file name (or "an unnamed file").
CString WithFileName(LPCWSTR pattern, const CString& fileName)
{
    CString s(pattern);
    s.Replace(L"%1", fileName.IsEmpty() ? L"an unnamed file" : fileName.GetString());
    return s;
}

}  // namespace

/////////////////////////////////////////////////////////////////////////////
// CException

CException::~CException() = default;

void CException::Delete()
{
    if (m_bAutoDelete)
        delete this;
}

BOOL CException::GetErrorMessage(LPTSTR lpszError, UINT nMaxError, PUINT pnHelpContext) const
{
    if (pnHelpContext)
        *pnHelpContext = 0;
    if (lpszError && nMaxError > 0)
        *lpszError = 0;
    return FALSE;
}

BOOL CException::GetErrorMessage(LPTSTR lpszError, UINT nMaxError, PUINT pnHelpContext)
{
    return static_cast<const CException*>(this)->GetErrorMessage(lpszError, nMaxError, pnHelpContext);
}

int CException::ReportError(UINT nType, UINT nMessageID)
{
    wchar_t text[512];
    if (!GetErrorMessage(text, 512) || !*text) {
        if (nMessageID == 0 || LoadStringW(GetModuleHandleW(nullptr), nMessageID, text, 512) <= 0)
            lstrcpynW(text, L"No error message is available.", 512);
    }
    // Through the application, as every message box of the framework (a host may record or
    // restyle them in CWinApp::DoMessageBox).
    return AfxMessageBox(text, nType);
}

/////////////////////////////////////////////////////////////////////////////
// Exceptions with a fixed text

CSimpleException::~CSimpleException() = default;
CMemoryException::~CMemoryException() = default;
CNotSupportedException::~CNotSupportedException() = default;
CInvalidArgException::~CInvalidArgException() = default;

BOOL CSimpleException::GetErrorMessage(LPTSTR lpszError, UINT nMaxError, PUINT pnHelpContext) const
{
    if (pnHelpContext)
        *pnHelpContext = 0;
    return CopyMessage(GetDefaultMessage(), lpszError, nMaxError);
}

LPCWSTR CSimpleException::GetDefaultMessage() const
{
    return L"An unknown error has occurred.";
}

LPCWSTR CMemoryException::GetDefaultMessage() const
{
    return L"Out of memory.";
}

LPCWSTR CNotSupportedException::GetDefaultMessage() const
{
    return L"An unsupported operation was attempted.";
}

LPCWSTR CInvalidArgException::GetDefaultMessage() const
{
    return L"Encountered an improper argument.";
}

void AFXAPI AfxThrowMemoryException()
{
    // Allocating the exception could fail too: throw one that always exists.
    static CMemoryException s_memoryException(FALSE);
    throw &s_memoryException;
}

void AFXAPI AfxThrowNotSupportedException()
{
    throw new CNotSupportedException;
}

void AFXAPI AfxThrowInvalidArgException()
{
    throw new CInvalidArgException;
}

/////////////////////////////////////////////////////////////////////////////
// CFileException

CFileException::CFileException(int cause, LONG lOsError, LPCTSTR lpszArchiveName)
    : m_cause(cause), m_lOsError(lOsError), m_strFileName(lpszArchiveName)
{
}

CFileException::~CFileException() = default;

BOOL CFileException::GetErrorMessage(LPTSTR lpszError, UINT nMaxError, PUINT pnHelpContext) const
{
    static const LPCWSTR kText[] = {
        L"No error occurred.",
        L"An unknown error occurred while accessing %1.",
        L"%1 was not found.",
        L"%1 contains an incorrect path.",
        L"%1 could not be opened because there are too many open files.",
        L"Access to %1 was denied.",
        L"An incorrect file handle was associated with %1.",
        L"%1 could not be removed because it is the current directory.",
        L"%1 could not be created because the directory is full.",
        L"Seek failed on %1.",
        L"A hardware I/O error was reported while accessing %1.",
        L"A sharing violation occurred while accessing %1.",
        L"A locking violation occurred while accessing %1.",
        L"Disk full while accessing %1.",
        L"An attempt was made to access %1 past its end.",
    };
    if (pnHelpContext)
        *pnHelpContext = 0;
    int cause = m_cause >= 0 && m_cause < static_cast<int>(ARRAYSIZE(kText)) ? m_cause : genericException;
    return CopyMessage(WithFileName(kText[cause], m_strFileName), lpszError, nMaxError);
}

int PASCAL CFileException::OsErrorToException(LONG lOsError)
{
    switch (lOsError) {
    case NO_ERROR:
        return none;
    case ERROR_FILE_NOT_FOUND:
    case ERROR_INVALID_HANDLE:
    case ERROR_NO_MORE_FILES:
    case ERROR_DISK_CHANGE:
        return fileNotFound;
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_DRIVE:
    case ERROR_NOT_SAME_DEVICE:
    case ERROR_WRONG_DISK:
    case ERROR_DUP_NAME:
    case ERROR_BAD_NETPATH:
    case ERROR_DEV_NOT_EXIST:
    case ERROR_BAD_NET_NAME:
    case ERROR_SHARING_PAUSED:
    case ERROR_ALREADY_ASSIGNED:
    case ERROR_BUFFER_OVERFLOW:
    case ERROR_INVALID_NAME:
    case ERROR_INVALID_LEVEL:
    case ERROR_NO_VOLUME_LABEL:
    case ERROR_DIR_NOT_ROOT:
    case ERROR_LABEL_TOO_LONG:
    case ERROR_BAD_PATHNAME:
    case ERROR_FILENAME_EXCED_RANGE:
    case ERROR_META_EXPANSION_TOO_LONG:
    case ERROR_DIRECTORY:
        return badPath;
    case ERROR_TOO_MANY_OPEN_FILES:
    case ERROR_SHARING_BUFFER_EXCEEDED:
    case ERROR_TOO_MANY_NAMES:
    case ERROR_NO_MORE_SEARCH_HANDLES:
        return tooManyOpenFiles;
    case ERROR_ACCESS_DENIED:
    case ERROR_INVALID_ACCESS:
    case ERROR_WRITE_PROTECT:
    case ERROR_WRITE_FAULT:
    case ERROR_NETWORK_BUSY:
    case ERROR_BAD_NET_RESP:
    case ERROR_NETNAME_DELETED:
    case ERROR_NETWORK_ACCESS_DENIED:
    case ERROR_REQ_NOT_ACCEP:
    case ERROR_FILE_EXISTS:
    case ERROR_CANNOT_MAKE:
    case ERROR_INVALID_PASSWORD:
    case ERROR_BUSY:
    case ERROR_ALREADY_EXISTS:
    case ERROR_SWAPERROR:
        return accessDenied;
    case ERROR_BAD_FORMAT:
    case ERROR_NOT_DOS_DISK:
    case ERROR_BAD_REM_ADAP:
    case ERROR_BAD_DEV_TYPE:
    case ERROR_INVALID_TARGET_HANDLE:
    case ERROR_INVALID_ORDINAL:
    case ERROR_INVALID_EXE_SIGNATURE:
    case ERROR_BAD_EXE_FORMAT:
        return invalidFile;
    case ERROR_CURRENT_DIRECTORY:
    case ERROR_DIR_NOT_EMPTY:
        return removeCurrentDir;
    case ERROR_NO_SPOOL_SPACE:
        return directoryFull;
    case ERROR_BAD_LENGTH:
    case ERROR_SEEK:
    case ERROR_SECTOR_NOT_FOUND:
    case ERROR_READ_FAULT:
    case ERROR_NEGATIVE_SEEK:
    case ERROR_SEEK_ON_DEVICE:
        return badSeek;
    case ERROR_BAD_UNIT:
    case ERROR_NOT_READY:
    case ERROR_BAD_COMMAND:
    case ERROR_CRC:
    case ERROR_ADAP_HDW_ERR:
    case ERROR_UNEXP_NET_ERR:
    case ERROR_NET_WRITE_FAULT:
    case ERROR_INVALID_CATEGORY:
    case ERROR_OPERATION_ABORTED:
    case ERROR_IO_INCOMPLETE:
    case ERROR_IO_PENDING:
        return hardIO;
    case ERROR_SHARING_VIOLATION:
        return sharingViolation;
    case ERROR_LOCK_VIOLATION:
    case ERROR_DRIVE_LOCKED:
    case ERROR_LOCK_FAILED:
        return lockViolation;
    case ERROR_HANDLE_DISK_FULL:
    case ERROR_DISK_FULL:
        return diskFull;
    case ERROR_HANDLE_EOF:
        return endOfFile;
    default:
        return genericException;
    }
}

int PASCAL CFileException::ErrnoToException(int nErrno)
{
    switch (nErrno) {
    case 0:
        return none;
    case EPERM:
    case EACCES:
        return accessDenied;
    case EBADF:
        return invalidFile;
    case EDEADLOCK:
        return sharingViolation;
    case EMFILE:
        return tooManyOpenFiles;
    case ENOENT:
    case ENFILE:
        return fileNotFound;
    case ENOSPC:
        return diskFull;
    case EINVAL:
    case EIO:
        return hardIO;
    default:
        return genericException;
    }
}

void PASCAL CFileException::ThrowOsError(LONG lOsError, LPCTSTR lpszFileName)
{
    AfxThrowFileException(OsErrorToException(lOsError), lOsError, lpszFileName);
}

void PASCAL CFileException::ThrowErrno(int nErrno, LPCTSTR lpszFileName)
{
    AfxThrowFileException(ErrnoToException(nErrno), nErrno, lpszFileName);
}

void AFXAPI AfxThrowFileException(int cause, LONG lOsError, LPCTSTR lpszFileName)
{
    throw new CFileException(cause, lOsError, lpszFileName);
}

/////////////////////////////////////////////////////////////////////////////
// CArchiveException

CArchiveException::CArchiveException(int cause, LPCTSTR lpszArchiveName)
    : m_cause(cause), m_strFileName(lpszArchiveName)
{
}

CArchiveException::~CArchiveException() = default;

BOOL CArchiveException::GetErrorMessage(LPTSTR lpszError, UINT nMaxError, PUINT pnHelpContext) const
{
    static const LPCWSTR kText[] = {
        L"No error occurred.",
        L"An unexpected error occurred while reading or writing %1.",
        L"An attempt was made to write to %1 while it was being read.",
        L"An attempt was made to read past the end of %1.",
        L"An attempt was made to read from %1 while it was being written.",
        L"%1 has a bad format.",
        L"%1 contains an unexpected object.",
        L"%1 contains an object of an incompatible version.",
        L"The buffer of %1 is too small.",
    };
    if (pnHelpContext)
        *pnHelpContext = 0;
    int cause = m_cause >= 0 && m_cause < static_cast<int>(ARRAYSIZE(kText)) ? m_cause : genericException;
    return CopyMessage(WithFileName(kText[cause], m_strFileName), lpszError, nMaxError);
}

void AFXAPI AfxThrowArchiveException(int cause, LPCTSTR lpszArchiveName)
{
    throw new CArchiveException(cause, lpszArchiveName);
}
