// CMemFile: a file in a growable heap block.
#include "afx.h"
#include <stdlib.h>
#include <string.h>

IMPLEMENT_DYNAMIC(CMemFile, CFile)

CMemFile::CMemFile(UINT nGrowBytes)
    : m_nGrowBytes(nGrowBytes), m_nPosition(0), m_nBufferSize(0), m_nFileSize(0),
      m_lpBuffer(nullptr), m_bAutoDelete(TRUE)
{
}

CMemFile::CMemFile(BYTE* lpBuffer, UINT nBufferSize, UINT nGrowBytes)
    : m_nGrowBytes(0), m_nPosition(0), m_nBufferSize(0), m_nFileSize(0), m_lpBuffer(nullptr),
      m_bAutoDelete(TRUE)
{
    Attach(lpBuffer, nBufferSize, nGrowBytes);
}

CMemFile::~CMemFile()
{
    Close();
}

void CMemFile::Attach(BYTE* lpBuffer, UINT nBufferSize, UINT nGrowBytes)
{
    if (lpBuffer == nullptr && nBufferSize != 0)
        AfxThrowInvalidArgException();
    Close();
    m_lpBuffer = lpBuffer;
    m_nBufferSize = nBufferSize;
    m_nGrowBytes = nGrowBytes;
    m_nFileSize = nGrowBytes == 0 ? nBufferSize : 0;
    m_nPosition = 0;
    m_bAutoDelete = FALSE;
}

BYTE* CMemFile::Detach()
{
    BYTE* lpBuffer = m_lpBuffer;
    m_lpBuffer = nullptr;
    m_nFileSize = m_nBufferSize = m_nPosition = 0;
    // A block allocated from now on is ours again.
    m_bAutoDelete = TRUE;
    return lpBuffer;
}

BYTE* CMemFile::Alloc(SIZE_T nBytes)
{
    return static_cast<BYTE*>(malloc(nBytes));
}

BYTE* CMemFile::Realloc(BYTE* lpMem, SIZE_T nBytes)
{
    return static_cast<BYTE*>(realloc(lpMem, nBytes));
}

BYTE* CMemFile::Memcpy(BYTE* lpMemTarget, const BYTE* lpMemSource, SIZE_T nBytes)
{
    return static_cast<BYTE*>(memcpy(lpMemTarget, lpMemSource, nBytes));
}

void CMemFile::Free(BYTE* lpMem)
{
    free(lpMem);
}

void CMemFile::GrowFile(SIZE_T dwNewLen)
{
    if (dwNewLen <= m_nBufferSize)
        return;
    // A fixed (attached, grow step 0) block cannot grow.
    if (m_nGrowBytes == 0)
        AfxThrowMemoryException();
    // Whole grow steps, and at least half the current size again so that many small writes
    // stay linear in the total length.
    SIZE_T nTarget = dwNewLen;
    if (nTarget - m_nBufferSize < m_nBufferSize / 2)
        nTarget = m_nBufferSize + m_nBufferSize / 2;
    SIZE_T nSteps = (nTarget + m_nGrowBytes - 1) / m_nGrowBytes;
    if (nSteps > static_cast<SIZE_T>(-1) / m_nGrowBytes)
        AfxThrowMemoryException();
    SIZE_T nNewBufferSize = nSteps * m_nGrowBytes;
    BYTE* lpNew = m_lpBuffer == nullptr ? Alloc(nNewBufferSize) : Realloc(m_lpBuffer, nNewBufferSize);
    if (lpNew == nullptr)
        AfxThrowMemoryException();
    m_lpBuffer = lpNew;
    m_nBufferSize = nNewBufferSize;
}

UINT CMemFile::Read(void* lpBuf, UINT nCount)
{
    if (nCount == 0)
        return 0;
    if (lpBuf == nullptr)
        AfxThrowInvalidArgException();
    if (m_nPosition >= m_nFileSize)
        return 0;
    SIZE_T nRead = m_nFileSize - m_nPosition;
    if (nRead > nCount)
        nRead = nCount;
    Memcpy(static_cast<BYTE*>(lpBuf), m_lpBuffer + m_nPosition, nRead);
    m_nPosition += nRead;
    return static_cast<UINT>(nRead);
}

void CMemFile::Write(const void* lpBuf, UINT nCount)
{
    if (nCount == 0)
        return;
    if (lpBuf == nullptr)
        AfxThrowInvalidArgException();
    if (m_nPosition > static_cast<SIZE_T>(-1) - nCount)
        AfxThrowFileException(CFileException::diskFull);
    SIZE_T nEnd = m_nPosition + nCount;
    if (nEnd > m_nBufferSize) {
        // The source may lie in our own block, which is about to move.
        const BYTE* src = static_cast<const BYTE*>(lpBuf);
        bool bInside = m_lpBuffer != nullptr && src >= m_lpBuffer && src < m_lpBuffer + m_nBufferSize;
        SIZE_T nOffset = bInside ? static_cast<SIZE_T>(src - m_lpBuffer) : 0;
        GrowFile(nEnd);
        if (bInside)
            lpBuf = m_lpBuffer + nOffset;
    }
    // Writing after a seek past the end: the gap reads as zeros.
    if (m_nPosition > m_nFileSize)
        memset(m_lpBuffer + m_nFileSize, 0, m_nPosition - m_nFileSize);
    memmove(m_lpBuffer + m_nPosition, lpBuf, nCount);
    m_nPosition = nEnd;
    if (m_nPosition > m_nFileSize)
        m_nFileSize = m_nPosition;
}

ULONGLONG CMemFile::Seek(LONGLONG lOff, UINT nFrom)
{
    LONGLONG lBase;
    switch (nFrom) {
    case begin: lBase = 0; break;
    case current: lBase = static_cast<LONGLONG>(m_nPosition); break;
    case end: lBase = static_cast<LONGLONG>(m_nFileSize); break;
    default: AfxThrowInvalidArgException();
    }
    LONGLONG lNew;
    if (__builtin_add_overflow(lBase, lOff, &lNew) || lNew < 0)
        AfxThrowFileException(CFileException::badSeek);
    m_nPosition = static_cast<SIZE_T>(lNew);
    return m_nPosition;
}

BOOL CMemFile::GetStatus(CFileStatus& rStatus) const
{
    rStatus = CFileStatus{};
    rStatus.m_size = m_nFileSize;
    return TRUE;
}

CFile* CMemFile::Duplicate() const
{
    AfxThrowNotSupportedException();
}

void CMemFile::LockRange(ULONGLONG, ULONGLONG)
{
    AfxThrowNotSupportedException();
}

void CMemFile::UnlockRange(ULONGLONG, ULONGLONG)
{
    AfxThrowNotSupportedException();
}

ULONGLONG CMemFile::GetPosition() const
{
    return m_nPosition;
}

ULONGLONG CMemFile::GetLength() const
{
    return m_nFileSize;
}

void CMemFile::SetLength(ULONGLONG dwNewLen)
{
    if (dwNewLen > static_cast<SIZE_T>(-1))
        AfxThrowMemoryException();
    SIZE_T nNewLen = static_cast<SIZE_T>(dwNewLen);
    if (nNewLen > m_nBufferSize)
        GrowFile(nNewLen);
    if (nNewLen > m_nFileSize)
        memset(m_lpBuffer + m_nFileSize, 0, nNewLen - m_nFileSize);
    if (nNewLen < m_nPosition)
        m_nPosition = nNewLen;
    m_nFileSize = nNewLen;
}

void CMemFile::Flush() {}

void CMemFile::Close()
{
    m_nPosition = m_nBufferSize = m_nFileSize = 0;
    if (m_lpBuffer != nullptr && m_bAutoDelete)
        Free(m_lpBuffer);
    m_lpBuffer = nullptr;
}

void CMemFile::Abort()
{
    Close();
}
