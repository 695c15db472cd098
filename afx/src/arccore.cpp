// CArchive: buffering, raw bytes, counts, text lines and strings.
#include "afx.h"
#include "afxcoll.h"
#include <stdlib.h>
#include <string.h>

namespace {
const int kMinBufSize = 128;
}

CArchive::CArchive(CFile* pFile, UINT nMode, int nBufSize, void* lpBuf)
{
    if (pFile == nullptr)
        AfxThrowInvalidArgException();
    m_nMode = nMode;
    m_pFile = pFile;
    m_strFileName = pFile->GetFilePath();
    if (lpBuf != nullptr && nBufSize < kMinBufSize)
        AfxThrowInvalidArgException();
    m_nBufSize = nBufSize < kMinBufSize ? kMinBufSize : nBufSize;
    m_bUserBuf = lpBuf != nullptr;
    m_lpBufStart = m_bUserBuf ? static_cast<BYTE*>(lpBuf) : static_cast<BYTE*>(malloc(m_nBufSize));
    if (m_lpBufStart == nullptr)
        AfxThrowMemoryException();
    m_lpBufCur = m_lpBufStart;
    // Loading starts with an empty buffer, storing with an empty one of full capacity.
    m_lpBufMax = IsLoading() ? m_lpBufStart : m_lpBufStart + m_nBufSize;
}

CArchive::~CArchive()
{
    if (m_pFile != nullptr && !(m_nMode & bNoFlushOnDelete)) {
        try {
            Close();
        } catch (CException* e) {
            e->Delete();
        }
    }
    Abort();
    if (!m_bUserBuf)
        free(m_lpBufStart);
    m_lpBufStart = m_lpBufCur = m_lpBufMax = nullptr;
}

void CArchive::ThrowArchive(int cause) const
{
    AfxThrowArchiveException(cause, m_strFileName);
}

void CArchive::Detach()
{
    m_pFile = nullptr;
    // Nothing more can be read or buffered for writing.
    m_lpBufCur = m_lpBufMax = m_lpBufStart;
    delete m_pLoadArray;
    delete m_pStoreMap;
    delete m_pSchemaMap;
    m_pLoadArray = nullptr;
    m_pStoreMap = nullptr;
    m_pSchemaMap = nullptr;
    m_nMapCount = 0;
}

void CArchive::Close()
{
    if (m_pFile == nullptr)
        return;
    Flush();
    Detach();
}

void CArchive::Abort()
{
    Detach();
}

void CArchive::Flush()
{
    if (m_pFile == nullptr)
        ThrowArchive(CArchiveException::genericException);
    if (IsLoading()) {
        // Give back what was read ahead, so that the file stands right after the loaded data.
        if (m_lpBufMax != m_lpBufCur)
            m_pFile->Seek(-static_cast<LONGLONG>(m_lpBufMax - m_lpBufCur), CFile::current);
        m_lpBufCur = m_lpBufMax = m_lpBufStart;
    } else {
        BYTE* lpStart = m_lpBufStart;
        UINT nBytes = static_cast<UINT>(m_lpBufCur - lpStart);
        m_lpBufCur = lpStart;
        if (nBytes != 0)
            m_pFile->Write(lpStart, nBytes);
    }
}

bool CArchive::TryFill(UINT nBytesNeeded)
{
    CheckLoading();
    if (m_pFile == nullptr)
        ThrowArchive(CArchiveException::genericException);
    UINT nUnused = static_cast<UINT>(m_lpBufMax - m_lpBufCur);
    UINT nTotal = nUnused + nBytesNeeded;
    if (nTotal > static_cast<UINT>(m_nBufSize))
        AfxThrowInvalidArgException();
    if (nUnused > 0 && m_lpBufCur != m_lpBufStart)
        memmove(m_lpBufStart, m_lpBufCur, nUnused);
    m_lpBufCur = m_lpBufStart;
    m_lpBufMax = m_lpBufStart + nUnused;
    while (static_cast<UINT>(m_lpBufMax - m_lpBufStart) < nTotal) {
        UINT nRead = m_pFile->Read(m_lpBufMax, m_nBufSize - static_cast<UINT>(m_lpBufMax - m_lpBufStart));
        if (nRead == 0)
            return false;
        m_lpBufMax += nRead;
    }
    return true;
}

void CArchive::FillBuffer(UINT nBytesNeeded)
{
    if (!TryFill(nBytesNeeded))
        ThrowArchive(CArchiveException::endOfFile);
}

UINT CArchive::Read(void* lpBuf, UINT nMax)
{
    CheckLoading();
    if (nMax == 0)
        return 0;
    if (lpBuf == nullptr)
        AfxThrowInvalidArgException();
    if (m_pFile == nullptr)
        ThrowArchive(CArchiveException::genericException);
    BYTE* p = static_cast<BYTE*>(lpBuf);
    UINT nLeft = nMax;

    // What the buffer holds.
    UINT n = static_cast<UINT>(m_lpBufMax - m_lpBufCur);
    if (n > nLeft)
        n = nLeft;
    memcpy(p, m_lpBufCur, n);
    m_lpBufCur += n;
    p += n;
    nLeft -= n;

    // Large blocks straight from the file, the rest through the buffer.
    while (nLeft >= static_cast<UINT>(m_nBufSize)) {
        UINT nRead = m_pFile->Read(p, nLeft);
        if (nRead == 0)
            return nMax - nLeft;
        p += nRead;
        nLeft -= nRead;
    }
    while (nLeft > 0) {
        m_lpBufCur = m_lpBufMax = m_lpBufStart;
        UINT nRead = m_pFile->Read(m_lpBufStart, m_nBufSize);
        if (nRead == 0)
            break;
        m_lpBufMax = m_lpBufStart + nRead;
        n = nRead < nLeft ? nRead : nLeft;
        memcpy(p, m_lpBufCur, n);
        m_lpBufCur += n;
        p += n;
        nLeft -= n;
    }
    return nMax - nLeft;
}

void CArchive::EnsureRead(void* lpBuf, UINT nCount)
{
    if (Read(lpBuf, nCount) != nCount)
        ThrowArchive(CArchiveException::endOfFile);
}

void CArchive::Write(const void* lpBuf, UINT nMax)
{
    CheckStoring();
    if (nMax == 0)
        return;
    if (lpBuf == nullptr)
        AfxThrowInvalidArgException();
    const BYTE* p = static_cast<const BYTE*>(lpBuf);
    UINT n = static_cast<UINT>(m_lpBufMax - m_lpBufCur);
    if (n > nMax)
        n = nMax;
    memcpy(m_lpBufCur, p, n);
    m_lpBufCur += n;
    p += n;
    nMax -= n;
    if (nMax == 0)
        return;
    Flush();
    if (nMax >= static_cast<UINT>(m_nBufSize)) {
        m_pFile->Write(p, nMax);
    } else {
        memcpy(m_lpBufCur, p, nMax);
        m_lpBufCur += nMax;
    }
}

void CArchive::WriteCount(DWORD_PTR dwCount)
{
    if (dwCount < 0xFFFF) {
        *this << static_cast<WORD>(dwCount);
        return;
    }
    *this << static_cast<WORD>(0xFFFF);
    if (dwCount < 0xFFFFFFFF) {
        *this << static_cast<DWORD>(dwCount);
        return;
    }
    *this << static_cast<DWORD>(0xFFFFFFFF);
    *this << static_cast<ULONGLONG>(dwCount);
}

DWORD_PTR CArchive::ReadCount()
{
    WORD wCount;
    *this >> wCount;
    if (wCount != 0xFFFF)
        return wCount;
    DWORD dwCount;
    *this >> dwCount;
    if (dwCount != 0xFFFFFFFF)
        return dwCount;
    ULONGLONG qwCount;
    *this >> qwCount;
    return static_cast<DWORD_PTR>(qwCount);
}

UINT CArchive::GetObjectSchema()
{
    // Valid once per object: a second call answers -1.
    UINT nResult = m_nObjectSchema;
    m_nObjectSchema = static_cast<UINT>(-1);
    return nResult;
}

void CArchive::SetStoreParams(UINT nHashSize, UINT nBlockSize)
{
    (void)nBlockSize;
    if (m_pStoreMap == nullptr && nHashSize > 0)
        m_nHashSize = nHashSize;
}

void CArchive::SetLoadParams(UINT nGrowBy)
{
    if (m_pLoadArray == nullptr && nGrowBy > 0)
        m_nGrowSize = nGrowBy;
}

// ---------------------------------------------------------------------------------------------
// Text lines

void CArchive::WriteString(LPCTSTR lpsz)
{
    if (lpsz == nullptr)
        AfxThrowInvalidArgException();
    Write(lpsz, static_cast<UINT>(lstrlenW(lpsz)) * sizeof(wchar_t));
}

bool CArchive::ReadChar(wchar_t& ch)
{
    CheckLoading();
    if (m_lpBufCur + sizeof(wchar_t) > m_lpBufMax &&
        !TryFill(static_cast<UINT>(sizeof(wchar_t) - (m_lpBufMax - m_lpBufCur))))
        return false;
    memcpy(&ch, m_lpBufCur, sizeof(wchar_t));
    m_lpBufCur += sizeof(wchar_t);
    return true;
}

LPTSTR CArchive::ReadString(LPTSTR lpsz, UINT nMax)
{
    if (lpsz == nullptr)
        AfxThrowInvalidArgException();
    UINT nRead = 0;
    wchar_t ch;
    bool bAny = false;
    while (nRead < nMax && ReadChar(ch)) {
        bAny = true;
        if (ch == L'\n')
            break;
        if (ch == L'\r') {
            // "\r\n" ends the line as one.
            wchar_t next;
            if (ReadChar(next) && next != L'\n')
                m_lpBufCur -= sizeof(wchar_t);
            break;
        }
        lpsz[nRead++] = ch;
    }
    if (!bAny)
        return nullptr;
    lpsz[nRead] = 0;
    return lpsz;
}

BOOL CArchive::ReadString(CString& rString)
{
    rString.Empty();
    wchar_t chunk[129];
    for (;;) {
        LPTSTR p = ReadString(chunk, 128);
        if (p == nullptr)
            return !rString.IsEmpty();
        int n = lstrlenW(chunk);
        rString += chunk;
        // A full chunk means the line may go on; a shorter one ended at a newline or the end.
        if (n < 128)
            return TRUE;
    }
}

// ---------------------------------------------------------------------------------------------
// Strings

namespace {

void WriteStringLength(CArchive& ar, ULONGLONG nLength)
{
    ar << static_cast<BYTE>(0xFF) << static_cast<WORD>(0xFFFE);
    if (nLength < 0xFF) {
        ar << static_cast<BYTE>(nLength);
        return;
    }
    ar << static_cast<BYTE>(0xFF);
    if (nLength < 0xFFFE) {
        ar << static_cast<WORD>(nLength);
        return;
    }
    ar << static_cast<WORD>(0xFFFF);
    if (nLength < 0xFFFFFFFF) {
        ar << static_cast<DWORD>(nLength);
        return;
    }
    ar << static_cast<DWORD>(0xFFFFFFFF) << nLength;
}

ULONGLONG ReadStringLength(CArchive& ar, int& nCharSize)
{
    nCharSize = 1;
    BYTE bLength;
    ar >> bLength;
    if (bLength < 0xFF)
        return bLength;
    WORD wLength;
    ar >> wLength;
    if (wLength == 0xFFFE) {
        // UTF-16 text: the real length prefix follows.
        nCharSize = 2;
        ar >> bLength;
        if (bLength < 0xFF)
            return bLength;
        ar >> wLength;
    }
    if (wLength < 0xFFFF)
        return wLength;
    DWORD dwLength;
    ar >> dwLength;
    if (dwLength < 0xFFFFFFFF)
        return dwLength;
    ULONGLONG qwLength;
    ar >> qwLength;
    return qwLength;
}

// Characters per read: a corrupt length runs into the end of the data after at most one step.
const UINT kStringStep = 32768;

} // namespace

CArchive& AFXAPI operator<<(CArchive& ar, const CString& str)
{
    UINT nLength = static_cast<UINT>(str.GetLength());
    WriteStringLength(ar, nLength);
    ar.Write(static_cast<LPCTSTR>(str), nLength * static_cast<UINT>(sizeof(wchar_t)));
    return ar;
}

CArchive& AFXAPI operator<<(CArchive& ar, LPCWSTR lpsz)
{
    if (lpsz == nullptr)
        AfxThrowInvalidArgException();
    UINT nLength = static_cast<UINT>(lstrlenW(lpsz));
    WriteStringLength(ar, nLength);
    ar.Write(lpsz, nLength * static_cast<UINT>(sizeof(wchar_t)));
    return ar;
}

CArchive& AFXAPI operator>>(CArchive& ar, CString& str)
{
    int nCharSize;
    ULONGLONG nLength = ReadStringLength(ar, nCharSize);
    if (nLength > 0x3FFFFFFF)
        AfxThrowArchiveException(CArchiveException::genericException, ar.m_strFileName);
    UINT nChars = static_cast<UINT>(nLength);
    CString strResult;
    if (nCharSize == 2) {
        for (UINT nDone = 0; nDone < nChars;) {
            UINT n = nChars - nDone < kStringStep ? nChars - nDone : kStringStep;
            LPWSTR p = strResult.GetBuffer(static_cast<int>(nDone + n));
            UINT nRead = ar.Read(p + nDone, n * sizeof(wchar_t));
            strResult.ReleaseBuffer(static_cast<int>(nDone + nRead / sizeof(wchar_t)));
            if (nRead != n * sizeof(wchar_t))
                AfxThrowArchiveException(CArchiveException::endOfFile, ar.m_strFileName);
            nDone += n;
        }
    } else if (nChars > 0) {
        CArray<char, char> bytes;
        for (UINT nDone = 0; nDone < nChars;) {
            UINT n = nChars - nDone < kStringStep ? nChars - nDone : kStringStep;
            bytes.SetSize(nDone + n);
            ar.EnsureRead(bytes.GetData() + nDone, n);
            nDone += n;
        }
        int nWide = ::MultiByteToWideChar(CP_ACP, 0, bytes.GetData(), static_cast<int>(nChars), nullptr, 0);
        LPWSTR p = strResult.GetBuffer(nWide);
        ::MultiByteToWideChar(CP_ACP, 0, bytes.GetData(), static_cast<int>(nChars), p, nWide);
        strResult.ReleaseBuffer(nWide);
    }
    str = strResult;
    return ar;
}
