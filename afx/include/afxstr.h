// CString: the framework's wide string (CStringW).
//
// The characters live in one heap block behind a small header (reference count, length,
// capacity). Copies share the block and count references; the first change to a shared
// block copies it (copy on write). A locked buffer (LockBuffer) is never shared.
// Every member is safe when its argument points into the string itself (s += s,
// s.Replace(s, ...)).
#pragma once
#include "afxver_.h"
#include <limits.h>
#include <stdarg.h>

[[noreturn]] KXAFX_API void AFXAPI AfxThrowInvalidArgException();

class CStringA;

// Header in front of the characters of a CString.
struct CStringData {
    volatile LONG nRefs;  // sharers; -1 while the buffer is locked
    int nDataLength;      // characters, not counting the terminating zero
    int nAllocLength;     // capacity in characters, not counting the terminating zero
    int nReserved;
    wchar_t* data() noexcept { return reinterpret_cast<wchar_t*>(this + 1); }
    bool IsLocked() const noexcept { return nRefs < 0; }
    bool IsShared() const noexcept { return nRefs > 1; }
};

class KXAFX_API CString {
public:
    typedef wchar_t XCHAR;
    typedef LPWSTR PXSTR;
    typedef LPCWSTR PCXSTR;
    typedef char YCHAR;
    typedef LPSTR PYSTR;
    typedef LPCSTR PCYSTR;

    CString() noexcept;
    CString(const CString& strSrc);
    CString(CString&& strSrc) noexcept;
    CString(PCXSTR pszSrc);
    // Narrow text is converted from the ANSI code page.
    CString(PCYSTR pszSrc);
    CString(const unsigned char* pszSrc);
    CString(PCXSTR pch, int nLength);
    CString(PCYSTR pch, int nLength);
    CString(const CStringA& strSrc);
    explicit CString(XCHAR ch, int nRepeat = 1);
    explicit CString(YCHAR ch, int nRepeat = 1);
    ~CString() noexcept;

    CString& operator=(const CString& strSrc);
    CString& operator=(CString&& strSrc) noexcept;
    CString& operator=(PCXSTR pszSrc);
    CString& operator=(PCYSTR pszSrc);
    CString& operator=(const unsigned char* pszSrc);
    CString& operator=(const CStringA& strSrc);
    CString& operator=(XCHAR ch);
    CString& operator=(YCHAR ch);

    CString& operator+=(const CString& str);
    CString& operator+=(PCXSTR psz);
    CString& operator+=(PCYSTR psz);
    CString& operator+=(XCHAR ch)
    {
        // Inline when the block is private and has room; AppendChar handles the rest.
        CStringData* d = GetData();
        if (d->nRefs == 1 && d->nDataLength < d->nAllocLength) {
            m_pszData[d->nDataLength] = ch;
            m_pszData[++d->nDataLength] = 0;
        } else {
            AppendChar(ch);
        }
        return *this;
    }
    CString& operator+=(YCHAR ch);

    // Length and characters.
    int GetLength() const noexcept { return GetData()->nDataLength; }
    BOOL IsEmpty() const noexcept { return GetData()->nDataLength == 0; }
    void Empty() noexcept;
    int GetAllocLength() const noexcept { return GetData()->nAllocLength; }
    PCXSTR GetString() const noexcept { return m_pszData; }
    operator PCXSTR() const noexcept { return m_pszData; }
    // Index 0..GetLength() (the terminating zero included); anything else throws
    // CInvalidArgException.
    XCHAR GetAt(int iChar) const
    {
        if (static_cast<unsigned>(iChar) > static_cast<unsigned>(GetLength()))
            AfxThrowInvalidArgException();
        return m_pszData[iChar];
    }
    XCHAR operator[](int iChar) const { return GetAt(iChar); }
    // Every integer type of index (size_t, DWORD, ...) has an exact match here instead of
    // tying with the built-in subscript of the pointer conversion.
    XCHAR operator[](unsigned int iChar) const { return GetAt(Index(static_cast<unsigned long long>(iChar))); }
    XCHAR operator[](long iChar) const { return GetAt(Index(static_cast<long long>(iChar))); }
    XCHAR operator[](unsigned long iChar) const { return GetAt(Index(static_cast<unsigned long long>(iChar))); }
    XCHAR operator[](long long iChar) const { return GetAt(Index(iChar)); }
    XCHAR operator[](unsigned long long iChar) const { return GetAt(Index(iChar)); }
    // Index 0..GetLength()-1; anything else throws CInvalidArgException.
    void SetAt(int iChar, XCHAR ch);
    void SetString(PCXSTR pszSrc);
    void SetString(PCXSTR pszSrc, int nLength);
    void Append(const CString& strSrc);
    void Append(PCXSTR pszSrc);
    void Append(PCXSTR pszSrc, int nLength);
    void AppendChar(XCHAR ch);
    void Truncate(int nNewLength);
    void Preallocate(int nLength);
    void FreeExtra();

    // Comparison: ordinal, ordinal ignoring case, and by the current locale.
    int Compare(PCXSTR psz) const;
    int CompareNoCase(PCXSTR psz) const;
    int Collate(PCXSTR psz) const;
    int CollateNoCase(PCXSTR psz) const;

    // Formatting with the platform's wide printf rules: %s and %c are wide, %S and %C
    // narrow, %I64d a 64-bit integer. CString arguments may be passed directly.
    template <class... Args>
    void Format(PCXSTR pszFormat, const Args&... args)
    {
        FormatUnchecked(pszFormat, FormatArg(args)...);
    }
    template <class... Args>
    void AppendFormat(PCXSTR pszFormat, const Args&... args)
    {
        AppendFormatUnchecked(pszFormat, FormatArg(args)...);
    }
    // Message-style formatting (%1, %2!d!, ... inserts), as the platform's FormatMessage.
    template <class... Args>
    void FormatMessage(PCXSTR pszFormat, const Args&... args)
    {
        FormatMessageUnchecked(pszFormat, FormatArg(args)...);
    }
    void FormatMessageV(PCXSTR pszFormat, va_list* pArgList);
    void AFX_CDECL FormatMessageUnchecked(PCXSTR pszFormat, ...);
    void FormatV(PCXSTR pszFormat, va_list args);
    void AppendFormatV(PCXSTR pszFormat, va_list args);
    // The C-style variadic forms behind Format and AppendFormat.
    void AFX_CDECL FormatUnchecked(PCXSTR pszFormat, ...);
    void AFX_CDECL AppendFormatUnchecked(PCXSTR pszFormat, ...);

    // Searching; -1 when not found or when the start is outside the string.
    int Find(XCHAR ch, int iStart = 0) const noexcept;
    int Find(PCXSTR pszSub, int iStart = 0) const noexcept;
    int ReverseFind(XCHAR ch) const noexcept;
    int FindOneOf(PCXSTR pszCharSet) const noexcept;

    // Extraction; counts and positions are clamped to the string.
    CString Left(int nCount) const;
    CString Mid(int iFirst) const;
    CString Mid(int iFirst, int nCount) const;
    CString Right(int nCount) const;
    CString SpanIncluding(PCXSTR pszCharSet) const;
    CString SpanExcluding(PCXSTR pszCharSet) const;
    // Next token after iStart, skipping leading delimiters; iStart moves past the token,
    // and becomes -1 (with an empty result) when no token is left.
    CString Tokenize(PCXSTR pszTokens, int& iStart) const;

    // Editing; each returns the number of changes or the new length, as in the framework.
    int Replace(XCHAR chOld, XCHAR chNew);
    int Replace(PCXSTR pszOld, PCXSTR pszNew);
    int Remove(XCHAR chRemove);
    int Insert(int iIndex, XCHAR ch);
    int Insert(int iIndex, PCXSTR psz);
    int Delete(int iIndex, int nCount = 1);
    CString& MakeUpper();
    CString& MakeLower();
    CString& MakeReverse();

    // Trimming white space (as iswspace) or the given characters.
    CString& Trim();
    CString& Trim(XCHAR chTarget);
    CString& Trim(PCXSTR pszTargets);
    CString& TrimLeft();
    CString& TrimLeft(XCHAR chTarget);
    CString& TrimLeft(PCXSTR pszTargets);
    CString& TrimRight();
    CString& TrimRight(XCHAR chTarget);
    CString& TrimRight(PCXSTR pszTargets);

    // Direct buffer access. GetBuffer makes the buffer private to this string and at least
    // nMinBufferLength characters long (plus the terminator) and keeps the contents;
    // ReleaseBuffer(-1) takes the length up to the first zero, ReleaseBuffer(n) sets it to n.
    PXSTR GetBuffer();
    PXSTR GetBuffer(int nMinBufferLength);
    PXSTR GetBufferSetLength(int nLength);
    void ReleaseBuffer(int nNewLength = -1);
    void ReleaseBufferSetLength(int nNewLength);
    PXSTR LockBuffer();
    void UnlockBuffer() noexcept;

    // Resources and OLE.
    BOOL LoadString(HINSTANCE hInstance, UINT nID);
    BOOL LoadString(UINT nID);  // from the current resource handle (AfxGetResourceHandle)
    BSTR AllocSysString() const;
    BSTR SetSysString(BSTR* pbstr) const;

public:
    // An argument as passed to a C variadic function: strings as their character pointers,
    // plain values as they are (anything else does not compile).
    static LPCWSTR FormatArg(const CString& s) noexcept { return s.m_pszData; }
    static inline LPCSTR FormatArg(const CStringA& s) noexcept;
    template <class T>
    static const T& FormatArg(const T& v) noexcept
    {
        static_assert(__is_trivially_copyable(T), "only plain values can be formatted");
        return v;
    }

private:
    static int Index(long long i) noexcept { return i < 0 || i > INT_MAX ? -1 : static_cast<int>(i); }
    static int Index(unsigned long long i) noexcept { return i > INT_MAX ? -1 : static_cast<int>(i); }
    CStringData* GetData() const noexcept { return reinterpret_cast<CStringData*>(m_pszData) - 1; }
    PXSTR PrepareWrite(int nLength);
    void Fork(int nAlloc);
    void Grow(int nLength);
    void AttachData(CStringData* pNewData) noexcept;
    void SetLength(int nLength) noexcept;
    void AssignAnsi(PCYSTR psz, int nLength);

    PXSTR m_pszData;
};

typedef CString CStringW;

// The narrow string (ANSI code page): the common members of CString, converting to and from
// wide text. Copies are deep.
class KXAFX_API CStringA {
public:
    typedef char XCHAR;
    typedef LPSTR PXSTR;
    typedef LPCSTR PCXSTR;

    CStringA() noexcept : m_pszData(const_cast<char*>("")), m_nLength(0), m_nAlloc(0) {}
    CStringA(const CStringA& strSrc);
    CStringA(CStringA&& strSrc) noexcept;
    CStringA(PCXSTR pszSrc);
    CStringA(PCXSTR pch, int nLength);
    CStringA(LPCWSTR pszSrc);
    CStringA(LPCWSTR pch, int nLength);
    // Explicit so that mixed expressions (s == "text", s + "text") keep resolving to CString.
    explicit CStringA(const CString& strSrc);
    explicit CStringA(XCHAR ch, int nRepeat = 1);
    ~CStringA() noexcept;

    CStringA& operator=(const CStringA& strSrc);
    CStringA& operator=(CStringA&& strSrc) noexcept;
    CStringA& operator=(PCXSTR pszSrc);
    CStringA& operator=(LPCWSTR pszSrc);
    CStringA& operator=(const CString& strSrc);
    CStringA& operator=(XCHAR ch);
    CStringA& operator+=(const CStringA& str);
    CStringA& operator+=(PCXSTR psz);
    CStringA& operator+=(XCHAR ch);

    int GetLength() const noexcept { return m_nLength; }
    BOOL IsEmpty() const noexcept { return m_nLength == 0; }
    void Empty() noexcept;
    PCXSTR GetString() const noexcept { return m_pszData; }
    operator PCXSTR() const noexcept { return m_pszData; }
    // Index 0..GetLength(); anything else throws CInvalidArgException.
    XCHAR GetAt(int iChar) const
    {
        if (static_cast<unsigned>(iChar) > static_cast<unsigned>(m_nLength))
            AfxThrowInvalidArgException();
        return m_pszData[iChar];
    }
    XCHAR operator[](int iChar) const { return GetAt(iChar); }
    void SetAt(int iChar, XCHAR ch);
    void SetString(PCXSTR pszSrc, int nLength);
    void Append(PCXSTR pszSrc, int nLength);

    int Compare(PCXSTR psz) const;
    int CompareNoCase(PCXSTR psz) const;

    // Narrow printf rules: %s is narrow, %S wide.
    template <class... Args>
    void Format(PCXSTR pszFormat, const Args&... args)
    {
        FormatUnchecked(pszFormat, CString::FormatArg(args)...);
    }
    template <class... Args>
    void AppendFormat(PCXSTR pszFormat, const Args&... args)
    {
        AppendFormatUnchecked(pszFormat, CString::FormatArg(args)...);
    }
    void FormatV(PCXSTR pszFormat, va_list args);
    void AppendFormatV(PCXSTR pszFormat, va_list args);
    void AFX_CDECL FormatUnchecked(PCXSTR pszFormat, ...);
    void AFX_CDECL AppendFormatUnchecked(PCXSTR pszFormat, ...);

    int Find(XCHAR ch, int iStart = 0) const noexcept;
    int Find(PCXSTR pszSub, int iStart = 0) const noexcept;
    int ReverseFind(XCHAR ch) const noexcept;
    CStringA Left(int nCount) const;
    CStringA Mid(int iFirst) const;
    CStringA Mid(int iFirst, int nCount) const;
    CStringA Right(int nCount) const;
    int Replace(XCHAR chOld, XCHAR chNew);
    int Replace(PCXSTR pszOld, PCXSTR pszNew);
    CStringA& MakeUpper();
    CStringA& MakeLower();
    CStringA& Trim();
    CStringA& TrimLeft();
    CStringA& TrimRight();

    PXSTR GetBuffer();
    PXSTR GetBuffer(int nMinBufferLength);
    PXSTR GetBufferSetLength(int nLength);
    void ReleaseBuffer(int nNewLength = -1);

private:
    void Reserve(int nLength);
    char* m_pszData;  // "" (static) while nothing is allocated
    int m_nLength;
    int m_nAlloc;     // 0 while nothing is allocated
};

inline LPCSTR CString::FormatArg(const CStringA& s) noexcept { return s.GetString(); }

KXAFX_API CStringA AFXAPI operator+(const CStringA& str1, const CStringA& str2);
KXAFX_API CStringA AFXAPI operator+(const CStringA& str1, LPCSTR psz2);
KXAFX_API CStringA AFXAPI operator+(LPCSTR psz1, const CStringA& str2);
KXAFX_API CStringA AFXAPI operator+(const CStringA& str1, char ch2);
inline bool operator==(const CStringA& a, const CStringA& b) noexcept
{
    return a.GetLength() == b.GetLength() && a.Compare(b) == 0;
}
inline bool operator==(const CStringA& a, LPCSTR b) noexcept { return a.Compare(b) == 0; }
inline bool operator==(LPCSTR a, const CStringA& b) noexcept { return b.Compare(a) == 0; }
inline bool operator!=(const CStringA& a, const CStringA& b) noexcept { return !(a == b); }
inline bool operator!=(const CStringA& a, LPCSTR b) noexcept { return a.Compare(b) != 0; }
inline bool operator!=(LPCSTR a, const CStringA& b) noexcept { return b.Compare(a) != 0; }
inline bool operator<(const CStringA& a, const CStringA& b) noexcept { return a.Compare(b) < 0; }
inline bool operator>(const CStringA& a, const CStringA& b) noexcept { return a.Compare(b) > 0; }

// Concatenation.
KXAFX_API CString AFXAPI operator+(const CString& str1, const CString& str2);
KXAFX_API CString AFXAPI operator+(const CString& str1, LPCWSTR psz2);
KXAFX_API CString AFXAPI operator+(LPCWSTR psz1, const CString& str2);
KXAFX_API CString AFXAPI operator+(const CString& str1, wchar_t ch2);
KXAFX_API CString AFXAPI operator+(wchar_t ch1, const CString& str2);
KXAFX_API CString AFXAPI operator+(const CString& str1, char ch2);
KXAFX_API CString AFXAPI operator+(char ch1, const CString& str2);
// A temporary on the left is extended in place (a + b + c allocates once per growth).
KXAFX_API CString AFXAPI operator+(CString&& str1, const CString& str2);
KXAFX_API CString AFXAPI operator+(CString&& str1, LPCWSTR psz2);
KXAFX_API CString AFXAPI operator+(CString&& str1, wchar_t ch2);

// Comparison (ordinal).
inline bool operator==(const CString& a, const CString& b) noexcept
{
    return a.GetLength() == b.GetLength() && a.Compare(b) == 0;
}
inline bool operator==(const CString& a, LPCWSTR b) noexcept { return a.Compare(b) == 0; }
inline bool operator==(LPCWSTR a, const CString& b) noexcept { return b.Compare(a) == 0; }
inline bool operator==(const CString& a, wchar_t b) noexcept { return a.GetLength() == 1 && a.GetString()[0] == b; }
inline bool operator==(wchar_t a, const CString& b) noexcept { return b.GetLength() == 1 && b.GetString()[0] == a; }
inline bool operator!=(const CString& a, const CString& b) noexcept { return !(a == b); }
inline bool operator!=(const CString& a, LPCWSTR b) noexcept { return a.Compare(b) != 0; }
inline bool operator!=(LPCWSTR a, const CString& b) noexcept { return b.Compare(a) != 0; }
inline bool operator!=(const CString& a, wchar_t b) noexcept { return !(a == b); }
inline bool operator!=(wchar_t a, const CString& b) noexcept { return !(b == a); }
inline bool operator<(const CString& a, const CString& b) noexcept { return a.Compare(b) < 0; }
inline bool operator<(const CString& a, LPCWSTR b) noexcept { return a.Compare(b) < 0; }
inline bool operator<(LPCWSTR a, const CString& b) noexcept { return b.Compare(a) > 0; }
inline bool operator>(const CString& a, const CString& b) noexcept { return a.Compare(b) > 0; }
inline bool operator>(const CString& a, LPCWSTR b) noexcept { return a.Compare(b) > 0; }
inline bool operator>(LPCWSTR a, const CString& b) noexcept { return b.Compare(a) < 0; }
inline bool operator<=(const CString& a, const CString& b) noexcept { return a.Compare(b) <= 0; }
inline bool operator<=(const CString& a, LPCWSTR b) noexcept { return a.Compare(b) <= 0; }
inline bool operator<=(LPCWSTR a, const CString& b) noexcept { return b.Compare(a) >= 0; }
inline bool operator>=(const CString& a, const CString& b) noexcept { return a.Compare(b) >= 0; }
inline bool operator>=(const CString& a, LPCWSTR b) noexcept { return a.Compare(b) >= 0; }
inline bool operator>=(LPCWSTR a, const CString& b) noexcept { return b.Compare(a) <= 0; }
