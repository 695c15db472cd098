// CStdioFile: a C run-time stream over a file opened by CFile::Open.
// Text mode keeps the C run-time's newline translation ("\n" <-> "\r\n") and converts between
// UTF-16 and the ANSI code page itself, so the result does not depend on the C locale.
#include "afx.h"
#include "afxtempl.h"
#include <fcntl.h>
#include <io.h>
#include <errno.h>

IMPLEMENT_DYNAMIC(CStdioFile, CFile)

CStdioFile::CStdioFile() : m_pStream(nullptr) {}

CStdioFile::CStdioFile(FILE* pOpenStream) : m_pStream(pOpenStream)
{
    if (pOpenStream == nullptr)
        AfxThrowInvalidArgException();
    int fd = _fileno(pOpenStream);
    m_hFile = reinterpret_cast<HANDLE>(_get_osfhandle(fd));
    // Ask the run-time for the stream's mode by setting it and putting it back.
    int nMode = _setmode(fd, _O_TEXT);
    if (nMode != -1) {
        _setmode(fd, nMode);
        m_bText = (nMode & _O_BINARY) == 0;
    }
}

CStdioFile::CStdioFile(LPCTSTR lpszFileName, UINT nOpenFlags) : m_pStream(nullptr)
{
    CFileException e;
    if (!Open(lpszFileName, nOpenFlags, &e))
        AfxThrowFileException(e.m_cause, e.m_lOsError, e.m_strFileName);
}

CStdioFile::~CStdioFile()
{
    if (m_pStream != nullptr && m_bCloseOnDelete) {
        try {
            Close();
        } catch (CException* e) {
            e->Delete();
        }
    }
}

BOOL CStdioFile::Open(LPCTSTR lpszFileName, UINT nOpenFlags, CFileException* pException)
{
    if (m_pStream != nullptr) {
        if (pException != nullptr) {
            pException->m_cause = CFileException::genericException;
            pException->m_lOsError = ERROR_ALREADY_EXISTS;
            pException->m_strFileName = lpszFileName;
        }
        return FALSE;
    }
    if (!CFile::Open(lpszFileName, nOpenFlags & ~(typeText | typeBinary), pException))
        return FALSE;

    m_bText = (nOpenFlags & typeBinary) == 0;
    int nFlags = m_bText ? _O_TEXT : _O_BINARY;
    char szMode[4] = {};
    switch (nOpenFlags & 3) {
    case modeRead:
        nFlags |= _O_RDONLY;
        szMode[0] = 'r';
        break;
    case modeWrite:
        nFlags |= _O_WRONLY;
        szMode[0] = 'w'; // the file is already open: no truncation here
        break;
    default:
        nFlags |= _O_RDWR;
        szMode[0] = 'r';
        szMode[1] = '+';
        break;
    }
    strcat(szMode, m_bText ? "t" : "b");

    int fd = _open_osfhandle(reinterpret_cast<intptr_t>(m_hFile), nFlags);
    if (fd != -1)
        m_pStream = _fdopen(fd, szMode);
    if (m_pStream == nullptr) {
        LONG err = _doserrno != 0 ? static_cast<LONG>(_doserrno) : ERROR_TOO_MANY_OPEN_FILES;
        if (fd != -1)
            _close(fd); // closes m_hFile too
        else
            ::CloseHandle(m_hFile);
        m_hFile = hFileNull;
        m_bCloseOnDelete = FALSE;
        if (pException != nullptr) {
            pException->m_cause = CFileException::OsErrorToException(err);
            pException->m_lOsError = err;
            pException->m_strFileName = lpszFileName;
        }
        m_strFileName.Empty();
        return FALSE;
    }
    return TRUE;
}

void CStdioFile::WriteString(LPCTSTR lpsz)
{
    if (lpsz == nullptr)
        AfxThrowInvalidArgException();
    if (m_pStream == nullptr)
        AfxThrowFileException(CFileException::genericException, -1, m_strFileName);
    int nLen = lstrlenW(lpsz);
    if (nLen == 0)
        return;
    bool bOk;
    if (m_bText) {
        int nBytes = ::WideCharToMultiByte(CP_ACP, 0, lpsz, nLen, nullptr, 0, nullptr, nullptr);
        CArray<char, char> buf;
        buf.SetSize(nBytes);
        ::WideCharToMultiByte(CP_ACP, 0, lpsz, nLen, buf.GetData(), nBytes, nullptr, nullptr);
        bOk = fwrite(buf.GetData(), 1, nBytes, m_pStream) == static_cast<size_t>(nBytes);
    } else {
        bOk = fwrite(lpsz, sizeof(wchar_t), nLen, m_pStream) == static_cast<size_t>(nLen);
    }
    if (!bOk)
        AfxThrowFileException(CFileException::diskFull, _doserrno, m_strFileName);
}

bool CStdioFile::ReadLine(CString& rLine, UINT nMax)
{
    rLine.Empty();
    if (m_pStream == nullptr)
        AfxThrowFileException(CFileException::genericException, -1, m_strFileName);
    bool bAny = false;
    if (m_bText) {
        // Collect the bytes of the line first: a double-byte character must not be split.
        CArray<char, char> bytes;
        int ch;
        while (static_cast<UINT>(bytes.GetSize()) < nMax && (ch = getc(m_pStream)) != EOF) {
            bAny = true;
            bytes.Add(static_cast<char>(ch));
            if (ch == '\n')
                break;
        }
        int n = static_cast<int>(bytes.GetSize());
        if (n > 0) {
            int nChars = ::MultiByteToWideChar(CP_ACP, 0, bytes.GetData(), n, nullptr, 0);
            LPWSTR p = rLine.GetBuffer(nChars);
            ::MultiByteToWideChar(CP_ACP, 0, bytes.GetData(), n, p, nChars);
            rLine.ReleaseBuffer(nChars);
        }
    } else {
        UINT n = 0;
        wchar_t wch;
        while (n < nMax && fread(&wch, sizeof(wch), 1, m_pStream) == 1) {
            bAny = true;
            rLine += wch;
            ++n;
            if (wch == L'\n')
                break;
        }
    }
    if (ferror(m_pStream)) {
        clearerr(m_pStream);
        AfxThrowFileException(CFileException::genericException, _doserrno, m_strFileName);
    }
    return bAny;
}

LPTSTR CStdioFile::ReadString(LPTSTR lpsz, UINT nMax)
{
    if (lpsz == nullptr || nMax == 0)
        AfxThrowInvalidArgException();
    CString strLine;
    if (!ReadLine(strLine, nMax - 1))
        return nullptr;
    int n = strLine.GetLength();
    if (static_cast<UINT>(n) > nMax - 1)
        n = static_cast<int>(nMax - 1);
    memcpy(lpsz, static_cast<LPCTSTR>(strLine), n * sizeof(wchar_t));
    lpsz[n] = 0;
    return lpsz;
}

BOOL CStdioFile::ReadString(CString& rString)
{
    if (!ReadLine(rString, static_cast<UINT>(-1))) {
        rString.Empty();
        return FALSE;
    }
    int n = rString.GetLength();
    if (n > 0 && rString[n - 1] == L'\n')
        rString.Delete(n - 1);
    return TRUE;
}

CFile* CStdioFile::Duplicate() const
{
    AfxThrowNotSupportedException();
}

void CStdioFile::LockRange(ULONGLONG, ULONGLONG)
{
    AfxThrowNotSupportedException();
}

void CStdioFile::UnlockRange(ULONGLONG, ULONGLONG)
{
    AfxThrowNotSupportedException();
}

UINT CStdioFile::Read(void* lpBuf, UINT nCount)
{
    if (nCount == 0)
        return 0;
    if (lpBuf == nullptr)
        AfxThrowInvalidArgException();
    if (m_pStream == nullptr)
        AfxThrowFileException(CFileException::genericException, -1, m_strFileName);
    size_t nRead = fread(lpBuf, 1, nCount, m_pStream);
    if (nRead == 0 && ferror(m_pStream)) {
        clearerr(m_pStream);
        AfxThrowFileException(CFileException::genericException, _doserrno, m_strFileName);
    }
    return static_cast<UINT>(nRead);
}

void CStdioFile::Write(const void* lpBuf, UINT nCount)
{
    if (nCount == 0)
        return;
    if (lpBuf == nullptr)
        AfxThrowInvalidArgException();
    if (m_pStream == nullptr)
        AfxThrowFileException(CFileException::genericException, -1, m_strFileName);
    if (fwrite(lpBuf, 1, nCount, m_pStream) != nCount)
        AfxThrowFileException(CFileException::diskFull, _doserrno, m_strFileName);
}

ULONGLONG CStdioFile::Seek(LONGLONG lOff, UINT nFrom)
{
    static const int origins[] = {SEEK_SET, SEEK_CUR, SEEK_END};
    if (nFrom > end)
        AfxThrowInvalidArgException();
    if (m_pStream == nullptr || _fseeki64(m_pStream, lOff, origins[nFrom]) != 0)
        AfxThrowFileException(CFileException::badSeek, _doserrno, m_strFileName);
    return GetPosition();
}

ULONGLONG CStdioFile::GetPosition() const
{
    __int64 pos = m_pStream != nullptr ? _ftelli64(m_pStream) : -1;
    if (pos < 0)
        AfxThrowFileException(CFileException::invalidFile, _doserrno, m_strFileName);
    return static_cast<ULONGLONG>(pos);
}

ULONGLONG CStdioFile::GetLength() const
{
    __int64 pos = m_pStream != nullptr ? _ftelli64(m_pStream) : -1;
    if (pos < 0 || _fseeki64(m_pStream, 0, SEEK_END) != 0)
        AfxThrowFileException(CFileException::invalidFile, _doserrno, m_strFileName);
    __int64 len = _ftelli64(m_pStream);
    _fseeki64(m_pStream, pos, SEEK_SET);
    if (len < 0)
        AfxThrowFileException(CFileException::invalidFile, _doserrno, m_strFileName);
    return static_cast<ULONGLONG>(len);
}

void CStdioFile::Flush()
{
    if (m_pStream != nullptr && fflush(m_pStream) != 0)
        AfxThrowFileException(CFileException::diskFull, _doserrno, m_strFileName);
}

void CStdioFile::Close()
{
    int nErr = 0;
    if (m_pStream != nullptr)
        nErr = fclose(m_pStream); // closes the descriptor and the handle
    m_pStream = nullptr;
    m_hFile = hFileNull;
    m_bCloseOnDelete = FALSE;
    CString strName = m_strFileName;
    m_strFileName.Empty();
    if (nErr != 0)
        AfxThrowFileException(CFileException::diskFull, _doserrno, strName);
}

void CStdioFile::Abort()
{
    if (m_pStream != nullptr && m_bCloseOnDelete)
        fclose(m_pStream);
    m_pStream = nullptr;
    m_hFile = hFileNull;
    m_bCloseOnDelete = FALSE;
    m_strFileName.Empty();
}
