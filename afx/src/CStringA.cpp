// CStringA: the narrow string, and the conversions between it and CString.
#include "afx.h"
#include <algorithm>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <cctype>
#include <string>
#include <utility>

namespace {

char g_empty[1] = {0};

int Length(LPCSTR psz) noexcept
{
    return psz ? static_cast<int>(std::min<size_t>(std::strlen(psz), INT_MAX / 2)) : 0;
}

// Wide text in the ANSI code page.
std::string Narrow(LPCWSTR pch, int nLength)
{
    std::string out;
    if (!pch || nLength <= 0)
        return out;
    int n = WideCharToMultiByte(CP_ACP, 0, pch, nLength, nullptr, 0, nullptr, nullptr);
    if (n > 0) {
        out.resize(static_cast<size_t>(n));
        WideCharToMultiByte(CP_ACP, 0, pch, nLength, &out[0], n, nullptr, nullptr);
    }
    return out;
}

}  // namespace

void CStringA::Reserve(int nLength)
{
    if (nLength < 0 || nLength > INT_MAX / 2)
        AfxThrowMemoryException();
    if (nLength <= m_nAlloc)
        return;
    int nAlloc = std::max(nLength, m_nAlloc + m_nAlloc / 2);
    char* p = static_cast<char*>(std::realloc(m_nAlloc ? m_pszData : nullptr, static_cast<size_t>(nAlloc) + 1));
    if (!p)
        AfxThrowMemoryException();
    if (!m_nAlloc)
        p[0] = 0;
    m_pszData = p;
    m_nAlloc = nAlloc;
}

CStringA::CStringA(const CStringA& strSrc) : CStringA()
{
    SetString(strSrc.m_pszData, strSrc.m_nLength);
}

CStringA::CStringA(CStringA&& strSrc) noexcept
    : m_pszData(std::exchange(strSrc.m_pszData, g_empty)), m_nLength(std::exchange(strSrc.m_nLength, 0)),
      m_nAlloc(std::exchange(strSrc.m_nAlloc, 0))
{
}

CStringA::CStringA(PCXSTR pszSrc) : CStringA()
{
    if (pszSrc && !IS_INTRESOURCE(pszSrc))
        SetString(pszSrc, Length(pszSrc));
}

CStringA::CStringA(PCXSTR pch, int nLength) : CStringA()
{
    if (nLength < 0)
        AfxThrowInvalidArgException();
    if (pch)
        SetString(pch, nLength);
}

CStringA::CStringA(LPCWSTR pszSrc) : CStringA()
{
    if (pszSrc && !IS_INTRESOURCE(pszSrc))
        *this = CString(pszSrc);
}

CStringA::CStringA(LPCWSTR pch, int nLength) : CStringA()
{
    if (nLength < 0)
        AfxThrowInvalidArgException();
    std::string s = Narrow(pch, nLength);
    SetString(s.data(), static_cast<int>(s.size()));
}

CStringA::CStringA(const CString& strSrc) : CStringA()
{
    *this = strSrc;
}

CStringA::CStringA(XCHAR ch, int nRepeat) : CStringA()
{
    if (nRepeat > 0) {
        Reserve(nRepeat);
        std::memset(m_pszData, ch, static_cast<size_t>(nRepeat));
        m_nLength = nRepeat;
        m_pszData[nRepeat] = 0;
    }
}

CStringA::~CStringA() noexcept
{
    if (m_nAlloc)
        std::free(m_pszData);
}

CStringA& CStringA::operator=(const CStringA& strSrc)
{
    SetString(strSrc.m_pszData, strSrc.m_nLength);
    return *this;
}

CStringA& CStringA::operator=(CStringA&& strSrc) noexcept
{
    if (this != &strSrc) {
        std::swap(m_pszData, strSrc.m_pszData);
        std::swap(m_nLength, strSrc.m_nLength);
        std::swap(m_nAlloc, strSrc.m_nAlloc);
        strSrc.Empty();
    }
    return *this;
}

CStringA& CStringA::operator=(PCXSTR pszSrc)
{
    SetString(pszSrc, Length(pszSrc));
    return *this;
}

CStringA& CStringA::operator=(LPCWSTR pszSrc)
{
    return *this = CString(pszSrc);
}

CStringA& CStringA::operator=(const CString& strSrc)
{
    std::string s = Narrow(strSrc.GetString(), strSrc.GetLength());
    SetString(s.data(), static_cast<int>(s.size()));
    return *this;
}

CStringA& CStringA::operator=(XCHAR ch)
{
    SetString(&ch, 1);
    return *this;
}

CStringA& CStringA::operator+=(const CStringA& str)
{
    Append(str.m_pszData, str.m_nLength);
    return *this;
}

CStringA& CStringA::operator+=(PCXSTR psz)
{
    Append(psz, Length(psz));
    return *this;
}

CStringA& CStringA::operator+=(XCHAR ch)
{
    Append(&ch, 1);
    return *this;
}

void CStringA::Empty() noexcept
{
    if (m_nAlloc)
        std::free(m_pszData);
    m_pszData = g_empty;
    m_nLength = m_nAlloc = 0;
}

void CStringA::SetAt(int iChar, XCHAR ch)
{
    if (iChar < 0 || iChar >= m_nLength)
        AfxThrowInvalidArgException();
    m_pszData[iChar] = ch;
}

void CStringA::SetString(PCXSTR pszSrc, int nLength)
{
    if (nLength < 0)
        AfxThrowInvalidArgException();
    if (!pszSrc || nLength == 0) {
        if (m_nAlloc)
            m_pszData[0] = 0;
        m_nLength = 0;
        return;
    }
    // The source may be this string's own buffer, which Reserve may move.
    std::string copy(pszSrc, static_cast<size_t>(nLength));
    Reserve(nLength);
    std::memcpy(m_pszData, copy.data(), copy.size());
    m_nLength = nLength;
    m_pszData[nLength] = 0;
}

void CStringA::Append(PCXSTR pszSrc, int nLength)
{
    if (nLength < 0)
        AfxThrowInvalidArgException();
    if (!pszSrc || nLength == 0)
        return;
    if (nLength > INT_MAX / 2 - m_nLength)
        AfxThrowMemoryException();
    std::string copy(pszSrc, static_cast<size_t>(nLength));
    Reserve(m_nLength + nLength);
    std::memcpy(m_pszData + m_nLength, copy.data(), copy.size());
    m_nLength += nLength;
    m_pszData[m_nLength] = 0;
}

int CStringA::Compare(PCXSTR psz) const
{
    int n = std::strcmp(m_pszData, psz ? psz : "");
    return (n > 0) - (n < 0);
}

int CStringA::CompareNoCase(PCXSTR psz) const
{
    int n = _stricmp(m_pszData, psz ? psz : "");
    return (n > 0) - (n < 0);
}

void CStringA::FormatV(PCXSTR pszFormat, va_list args)
{
    if (!pszFormat)
        AfxThrowInvalidArgException();
    CStringA result;
    result.AppendFormatV(pszFormat, args);
    *this = std::move(result);
}

void CStringA::AppendFormatV(PCXSTR pszFormat, va_list args)
{
    if (!pszFormat)
        AfxThrowInvalidArgException();
    va_list copy;
    va_copy(copy, args);
    int n = _vscprintf(pszFormat, copy);
    va_end(copy);
    if (n < 0)
        AfxThrowInvalidArgException();
    std::string text(static_cast<size_t>(n) + 1, '\0');
    va_copy(copy, args);
    _vsnprintf(&text[0], text.size(), pszFormat, copy);
    va_end(copy);
    Append(text.data(), n);
}

void AFX_CDECL CStringA::FormatUnchecked(PCXSTR pszFormat, ...)
{
    va_list args;
    va_start(args, pszFormat);
    FormatV(pszFormat, args);
    va_end(args);
}

void AFX_CDECL CStringA::AppendFormatUnchecked(PCXSTR pszFormat, ...)
{
    va_list args;
    va_start(args, pszFormat);
    AppendFormatV(pszFormat, args);
    va_end(args);
}

int CStringA::Find(XCHAR ch, int iStart) const noexcept
{
    if (iStart < 0 || iStart >= m_nLength)
        return -1;
    const void* hit = std::memchr(m_pszData + iStart, ch, static_cast<size_t>(m_nLength - iStart));
    return hit ? static_cast<int>(static_cast<const char*>(hit) - m_pszData) : -1;
}

int CStringA::Find(PCXSTR pszSub, int iStart) const noexcept
{
    if (!pszSub || iStart < 0 || iStart > m_nLength)
        return -1;
    size_t at = std::string(m_pszData, static_cast<size_t>(m_nLength)).find(pszSub, static_cast<size_t>(iStart));
    return at == std::string::npos ? -1 : static_cast<int>(at);
}

int CStringA::ReverseFind(XCHAR ch) const noexcept
{
    for (int i = m_nLength - 1; i >= 0; --i)
        if (m_pszData[i] == ch)
            return i;
    return -1;
}

CStringA CStringA::Left(int nCount) const
{
    return Mid(0, nCount);
}

CStringA CStringA::Right(int nCount) const
{
    nCount = std::min(std::max(nCount, 0), m_nLength);
    return CStringA(m_pszData + m_nLength - nCount, nCount);
}

CStringA CStringA::Mid(int iFirst) const
{
    return Mid(iFirst, m_nLength - std::max(iFirst, 0));
}

CStringA CStringA::Mid(int iFirst, int nCount) const
{
    iFirst = std::max(iFirst, 0);
    nCount = std::max(nCount, 0);
    if (iFirst >= m_nLength)
        return CStringA();
    if (static_cast<long long>(iFirst) + nCount > m_nLength)
        nCount = m_nLength - iFirst;
    return CStringA(m_pszData + iFirst, nCount);
}

int CStringA::Replace(XCHAR chOld, XCHAR chNew)
{
    if (chOld == chNew)
        return 0;
    int count = 0;
    for (int i = 0; i < m_nLength; ++i) {
        if (m_pszData[i] == chOld) {
            m_pszData[i] = chNew;
            ++count;
        }
    }
    return count;
}

int CStringA::Replace(PCXSTR pszOld, PCXSTR pszNew)
{
    if (!pszOld || !*pszOld)
        return 0;
    std::string from(pszOld), to(pszNew ? pszNew : ""), s(m_pszData, static_cast<size_t>(m_nLength)), out;
    int count = 0;
    size_t pos = 0;
    for (size_t at; (at = s.find(from, pos)) != std::string::npos; pos = at + from.size(), ++count)
        out.append(s, pos, at - pos).append(to);
    if (count == 0)
        return 0;
    out.append(s, pos, std::string::npos);
    if (out.size() > INT_MAX / 2)
        AfxThrowMemoryException();
    SetString(out.data(), static_cast<int>(out.size()));
    return count;
}

CStringA& CStringA::MakeUpper()
{
    if (m_nLength)
        CharUpperBuffA(m_pszData, static_cast<DWORD>(m_nLength));
    return *this;
}

CStringA& CStringA::MakeLower()
{
    if (m_nLength)
        CharLowerBuffA(m_pszData, static_cast<DWORD>(m_nLength));
    return *this;
}

CStringA& CStringA::TrimRight()
{
    int n = m_nLength;
    while (n > 0 && std::isspace(static_cast<unsigned char>(m_pszData[n - 1])))
        --n;
    if (n < m_nLength) {
        m_nLength = n;
        m_pszData[n] = 0;
    }
    return *this;
}

CStringA& CStringA::TrimLeft()
{
    int n = 0;
    while (n < m_nLength && std::isspace(static_cast<unsigned char>(m_pszData[n])))
        ++n;
    if (n > 0) {
        std::memmove(m_pszData, m_pszData + n, static_cast<size_t>(m_nLength - n) + 1);
        m_nLength -= n;
    }
    return *this;
}

CStringA& CStringA::Trim()
{
    return TrimRight().TrimLeft();
}

CStringA::PXSTR CStringA::GetBuffer()
{
    return GetBuffer(m_nLength);
}

CStringA::PXSTR CStringA::GetBuffer(int nMinBufferLength)
{
    Reserve(std::max(nMinBufferLength, std::max(m_nLength, 1)));
    return m_pszData;
}

CStringA::PXSTR CStringA::GetBufferSetLength(int nLength)
{
    if (nLength < 0)
        AfxThrowInvalidArgException();
    PXSTR p = GetBuffer(nLength);
    m_nLength = nLength;
    p[nLength] = 0;
    return p;
}

void CStringA::ReleaseBuffer(int nNewLength)
{
    if (!m_nAlloc) {
        if (nNewLength > 0)
            AfxThrowInvalidArgException();
        return;
    }
    if (nNewLength == -1)
        nNewLength = static_cast<int>(strnlen(m_pszData, static_cast<size_t>(m_nAlloc)));
    if (nNewLength < 0 || nNewLength > m_nAlloc)
        AfxThrowInvalidArgException();
    m_nLength = nNewLength;
    m_pszData[nNewLength] = 0;
}

CStringA AFXAPI operator+(const CStringA& str1, const CStringA& str2)
{
    CStringA s(str1);
    s += str2;
    return s;
}

CStringA AFXAPI operator+(const CStringA& str1, LPCSTR psz2)
{
    CStringA s(str1);
    s += psz2;
    return s;
}

CStringA AFXAPI operator+(LPCSTR psz1, const CStringA& str2)
{
    CStringA s(psz1);
    s += str2;
    return s;
}

CStringA AFXAPI operator+(const CStringA& str1, char ch2)
{
    CStringA s(str1);
    s += ch2;
    return s;
}

/////////////////////////////////////////////////////////////////////////////
// CString from narrow strings

CString::CString(const CStringA& strSrc) : CString()
{
    AssignAnsi(strSrc.GetString(), strSrc.GetLength());
}

CString& CString::operator=(const CStringA& strSrc)
{
    AssignAnsi(strSrc.GetString(), strSrc.GetLength());
    return *this;
}
