// CString: reference-counted wide string with copy on write.
#include "afx.h"
#include <algorithm>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <cwctype>
#include <oleauto.h>
#include <utility>

namespace {

// The shared empty string. Its count never changes and reads as "shared", so every write
// to an empty string allocates a block of its own.
struct NilString {
    CStringData hdr;
    wchar_t zero[4];
};
NilString g_nil = {{2, 0, 0, 0}, {0, 0, 0, 0}};

inline CStringData* Nil() noexcept { return &g_nil.hdr; }

// Longest string whose block size still fits an int.
const int kMaxLength = static_cast<int>((INT_MAX - sizeof(CStringData)) / sizeof(wchar_t)) - 1;

size_t BlockSize(int nAlloc) noexcept
{
    return sizeof(CStringData) + (static_cast<size_t>(nAlloc) + 1) * sizeof(wchar_t);
}

// Capacity rounded up so that the characters and terminator fill whole 16-byte units,
// which the heap would round to anyway, and at least 15 characters: short strings built
// piece by piece (a + b + c, a few appends) then mostly stay in their first block.
int RoundCapacity(int nAlloc) noexcept
{
    if (nAlloc < 15)
        return 15;
    return nAlloc >= kMaxLength - 8 ? kMaxLength : ((nAlloc + 8) & ~7) - 1;
}

CStringData* Allocate(int nAlloc)
{
    if (nAlloc < 0 || nAlloc > kMaxLength)
        AfxThrowMemoryException();
    nAlloc = RoundCapacity(nAlloc);
    auto* p = static_cast<CStringData*>(std::malloc(BlockSize(nAlloc)));
    if (!p)
        AfxThrowMemoryException();
    p->nRefs = 1;
    p->nDataLength = 0;
    p->nAllocLength = nAlloc;
    p->nReserved = 0;
    p->data()[0] = 0;
    return p;
}

inline void AddRef(CStringData* p) noexcept
{
    if (p != Nil())
        InterlockedIncrement(&p->nRefs);
}

inline void Release(CStringData* p) noexcept
{
    if (p == Nil())
        return;
    if (p->IsLocked() || InterlockedDecrement(&p->nRefs) == 0)
        std::free(p);
}

// A new block holding a copy of n characters (exactly n, embedded zeros included).
CStringData* Clone(const wchar_t* src, int n, int nAlloc)
{
    CStringData* p = Allocate(std::max(n, nAlloc));
    if (n > 0)
        wmemcpy(p->data(), src, n);
    p->nDataLength = n;
    p->data()[n] = 0;
    return p;
}

int CheckedSum(int a, int b)
{
    if (b > kMaxLength - a)
        AfxThrowMemoryException();
    return a + b;
}

bool InSet(wchar_t c, LPCWSTR set) noexcept { return c != 0 && std::wcschr(set, c) != nullptr; }

// Position of sub (n characters) in [s, s+len) from start, or -1; works across embedded zeros.
int FindIn(const wchar_t* s, int len, int start, const wchar_t* sub, int n) noexcept
{
    if (n == 0)
        return start;
    for (int i = start; i + n <= len; ++i) {
        const wchar_t* hit = wmemchr(s + i, sub[0], len - n + 1 - i);
        if (!hit)
            return -1;
        i = static_cast<int>(hit - s);
        if (wmemcmp(hit, sub, n) == 0)
            return i;
    }
    return -1;
}

}  // namespace

/////////////////////////////////////////////////////////////////////////////
// Blocks

// Makes the block private to this string and able to hold nLength characters; the
// contents are kept. Returns the characters.
CString::PXSTR CString::PrepareWrite(int nLength)
{
    CStringData* d = GetData();
    if (d->IsShared())
        Fork(std::max(nLength, d->nDataLength));
    else if (d->nAllocLength < nLength)
        Grow(nLength);
    return m_pszData;
}

void CString::Fork(int nAlloc)
{
    CStringData* old = GetData();
    CStringData* p = Clone(m_pszData, old->nDataLength, nAlloc);
    Release(old);
    m_pszData = p->data();
}

// Enlarges a private block, by half its size at least so that repeated appends stay linear.
void CString::Grow(int nLength)
{
    CStringData* old = GetData();
    int nAlloc = old->nAllocLength;
    nAlloc = nAlloc > kMaxLength - nAlloc / 2 ? kMaxLength : nAlloc + nAlloc / 2;
    if (nLength > kMaxLength)
        AfxThrowMemoryException();
    nAlloc = RoundCapacity(std::max(nAlloc, nLength));
    auto* p = static_cast<CStringData*>(std::realloc(old, BlockSize(nAlloc)));
    if (!p)
        AfxThrowMemoryException();
    p->nAllocLength = nAlloc;
    m_pszData = p->data();
}

// Takes over a new block (count 1), keeping a lock on the buffer.
void CString::AttachData(CStringData* pNewData) noexcept
{
    CStringData* old = GetData();
    if (old->IsLocked())
        pNewData->nRefs = -1;
    Release(old);
    m_pszData = pNewData->data();
}

void CString::SetLength(int nLength) noexcept
{
    GetData()->nDataLength = nLength;
    m_pszData[nLength] = 0;
}

void CString::AssignAnsi(PCYSTR psz, int nLength)
{
    if (!psz || nLength <= 0) {
        Empty();
        return;
    }
    int n = MultiByteToWideChar(CP_ACP, 0, psz, nLength, nullptr, 0);
    if (n <= 0) {
        Empty();
        return;
    }
    CStringData* p = Allocate(n);
    MultiByteToWideChar(CP_ACP, 0, psz, nLength, p->data(), n);
    p->nDataLength = n;
    p->data()[n] = 0;
    AttachData(p);
}

/////////////////////////////////////////////////////////////////////////////
// Construction and assignment

CString::CString() noexcept : m_pszData(Nil()->data()) {}

CString::CString(const CString& strSrc) : m_pszData(Nil()->data())
{
    *this = strSrc;
}

CString::CString(CString&& strSrc) noexcept : m_pszData(strSrc.m_pszData)
{
    strSrc.m_pszData = Nil()->data();
}

CString::CString(PCXSTR pszSrc) : m_pszData(Nil()->data())
{
    // A resource id in place of a pointer (MAKEINTRESOURCE) is not text.
    if (pszSrc && !IS_INTRESOURCE(pszSrc))
        SetString(pszSrc);
}

CString::CString(PCYSTR pszSrc) : m_pszData(Nil()->data())
{
    if (pszSrc && !IS_INTRESOURCE(pszSrc))
        AssignAnsi(pszSrc, static_cast<int>(std::min<size_t>(std::strlen(pszSrc), INT_MAX)));
}

CString::CString(const unsigned char* pszSrc) : CString(reinterpret_cast<PCYSTR>(pszSrc)) {}

CString::CString(PCXSTR pch, int nLength) : m_pszData(Nil()->data())
{
    if (nLength < 0)
        AfxThrowInvalidArgException();
    if (pch)
        SetString(pch, nLength);
}

CString::CString(PCYSTR pch, int nLength) : m_pszData(Nil()->data())
{
    if (nLength < 0)
        AfxThrowInvalidArgException();
    AssignAnsi(pch, nLength);
}

CString::CString(XCHAR ch, int nRepeat) : m_pszData(Nil()->data())
{
    if (nRepeat > 0) {
        CStringData* p = Allocate(nRepeat);
        wmemset(p->data(), ch, nRepeat);
        p->nDataLength = nRepeat;
        p->data()[nRepeat] = 0;
        m_pszData = p->data();
    }
}

CString::CString(YCHAR ch, int nRepeat) : m_pszData(Nil()->data())
{
    wchar_t w = 0;
    if (nRepeat > 0 && MultiByteToWideChar(CP_ACP, 0, &ch, 1, &w, 1) == 1)
        *this = CString(w, nRepeat);
}

CString::~CString() noexcept
{
    Release(GetData());
}

CString& CString::operator=(const CString& strSrc)
{
    CStringData* src = strSrc.GetData();
    CStringData* old = GetData();
    if (src == old)
        return *this;
    if (src->IsLocked() || old->IsLocked()) {
        // A locked buffer is never shared: copy the characters.
        SetString(strSrc.m_pszData, src->nDataLength);
    } else {
        AddRef(src);
        Release(old);
        m_pszData = strSrc.m_pszData;
    }
    return *this;
}

CString& CString::operator=(CString&& strSrc) noexcept
{
    if (this != &strSrc) {
        Release(GetData());
        m_pszData = strSrc.m_pszData;
        strSrc.m_pszData = Nil()->data();
    }
    return *this;
}

CString& CString::operator=(PCXSTR pszSrc)
{
    SetString(pszSrc);
    return *this;
}

CString& CString::operator=(PCYSTR pszSrc)
{
    if (pszSrc)
        AssignAnsi(pszSrc, static_cast<int>(std::min<size_t>(std::strlen(pszSrc), INT_MAX)));
    else
        Empty();
    return *this;
}

CString& CString::operator=(const unsigned char* pszSrc)
{
    return *this = reinterpret_cast<PCYSTR>(pszSrc);
}

CString& CString::operator=(XCHAR ch)
{
    SetString(&ch, 1);
    return *this;
}

CString& CString::operator=(YCHAR ch)
{
    return *this = CString(ch);
}

CString& CString::operator+=(const CString& str)
{
    Append(str.m_pszData, str.GetLength());
    return *this;
}

CString& CString::operator+=(PCXSTR psz)
{
    // The most frequent append: measure and copy in one pass when the text fits the
    // private block and does not come from it.
    CStringData* d = GetData();
    ptrdiff_t offset = psz - m_pszData;
    if (psz && !d->IsShared() && !(offset >= 0 && offset <= d->nAllocLength)) {
        int nOld = d->nDataLength, room = d->nAllocLength - nOld, n = 0;
        wchar_t* dst = m_pszData + nOld;
        while (n < room && psz[n]) {
            dst[n] = psz[n];
            ++n;
        }
        if (!psz[n]) {
            SetLength(nOld + n);
            return *this;
        }
        dst[0] = 0;  // did not fit: append the usual way
    }
    Append(psz);
    return *this;
}

CString& CString::operator+=(PCYSTR psz)
{
    CString s(psz);
    Append(s);
    return *this;
}

CString& CString::operator+=(YCHAR ch)
{
    CString s(ch);
    Append(s);
    return *this;
}

void CString::Empty() noexcept
{
    CStringData* d = GetData();
    if (d->IsLocked()) {
        SetLength(0);
    } else {
        Release(d);
        m_pszData = Nil()->data();
    }
}

void CString::SetAt(int iChar, XCHAR ch)
{
    if (iChar < 0 || iChar >= GetLength())
        AfxThrowInvalidArgException();
    PrepareWrite(GetLength())[iChar] = ch;
}

void CString::SetString(PCXSTR pszSrc)
{
    if (!pszSrc)
        Empty();
    else
        SetString(pszSrc, static_cast<int>(std::min<size_t>(std::wcslen(pszSrc), INT_MAX)));
}

void CString::SetString(PCXSTR pszSrc, int nLength)
{
    if (nLength < 0)
        AfxThrowInvalidArgException();
    if (!pszSrc || nLength == 0) {
        Empty();
        return;
    }
    // The source may lie in this string's own block, which PrepareWrite may move.
    ptrdiff_t offset = pszSrc - m_pszData;
    bool inside = offset >= 0 && offset <= GetData()->nAllocLength;
    PXSTR p = PrepareWrite(nLength);
    wmemmove(p, inside ? p + offset : pszSrc, nLength);
    SetLength(nLength);
}

void CString::Append(const CString& strSrc)
{
    Append(strSrc.m_pszData, strSrc.GetLength());
}

void CString::Append(PCXSTR pszSrc)
{
    if (pszSrc)
        Append(pszSrc, static_cast<int>(std::min<size_t>(std::wcslen(pszSrc), INT_MAX)));
}

void CString::Append(PCXSTR pszSrc, int nLength)
{
    if (nLength < 0)
        AfxThrowInvalidArgException();
    if (!pszSrc || nLength == 0)
        return;
    CStringData* d = GetData();
    int nOld = d->nDataLength;
    if (!d->IsShared() && nLength <= d->nAllocLength - nOld) {
        // Room in a private block: nothing moves, and a source inside this string lies
        // before the end it is copied to.
        wchar_t* dst = m_pszData + nOld;
        if (nLength <= 16) {
            for (int i = 0; i < nLength; ++i)
                dst[i] = pszSrc[i];
        } else {
            wmemmove(dst, pszSrc, nLength);
        }
        SetLength(nOld + nLength);
        return;
    }
    ptrdiff_t offset = pszSrc - m_pszData;
    bool inside = offset >= 0 && offset <= d->nAllocLength;
    int nNew = CheckedSum(nOld, nLength);
    PXSTR p = PrepareWrite(nNew);
    wmemcpy(p + nOld, inside ? p + offset : pszSrc, nLength);
    SetLength(nNew);
}

void CString::AppendChar(XCHAR ch)
{
    CStringData* d = GetData();
    int nOld = d->nDataLength;
    if (!d->IsShared() && nOld < d->nAllocLength) {
        m_pszData[nOld] = ch;
        SetLength(nOld + 1);
        return;
    }
    PXSTR p = PrepareWrite(CheckedSum(nOld, 1));
    p[nOld] = ch;
    SetLength(nOld + 1);
}

void CString::Truncate(int nNewLength)
{
    if (nNewLength < 0 || nNewLength > GetLength())
        AfxThrowInvalidArgException();
    if (nNewLength == GetLength())
        return;
    if (nNewLength == 0 && !GetData()->IsLocked()) {
        Empty();
        return;
    }
    PrepareWrite(nNewLength);
    SetLength(nNewLength);
}

void CString::Preallocate(int nLength)
{
    CStringData* d = GetData();
    if (d->IsShared())
        Fork(std::max(nLength, d->nDataLength));
    else if (nLength > d->nAllocLength) {
        if (nLength > kMaxLength)
            AfxThrowMemoryException();
        auto* p = static_cast<CStringData*>(std::realloc(d, BlockSize(nLength)));
        if (!p)
            AfxThrowMemoryException();
        p->nAllocLength = nLength;
        m_pszData = p->data();
    }
}

void CString::FreeExtra()
{
    CStringData* d = GetData();
    if (d == Nil() || d->IsShared() || d->nAllocLength == d->nDataLength)
        return;
    if (auto* p = static_cast<CStringData*>(std::realloc(d, BlockSize(d->nDataLength)))) {
        p->nAllocLength = p->nDataLength;
        m_pszData = p->data();
    }
}

/////////////////////////////////////////////////////////////////////////////
// Comparison

// Comparisons answer exactly -1, 0 or 1, as the platform's string comparisons do; callers
// (sort routines) may rely on the values.
namespace {
inline int Sign(int n) noexcept { return (n > 0) - (n < 0); }
}  // namespace

int CString::Compare(PCXSTR psz) const
{
    return Sign(std::wcscmp(m_pszData, psz ? psz : L""));
}

int CString::CompareNoCase(PCXSTR psz) const
{
    return Sign(_wcsicmp(m_pszData, psz ? psz : L""));
}

int CString::Collate(PCXSTR psz) const
{
    return Sign(std::wcscoll(m_pszData, psz ? psz : L""));
}

int CString::CollateNoCase(PCXSTR psz) const
{
    return Sign(_wcsicoll(m_pszData, psz ? psz : L""));
}

/////////////////////////////////////////////////////////////////////////////
// Formatting through the C runtime's wide printf (MS semantics: %s is wide).

namespace {

// Formats into a stack buffer when the result is short, else into a heap block.
class FormatBuffer {
public:
    FormatBuffer(LPCWSTR pszFormat, va_list args)
    {
        if (!pszFormat)
            AfxThrowInvalidArgException();
        va_list copy;
        va_copy(copy, args);
        m_nLength = _vsnwprintf(m_stack, kStack, pszFormat, copy);
        va_end(copy);
        if (m_nLength >= 0 && m_nLength < kStack)
            return;
        va_copy(copy, args);
        m_nLength = _vscwprintf(pszFormat, copy);
        va_end(copy);
        if (m_nLength < 0)
            AfxThrowInvalidArgException();
        m_heap = Allocate(m_nLength);
        va_copy(copy, args);
        _vsnwprintf(m_heap->data(), m_nLength + 1, pszFormat, copy);
        va_end(copy);
        m_heap->data()[m_nLength] = 0;
        m_heap->nDataLength = m_nLength;
    }
    ~FormatBuffer()
    {
        if (m_heap)
            Release(m_heap);
    }
    FormatBuffer(const FormatBuffer&) = delete;
    FormatBuffer& operator=(const FormatBuffer&) = delete;

    const wchar_t* Text() const noexcept { return m_heap ? m_heap->data() : m_stack; }
    int Length() const noexcept { return m_nLength; }
    // The heap block, handed over; null when the text is on the stack.
    CStringData* Heap() noexcept
    {
        CStringData* p = m_heap;
        m_heap = nullptr;
        return p;
    }

private:
    static const int kStack = 256;
    wchar_t m_stack[kStack];
    int m_nLength = 0;
    CStringData* m_heap = nullptr;
};

}  // namespace

void CString::FormatV(PCXSTR pszFormat, va_list args)
{
    FormatBuffer buf(pszFormat, args);
    if (CStringData* p = buf.Heap())
        AttachData(p);
    else
        SetString(buf.Text(), buf.Length());
}

void CString::AppendFormatV(PCXSTR pszFormat, va_list args)
{
    FormatBuffer buf(pszFormat, args);
    Append(buf.Text(), buf.Length());
}

void AFX_CDECL CString::FormatUnchecked(PCXSTR pszFormat, ...)
{
    va_list args;
    va_start(args, pszFormat);
    FormatV(pszFormat, args);
    va_end(args);
}

void AFX_CDECL CString::AppendFormatUnchecked(PCXSTR pszFormat, ...)
{
    va_list args;
    va_start(args, pszFormat);
    AppendFormatV(pszFormat, args);
    va_end(args);
}

void CString::FormatMessageV(PCXSTR pszFormat, va_list* pArgList)
{
    if (!pszFormat)
        AfxThrowInvalidArgException();
    LPWSTR text = nullptr;
    DWORD n = ::FormatMessageW(FORMAT_MESSAGE_FROM_STRING | FORMAT_MESSAGE_ALLOCATE_BUFFER, pszFormat, 0, 0,
                               reinterpret_cast<LPWSTR>(&text), 0, pArgList);
    if (n == 0) {
        if (text)
            LocalFree(text);
        if (*pszFormat)
            AfxThrowInvalidArgException();  // malformed insert
        Empty();
        return;
    }
    struct Free {
        LPWSTR p;
        ~Free() { LocalFree(p); }
    } guard{text};
    SetString(text, static_cast<int>(n));
}

void AFX_CDECL CString::FormatMessageUnchecked(PCXSTR pszFormat, ...)
{
    va_list args;
    va_start(args, pszFormat);
    try {
        FormatMessageV(pszFormat, &args);
    } catch (...) {
        va_end(args);
        throw;
    }
    va_end(args);
}

/////////////////////////////////////////////////////////////////////////////
// Searching and extraction

int CString::Find(XCHAR ch, int iStart) const noexcept
{
    int len = GetLength();
    if (iStart < 0 || iStart >= len)
        return -1;
    const wchar_t* hit = wmemchr(m_pszData + iStart, ch, len - iStart);
    return hit ? static_cast<int>(hit - m_pszData) : -1;
}

int CString::Find(PCXSTR pszSub, int iStart) const noexcept
{
    int len = GetLength();
    if (!pszSub || iStart < 0 || iStart > len)
        return -1;
    return FindIn(m_pszData, len, iStart, pszSub, static_cast<int>(std::wcslen(pszSub)));
}

int CString::ReverseFind(XCHAR ch) const noexcept
{
    for (int i = GetLength() - 1; i >= 0; --i)
        if (m_pszData[i] == ch)
            return i;
    return -1;
}

int CString::FindOneOf(PCXSTR pszCharSet) const noexcept
{
    if (!pszCharSet)
        return -1;
    int len = GetLength();
    for (int i = 0; i < len; ++i)
        if (InSet(m_pszData[i], pszCharSet))
            return i;
    return -1;
}

CString CString::Left(int nCount) const
{
    if (nCount >= GetLength())
        return *this;
    return nCount > 0 ? CString(m_pszData, nCount) : CString();
}

CString CString::Right(int nCount) const
{
    int len = GetLength();
    if (nCount >= len)
        return *this;
    return nCount > 0 ? CString(m_pszData + len - nCount, nCount) : CString();
}

CString CString::Mid(int iFirst) const
{
    return Mid(iFirst, GetLength() - std::max(iFirst, 0));
}

CString CString::Mid(int iFirst, int nCount) const
{
    int len = GetLength();
    iFirst = std::max(iFirst, 0);
    nCount = std::max(nCount, 0);
    if (iFirst >= len || nCount == 0)
        return CString();
    if (static_cast<long long>(iFirst) + nCount > len)
        nCount = len - iFirst;
    if (iFirst == 0 && nCount == len)
        return *this;
    return CString(m_pszData + iFirst, nCount);
}

CString CString::SpanIncluding(PCXSTR pszCharSet) const
{
    int len = GetLength(), n = 0;
    if (pszCharSet)
        while (n < len && InSet(m_pszData[n], pszCharSet))
            ++n;
    return Left(n);
}

CString CString::SpanExcluding(PCXSTR pszCharSet) const
{
    int len = GetLength(), n = 0;
    while (n < len && !(pszCharSet && InSet(m_pszData[n], pszCharSet)))
        ++n;
    return Left(n);
}

CString CString::Tokenize(PCXSTR pszTokens, int& iStart) const
{
    int len = GetLength();
    if (iStart >= 0 && iStart < len) {
        if (!pszTokens || !*pszTokens) {
            // No delimiters: the rest is one token.
            CString rest(m_pszData + iStart, len - iStart);
            iStart = len;
            return rest;
        }
        int from = iStart;
        while (from < len && InSet(m_pszData[from], pszTokens))
            ++from;
        if (from < len) {
            int until = from;
            while (until < len && !InSet(m_pszData[until], pszTokens))
                ++until;
            iStart = until + 1;
            return CString(m_pszData + from, until - from);
        }
    }
    iStart = -1;
    return CString();
}

/////////////////////////////////////////////////////////////////////////////
// Editing

int CString::Replace(XCHAR chOld, XCHAR chNew)
{
    if (chOld == chNew)
        return 0;
    int len = GetLength();
    int count = static_cast<int>(std::count(m_pszData, m_pszData + len, chOld));
    if (count == 0)
        return 0;
    PXSTR p = PrepareWrite(len);
    std::replace(p, p + len, chOld, chNew);
    return count;
}

int CString::Replace(PCXSTR pszOld, PCXSTR pszNew)
{
    if (!pszOld || !*pszOld)
        return 0;
    if (!pszNew)
        pszNew = L"";
    // The arguments may point into this string: they are only read here, and the old
    // block stays alive until the new one has been built.
    int len = GetLength();
    int nOld = static_cast<int>(std::wcslen(pszOld));
    int nNew = static_cast<int>(std::wcslen(pszNew));
    int count = 0;
    for (int i = FindIn(m_pszData, len, 0, pszOld, nOld); i >= 0; i = FindIn(m_pszData, len, i + nOld, pszOld, nOld))
        ++count;
    if (count == 0)
        return 0;
    long long newLen = len + static_cast<long long>(count) * (nNew - nOld);
    if (newLen > kMaxLength)
        AfxThrowMemoryException();
    CStringData* p = Allocate(static_cast<int>(newLen));
    wchar_t* out = p->data();
    int from = 0;
    for (int i = FindIn(m_pszData, len, 0, pszOld, nOld); i >= 0; i = FindIn(m_pszData, len, from, pszOld, nOld)) {
        out = std::copy(m_pszData + from, m_pszData + i, out);
        out = std::copy(pszNew, pszNew + nNew, out);
        from = i + nOld;
    }
    out = std::copy(m_pszData + from, m_pszData + len, out);
    *out = 0;
    p->nDataLength = static_cast<int>(newLen);
    AttachData(p);
    return count;
}

int CString::Remove(XCHAR chRemove)
{
    int len = GetLength();
    int count = static_cast<int>(std::count(m_pszData, m_pszData + len, chRemove));
    if (count == 0)
        return 0;
    PXSTR p = PrepareWrite(len);
    std::remove(p, p + len, chRemove);
    SetLength(len - count);
    return count;
}

int CString::Insert(int iIndex, XCHAR ch)
{
    int len = GetLength();
    iIndex = std::min(std::max(iIndex, 0), len);
    PXSTR p = PrepareWrite(CheckedSum(len, 1));
    wmemmove(p + iIndex + 1, p + iIndex, len - iIndex);
    p[iIndex] = ch;
    SetLength(len + 1);
    return len + 1;
}

int CString::Insert(int iIndex, PCXSTR psz)
{
    int len = GetLength();
    if (!psz || !*psz)
        return len;
    iIndex = std::min(std::max(iIndex, 0), len);
    ptrdiff_t offset = psz - m_pszData;
    if (offset >= 0 && offset <= GetData()->nAllocLength) {
        CString copy(psz);  // text from this very string: the move below would overwrite it
        return Insert(iIndex, copy.m_pszData);
    }
    int n = static_cast<int>(std::min<size_t>(std::wcslen(psz), INT_MAX));
    int newLen = CheckedSum(len, n);
    PXSTR p = PrepareWrite(newLen);
    wmemmove(p + iIndex + n, p + iIndex, len - iIndex);
    wmemcpy(p + iIndex, psz, n);
    SetLength(newLen);
    return newLen;
}

int CString::Delete(int iIndex, int nCount)
{
    int len = GetLength();
    iIndex = std::max(iIndex, 0);
    nCount = std::max(nCount, 0);
    if (static_cast<long long>(iIndex) + nCount > len)
        nCount = len - iIndex;
    if (nCount > 0) {
        PXSTR p = PrepareWrite(len);
        wmemmove(p + iIndex, p + iIndex + nCount, len - iIndex - nCount);
        SetLength(len - nCount);
    }
    return GetLength();
}

CString& CString::MakeUpper()
{
    if (int len = GetLength())
        CharUpperBuffW(PrepareWrite(len), static_cast<DWORD>(len));
    return *this;
}

CString& CString::MakeLower()
{
    if (int len = GetLength())
        CharLowerBuffW(PrepareWrite(len), static_cast<DWORD>(len));
    return *this;
}

CString& CString::MakeReverse()
{
    if (int len = GetLength()) {
        PXSTR p = PrepareWrite(len);
        std::reverse(p, p + len);
    }
    return *this;
}

/////////////////////////////////////////////////////////////////////////////
// Trimming: nothing is written (or copied) when there is nothing to trim.

namespace {

template <class Pred>
void TrimRightIf(CString& s, Pred trim)
{
    LPCWSTR p = s.GetString();
    int n = s.GetLength();
    while (n > 0 && trim(p[n - 1]))
        --n;
    if (n < s.GetLength())
        s.Truncate(n);
}

template <class Pred>
void TrimLeftIf(CString& s, Pred trim)
{
    LPCWSTR p = s.GetString();
    int len = s.GetLength(), n = 0;
    while (n < len && trim(p[n]))
        ++n;
    if (n > 0)
        s.Delete(0, n);
}

bool IsSpace(wchar_t c) noexcept { return std::iswspace(c) != 0; }

}  // namespace

CString& CString::TrimRight()
{
    TrimRightIf(*this, IsSpace);
    return *this;
}

CString& CString::TrimRight(XCHAR chTarget)
{
    TrimRightIf(*this, [chTarget](wchar_t c) { return c == chTarget; });
    return *this;
}

CString& CString::TrimRight(PCXSTR pszTargets)
{
    if (pszTargets && *pszTargets)
        TrimRightIf(*this, [pszTargets](wchar_t c) { return InSet(c, pszTargets); });
    return *this;
}

CString& CString::TrimLeft()
{
    TrimLeftIf(*this, IsSpace);
    return *this;
}

CString& CString::TrimLeft(XCHAR chTarget)
{
    TrimLeftIf(*this, [chTarget](wchar_t c) { return c == chTarget; });
    return *this;
}

CString& CString::TrimLeft(PCXSTR pszTargets)
{
    if (pszTargets && *pszTargets)
        TrimLeftIf(*this, [pszTargets](wchar_t c) { return InSet(c, pszTargets); });
    return *this;
}

CString& CString::Trim()
{
    return TrimRight().TrimLeft();
}

CString& CString::Trim(XCHAR chTarget)
{
    return TrimRight(chTarget).TrimLeft(chTarget);
}

CString& CString::Trim(PCXSTR pszTargets)
{
    return TrimRight(pszTargets).TrimLeft(pszTargets);
}

/////////////////////////////////////////////////////////////////////////////
// Buffer access

CString::PXSTR CString::GetBuffer()
{
    return PrepareWrite(GetLength());
}

CString::PXSTR CString::GetBuffer(int nMinBufferLength)
{
    return PrepareWrite(std::max(nMinBufferLength, GetLength()));
}

CString::PXSTR CString::GetBufferSetLength(int nLength)
{
    if (nLength < 0)
        AfxThrowInvalidArgException();
    PXSTR p = PrepareWrite(nLength);
    SetLength(nLength);
    return p;
}

void CString::ReleaseBuffer(int nNewLength)
{
    CStringData* d = GetData();
    if (d == Nil())
        return;
    if (nNewLength == -1)
        nNewLength = static_cast<int>(wcsnlen(m_pszData, d->nAllocLength));
    ReleaseBufferSetLength(nNewLength);
}

void CString::ReleaseBufferSetLength(int nNewLength)
{
    if (nNewLength < 0 || nNewLength > GetData()->nAllocLength)
        AfxThrowInvalidArgException();
    if (GetData() == Nil())
        return;
    PrepareWrite(nNewLength);  // never write into a block another string shares
    SetLength(nNewLength);
}

CString::PXSTR CString::LockBuffer()
{
    CStringData* d = GetData();
    if (d->IsShared()) {
        Fork(d->nDataLength);
        d = GetData();
    }
    d->nRefs = -1;
    return m_pszData;
}

void CString::UnlockBuffer() noexcept
{
    CStringData* d = GetData();
    if (d->IsLocked())
        d->nRefs = 1;
}

/////////////////////////////////////////////////////////////////////////////
// Resources and OLE

BOOL CString::LoadString(HINSTANCE hInstance, UINT nID)
{
    // With a zero buffer size LoadStringW returns a pointer to the resource text itself,
    // which is not zero-terminated, and its exact length.
    const wchar_t* p = nullptr;
    int n = ::LoadStringW(hInstance, nID, reinterpret_cast<LPWSTR>(&p), 0);
    if (n <= 0 || !p)
        return FALSE;
    SetString(p, n);
    return TRUE;
}

BSTR CString::AllocSysString() const
{
    BSTR b = SysAllocStringLen(m_pszData, static_cast<UINT>(GetLength()));
    if (!b)
        AfxThrowMemoryException();
    return b;
}

BSTR CString::SetSysString(BSTR* pbstr) const
{
    if (!pbstr)
        AfxThrowInvalidArgException();
    if (!SysReAllocStringLen(pbstr, m_pszData, static_cast<UINT>(GetLength())))
        AfxThrowMemoryException();
    return *pbstr;
}

/////////////////////////////////////////////////////////////////////////////
// Concatenation

CString AFXAPI operator+(const CString& str1, const CString& str2)
{
    if (str1.IsEmpty())
        return str2;
    CString s;
    s.Preallocate(str1.GetLength() + str2.GetLength());
    s.Append(str1);
    s.Append(str2);
    return s;
}

CString AFXAPI operator+(const CString& str1, LPCWSTR psz2)
{
    CString s;
    s.Preallocate(str1.GetLength() + (psz2 ? static_cast<int>(std::wcslen(psz2)) : 0));
    s.Append(str1);
    s.Append(psz2);
    return s;
}

CString AFXAPI operator+(LPCWSTR psz1, const CString& str2)
{
    CString s;
    s.Preallocate(str2.GetLength() + (psz1 ? static_cast<int>(std::wcslen(psz1)) : 0));
    s.Append(psz1);
    s.Append(str2);
    return s;
}

CString AFXAPI operator+(const CString& str1, wchar_t ch2)
{
    CString s;
    s.Preallocate(str1.GetLength() + 1);
    s.Append(str1);
    s.AppendChar(ch2);
    return s;
}

CString AFXAPI operator+(wchar_t ch1, const CString& str2)
{
    CString s;
    s.Preallocate(str2.GetLength() + 1);
    s.AppendChar(ch1);
    s.Append(str2);
    return s;
}

CString AFXAPI operator+(const CString& str1, char ch2)
{
    return str1 + CString(ch2);
}

CString AFXAPI operator+(char ch1, const CString& str2)
{
    return CString(ch1) + str2;
}

CString AFXAPI operator+(CString&& str1, const CString& str2)
{
    str1.Append(str2);
    return std::move(str1);
}

CString AFXAPI operator+(CString&& str1, LPCWSTR psz2)
{
    str1.Append(psz2);
    return std::move(str1);
}

CString AFXAPI operator+(CString&& str1, wchar_t ch2)
{
    str1.AppendChar(ch2);
    return std::move(str1);
}
