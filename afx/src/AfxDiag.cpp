// Diagnostics: trace output, assertions and the dump context, all to the debugger output.
#include "afx.h"
#include <cstdio>

namespace {

void OutputV(LPCWSTR lpszFormat, va_list args)
{
    wchar_t buf[1024];
    int n = _vsnwprintf(buf, 1023, lpszFormat, args);
    if (n < 0)
        n = 1023;  // truncated: show what fits
    buf[n] = 0;
    OutputDebugStringW(buf);
}

}  // namespace

void AFX_CDECL AfxTraceUnchecked(LPCWSTR lpszFormat, ...)
{
    if (!lpszFormat)
        return;
    va_list args;
    va_start(args, lpszFormat);
    OutputV(lpszFormat, args);
    va_end(args);
}

void AFX_CDECL AfxTraceUnchecked(LPCSTR lpszFormat, ...)
{
    if (!lpszFormat)
        return;
    char buf[1024];
    va_list args;
    va_start(args, lpszFormat);
    int n = _vsnprintf(buf, 1023, lpszFormat, args);
    va_end(args);
    if (n < 0)
        n = 1023;
    buf[n] = 0;
    OutputDebugStringW(CString(buf));
}

BOOL AFXAPI AfxAssertFailedLine(LPCSTR lpszFileName, int nLine)
{
    char buf[512];
    _snprintf(buf, sizeof buf - 1, "Assertion failed: %s(%d)\n", lpszFileName ? lpszFileName : "?", nLine);
    buf[sizeof buf - 1] = 0;
    OutputDebugStringA(buf);
    return IsDebuggerPresent();
}

void AFXAPI AfxAssertValidObject(const CObject* pOb, LPCSTR lpszFileName, int nLine)
{
    if (!pOb) {
        if (AfxAssertFailedLine(lpszFileName, nLine))
            DebugBreak();
        return;
    }
    pOb->AssertValid();
}

/////////////////////////////////////////////////////////////////////////////
// CDumpContext

CDumpContext afxDump;

CDumpContext::CDumpContext() noexcept : m_nDepth(0) {}

void CDumpContext::Write(LPCWSTR lpsz)
{
    OutputDebugStringW(lpsz);
}

void CDumpContext::Flush() {}

CDumpContext& CDumpContext::operator<<(LPCWSTR lpsz)
{
    Write(lpsz ? lpsz : L"(null)");
    return *this;
}

CDumpContext& CDumpContext::operator<<(LPCSTR lpsz)
{
    return *this << CString(lpsz ? lpsz : "(null)").GetString();
}

namespace {

template <class... Args>
CDumpContext& Put(CDumpContext& dc, LPCWSTR fmt, Args... args)
{
    wchar_t buf[64];
    _snwprintf(buf, 63, fmt, args...);
    buf[63] = 0;
    return dc << buf;
}

}  // namespace

CDumpContext& CDumpContext::operator<<(const void* lp) { return Put(*this, L"$%p", lp); }
CDumpContext& CDumpContext::operator<<(BYTE by) { return Put(*this, L"%u", static_cast<unsigned>(by)); }
CDumpContext& CDumpContext::operator<<(WORD w) { return Put(*this, L"%u", static_cast<unsigned>(w)); }
CDumpContext& CDumpContext::operator<<(UINT u) { return Put(*this, L"%u", u); }
CDumpContext& CDumpContext::operator<<(LONG l) { return Put(*this, L"%ld", l); }
CDumpContext& CDumpContext::operator<<(DWORD dw) { return Put(*this, L"%lu", dw); }
CDumpContext& CDumpContext::operator<<(float f) { return Put(*this, L"%g", static_cast<double>(f)); }
CDumpContext& CDumpContext::operator<<(double d) { return Put(*this, L"%g", d); }
CDumpContext& CDumpContext::operator<<(int n) { return Put(*this, L"%d", n); }
CDumpContext& CDumpContext::operator<<(LONGLONG n) { return Put(*this, L"%I64d", n); }
CDumpContext& CDumpContext::operator<<(ULONGLONG n) { return Put(*this, L"%I64u", n); }
CDumpContext& CDumpContext::DumpAsHex(BYTE b) { return Put(*this, L"0x%02x", static_cast<unsigned>(b)); }
CDumpContext& CDumpContext::DumpAsHex(WORD w) { return Put(*this, L"0x%04x", static_cast<unsigned>(w)); }
CDumpContext& CDumpContext::DumpAsHex(UINT u) { return Put(*this, L"0x%08x", u); }
CDumpContext& CDumpContext::DumpAsHex(LONG l) { return Put(*this, L"0x%08lx", l); }
CDumpContext& CDumpContext::DumpAsHex(DWORD dw) { return Put(*this, L"0x%08lx", dw); }
CDumpContext& CDumpContext::DumpAsHex(int n) { return Put(*this, L"0x%08x", n); }
CDumpContext& CDumpContext::DumpAsHex(LONGLONG n) { return Put(*this, L"0x%016I64x", n); }
CDumpContext& CDumpContext::DumpAsHex(ULONGLONG n) { return Put(*this, L"0x%016I64x", n); }

CDumpContext& CDumpContext::operator<<(const CObject* pOb)
{
    if (!pOb)
        return *this << "NULL";
    pOb->Dump(*this);
    return *this;
}

CDumpContext& CDumpContext::operator<<(const CObject& ob)
{
    return *this << &ob;
}

void CDumpContext::HexDump(LPCTSTR lpszLine, BYTE* pby, int nBytes, int nWidth)
{
    if (!pby || nBytes <= 0)
        return;
    if (nWidth <= 0)
        nWidth = 16;
    CString line;
    for (int i = 0; i < nBytes; ++i) {
        if (i % nWidth == 0)
            line = lpszLine ? lpszLine : L"";
        line.AppendFormat(L" %02X", static_cast<unsigned>(pby[i]));
        if (i % nWidth == nWidth - 1 || i == nBytes - 1) {
            line += L'\n';
            *this << line.GetString();
        }
    }
}
