// Core of the framework: run-time classes, diagnostics, exceptions, strings and geometry
// (collections, files and archives come from afxfile_.h, included at the end).
#pragma once
#include "afxver_.h"
#include "afxstr.h"
#include "atltypes.h"

class CObject;
class CArchive;
class CDumpContext;
struct CRuntimeClass;

/////////////////////////////////////////////////////////////////////////////
// Diagnostics. ASSERT, ASSERT_VALID and TRACE exist only when _DEBUG is defined; VERIFY
// always evaluates its expression.

// Writes a formatted line to the debugger output (OutputDebugString); %s is wide for a
// wide format and narrow for a narrow one.
KXAFX_API void AFX_CDECL AfxTraceUnchecked(LPCWSTR lpszFormat, ...);
KXAFX_API void AFX_CDECL AfxTraceUnchecked(LPCSTR lpszFormat, ...);
template <class Char, class... Args>
inline void AfxTrace(const Char* lpszFormat, const Args&... args)
{
    AfxTraceUnchecked(lpszFormat, CString::FormatArg(args)...);
}

// Reports a failed assertion to the debugger output; TRUE when a debugger should break.
KXAFX_API BOOL AFXAPI AfxAssertFailedLine(LPCSTR lpszFileName, int nLine);
KXAFX_API void AFXAPI AfxAssertValidObject(const CObject* pOb, LPCSTR lpszFileName, int nLine);

// The framework's address checks are null tests; they exist for code written with them.
inline BOOL AfxIsValidAddress(const void* p, UINT_PTR nBytes, BOOL bReadWrite = TRUE) noexcept
{
    (void)bReadWrite;
    return p != nullptr || nBytes == 0;
}
inline BOOL AfxIsValidString(LPCWSTR psz, int nLength = -1) noexcept
{
    (void)nLength;
    return psz != nullptr;
}
inline BOOL AfxIsValidString(LPCSTR psz, int nLength = -1) noexcept
{
    (void)nLength;
    return psz != nullptr;
}

#define UNUSED_ALWAYS(x) (void)(x)
#define DEBUG_NEW new

#ifdef _DEBUG
#define ASSERT(f) \
    do { \
        if (!(f) && AfxAssertFailedLine(__FILE__, __LINE__)) \
            DebugBreak(); \
    } while (0)
#define VERIFY(f) ASSERT(f)
#define ASSERT_VALID(pOb) AfxAssertValidObject((pOb), __FILE__, __LINE__)
#define TRACE(...) AfxTrace(__VA_ARGS__)
#define UNUSED(x)
#else
#define ASSERT(f) ((void)0)
#define VERIFY(f) ((void)(f))
#define ASSERT_VALID(pOb) ((void)0)
#define TRACE(...) ((void)0)
#define UNUSED(x) UNUSED_ALWAYS(x)
#endif
#define ASSERT_KINDOF(class_name, object) ASSERT((object)->IsKindOf(RUNTIME_CLASS(class_name)))
#define TRACE0(sz) TRACE(sz)
#define TRACE1(sz, p1) TRACE(sz, p1)
#define TRACE2(sz, p1, p2) TRACE(sz, p1, p2)
#define TRACE3(sz, p1, p2, p3) TRACE(sz, p1, p2, p3)

/////////////////////////////////////////////////////////////////////////////
// Run-time class information.

struct KXAFX_API CRuntimeClass {
    LPCSTR m_lpszClassName;
    int m_nObjectSize;
    UINT m_wSchema;  // 0xFFFF: not serializable
    CObject*(PASCAL* m_pfnCreateObject)();  // null: not dynamically creatable
    CRuntimeClass*(PASCAL* m_pfnGetBaseClass)();  // null for CObject

    // A new object of this class, or null when the class cannot be created dynamically
    // (or its construction threw).
    CObject* CreateObject();
    BOOL IsDerivedFrom(const CRuntimeClass* pBaseClass) const;

    // Classes by name, from every loaded module that declared them with the IMPLEMENT_
    // macros; null when unknown.
    static CRuntimeClass* PASCAL FromName(LPCSTR lpszClassName);
    static CRuntimeClass* PASCAL FromName(LPCWSTR lpszClassName);
    static CObject* PASCAL CreateObject(LPCSTR lpszClassName);
    static CObject* PASCAL CreateObject(LPCWSTR lpszClassName);

    // Class information in archives (defined with CArchive).
    void Store(CArchive& ar) const;
    static CRuntimeClass* PASCAL Load(CArchive& ar, UINT* pwSchemaNum);
};

// Registers a class in the process-wide list searched by CRuntimeClass::FromName for as
// long as the module that defines it is loaded. One static object per class (made by the
// IMPLEMENT_ macros).
struct KXAFX_API AFX_CLASSINIT {
    explicit AFX_CLASSINIT(CRuntimeClass* pNewClass);
    ~AFX_CLASSINIT();
    AFX_CLASSINIT(const AFX_CLASSINIT&) = delete;
    AFX_CLASSINIT& operator=(const AFX_CLASSINIT&) = delete;
    CRuntimeClass* m_pClass;
    AFX_CLASSINIT* m_pNext;
};

class KXAFX_API CObject {
public:
    virtual CRuntimeClass* GetRuntimeClass() const;
    virtual ~CObject() = 0;

protected:
    CObject() noexcept {}

public:
    CObject(const CObject&) = delete;
    CObject& operator=(const CObject&) = delete;

    BOOL IsSerializable() const;
    BOOL IsKindOf(const CRuntimeClass* pClass) const;

    // Writes or reads the object's state; the base does nothing.
    virtual void Serialize(CArchive& ar);
    // Diagnostics: the base checks nothing and dumps the class name and address.
    virtual void AssertValid() const;
    virtual void Dump(CDumpContext& dc) const;

    static const CRuntimeClass classCObject;
    static CRuntimeClass* PASCAL _GetBaseClass();
    static CRuntimeClass* PASCAL GetThisClass();
};

KXAFX_API CObject* AFXAPI AfxDynamicDownCast(CRuntimeClass* pClass, CObject* pObject);
KXAFX_API CObject* AFXAPI AfxStaticDownCast(CRuntimeClass* pClass, CObject* pObject);

#define RUNTIME_CLASS(class_name) (class_name::GetThisClass())
#define _RUNTIME_CLASS(class_name) \
    (const_cast<CRuntimeClass*>(&class_name::class##class_name))
#define DYNAMIC_DOWNCAST(class_name, object) \
    (static_cast<class_name*>(AfxDynamicDownCast(RUNTIME_CLASS(class_name), object)))
#ifdef _DEBUG
#define STATIC_DOWNCAST(class_name, object) \
    (static_cast<class_name*>(AfxStaticDownCast(RUNTIME_CLASS(class_name), object)))
#else
#define STATIC_DOWNCAST(class_name, object) (static_cast<class_name*>(object))
#endif

#define DECLARE_DYNAMIC(class_name) \
protected: \
    static CRuntimeClass* PASCAL _GetBaseClass(); \
\
public: \
    static const CRuntimeClass class##class_name; \
    static CRuntimeClass* PASCAL GetThisClass(); \
    virtual CRuntimeClass* GetRuntimeClass() const;

#define DECLARE_DYNCREATE(class_name) \
    DECLARE_DYNAMIC(class_name) \
    static CObject* PASCAL CreateObject();

#define DECLARE_SERIAL(class_name) \
    DECLARE_DYNCREATE(class_name) \
    friend CArchive& AFXAPI operator>>(CArchive& ar, class_name*& pOb);

#define IMPLEMENT_RUNTIMECLASS(class_name, base_class_name, wSchema, pfnNew) \
    CRuntimeClass* PASCAL class_name::_GetBaseClass() { return RUNTIME_CLASS(base_class_name); } \
    const CRuntimeClass class_name::class##class_name = { \
        #class_name, sizeof(class class_name), wSchema, pfnNew, &class_name::_GetBaseClass}; \
    CRuntimeClass* PASCAL class_name::GetThisClass() { return _RUNTIME_CLASS(class_name); } \
    CRuntimeClass* class_name::GetRuntimeClass() const { return _RUNTIME_CLASS(class_name); } \
    static AFX_CLASSINIT _init_##class_name(_RUNTIME_CLASS(class_name));

#define IMPLEMENT_DYNAMIC(class_name, base_class_name) \
    IMPLEMENT_RUNTIMECLASS(class_name, base_class_name, 0xFFFF, nullptr)

#define IMPLEMENT_DYNCREATE(class_name, base_class_name) \
    CObject* PASCAL class_name::CreateObject() { return new class_name; } \
    IMPLEMENT_RUNTIMECLASS(class_name, base_class_name, 0xFFFF, class_name::CreateObject)

#define IMPLEMENT_SERIAL(class_name, base_class_name, wSchema) \
    CObject* PASCAL class_name::CreateObject() { return new class_name; } \
    IMPLEMENT_RUNTIMECLASS(class_name, base_class_name, wSchema, class_name::CreateObject) \
    CArchive& AFXAPI operator>>(CArchive& ar, class_name*& pOb) \
    { \
        pOb = static_cast<class_name*>(ar.ReadObject(RUNTIME_CLASS(class_name))); \
        return ar; \
    }

// Schema flag of IMPLEMENT_SERIAL: the loading code accepts older schemas.
#define VERSIONABLE_SCHEMA (0x80000000)

/////////////////////////////////////////////////////////////////////////////
// Dump context: diagnostic text to the debugger output.

class KXAFX_API CDumpContext {
public:
    CDumpContext() noexcept;
    CDumpContext(const CDumpContext&) = delete;
    CDumpContext& operator=(const CDumpContext&) = delete;

    int GetDepth() const noexcept { return m_nDepth; }
    void SetDepth(int nNewDepth) noexcept { m_nDepth = nNewDepth; }

    CDumpContext& operator<<(LPCWSTR lpsz);
    CDumpContext& operator<<(LPCSTR lpsz);
    CDumpContext& operator<<(const void* lp);
    CDumpContext& operator<<(const CObject* pOb);
    CDumpContext& operator<<(const CObject& ob);
    CDumpContext& operator<<(BYTE by);
    CDumpContext& operator<<(WORD w);
    CDumpContext& operator<<(UINT u);
    CDumpContext& operator<<(LONG l);
    CDumpContext& operator<<(DWORD dw);
    CDumpContext& operator<<(float f);
    CDumpContext& operator<<(double d);
    CDumpContext& operator<<(int n);
    CDumpContext& operator<<(LONGLONG n);
    CDumpContext& operator<<(ULONGLONG n);
    CDumpContext& DumpAsHex(BYTE b);
    CDumpContext& DumpAsHex(WORD w);
    CDumpContext& DumpAsHex(UINT u);
    CDumpContext& DumpAsHex(LONG l);
    CDumpContext& DumpAsHex(DWORD dw);
    CDumpContext& DumpAsHex(int n);
    CDumpContext& DumpAsHex(LONGLONG n);
    CDumpContext& DumpAsHex(ULONGLONG n);
    void HexDump(LPCTSTR lpszLine, BYTE* pby, int nBytes, int nWidth);
    void Flush();

private:
    void Write(LPCWSTR lpsz);
    int m_nDepth;
};

// The debugger output.
extern KXAFX_API CDumpContext afxDump;

/////////////////////////////////////////////////////////////////////////////
// Exceptions. The framework throws pointers to heap objects; the handler calls Delete().

class KXAFX_API CException : public CObject {
    DECLARE_DYNAMIC(CException)
public:
    CException() noexcept : m_bAutoDelete(TRUE) {}
    explicit CException(BOOL bAutoDelete) noexcept : m_bAutoDelete(bAutoDelete) {}
    virtual ~CException();

    // Frees a heap-allocated exception; does nothing for one that is not auto-delete.
    void Delete();

    // Copies the description into lpszError (at most nMaxError characters with the
    // terminator); FALSE with an empty text when there is none.
    virtual BOOL GetErrorMessage(LPTSTR lpszError, UINT nMaxError, PUINT pnHelpContext = NULL) const;
    virtual BOOL GetErrorMessage(LPTSTR lpszError, UINT nMaxError, PUINT pnHelpContext = NULL);
    // Shows the description (or string resource nMessageID of the program when there is
    // none) in a message box; returns the box's result.
    virtual int ReportError(UINT nType = MB_OK, UINT nMessageID = 0);

    BOOL m_bAutoDelete;
};

// An exception with a fixed description.
class KXAFX_API CSimpleException : public CException {
    DECLARE_DYNAMIC(CSimpleException)
public:
    CSimpleException() noexcept = default;
    explicit CSimpleException(BOOL bAutoDelete) noexcept : CException(bAutoDelete) {}
    virtual ~CSimpleException();
    using CException::GetErrorMessage;
    virtual BOOL GetErrorMessage(LPTSTR lpszError, UINT nMaxError, PUINT pnHelpContext = NULL) const override;

protected:
    virtual LPCWSTR GetDefaultMessage() const;
};

class KXAFX_API CMemoryException : public CSimpleException {
    DECLARE_DYNAMIC(CMemoryException)
public:
    CMemoryException() noexcept = default;
    explicit CMemoryException(BOOL bAutoDelete) noexcept : CSimpleException(bAutoDelete) {}
    virtual ~CMemoryException();

protected:
    virtual LPCWSTR GetDefaultMessage() const override;
};

class KXAFX_API CNotSupportedException : public CSimpleException {
    DECLARE_DYNAMIC(CNotSupportedException)
public:
    CNotSupportedException() noexcept = default;
    explicit CNotSupportedException(BOOL bAutoDelete) noexcept : CSimpleException(bAutoDelete) {}
    virtual ~CNotSupportedException();

protected:
    virtual LPCWSTR GetDefaultMessage() const override;
};

class KXAFX_API CInvalidArgException : public CSimpleException {
    DECLARE_DYNAMIC(CInvalidArgException)
public:
    CInvalidArgException() noexcept = default;
    explicit CInvalidArgException(BOOL bAutoDelete) noexcept : CSimpleException(bAutoDelete) {}
    virtual ~CInvalidArgException();

protected:
    virtual LPCWSTR GetDefaultMessage() const override;
};

class KXAFX_API CFileException : public CException {
    DECLARE_DYNAMIC(CFileException)
public:
    enum {
        none,
        genericException,
        fileNotFound,
        badPath,
        tooManyOpenFiles,
        accessDenied,
        invalidFile,
        removeCurrentDir,
        directoryFull,
        badSeek,
        hardIO,
        sharingViolation,
        lockViolation,
        diskFull,
        endOfFile
    };

    CFileException(int cause = CFileException::none, LONG lOsError = -1, LPCTSTR lpszArchiveName = NULL);
    virtual ~CFileException();

    // The cause for a system error code (GetLastError) or a C runtime errno.
    static int PASCAL OsErrorToException(LONG lOsError);
    static int PASCAL ErrnoToException(int nErrno);
    [[noreturn]] static void PASCAL ThrowOsError(LONG lOsError, LPCTSTR lpszFileName = NULL);
    [[noreturn]] static void PASCAL ThrowErrno(int nErrno, LPCTSTR lpszFileName = NULL);

    using CException::GetErrorMessage;
    // A sentence naming the file and the cause.
    virtual BOOL GetErrorMessage(LPTSTR lpszError, UINT nMaxError, PUINT pnHelpContext = NULL) const override;

    int m_cause;
    LONG m_lOsError;
    CString m_strFileName;
};

class KXAFX_API CArchiveException : public CException {
    DECLARE_DYNAMIC(CArchiveException)
public:
    enum {
        none,
        genericException,
        readOnly,
        endOfFile,
        writeOnly,
        badIndex,
        badClass,
        badSchema,
        bufferFull
    };

    CArchiveException(int cause = CArchiveException::none, LPCTSTR lpszArchiveName = NULL);
    virtual ~CArchiveException();

    using CException::GetErrorMessage;
    virtual BOOL GetErrorMessage(LPTSTR lpszError, UINT nMaxError, PUINT pnHelpContext = NULL) const override;

    int m_cause;
    CString m_strFileName;
};

// Out of memory throws one preallocated, not auto-delete object.
[[noreturn]] KXAFX_API void AFXAPI AfxThrowMemoryException();
[[noreturn]] KXAFX_API void AFXAPI AfxThrowNotSupportedException();
[[noreturn]] KXAFX_API void AFXAPI AfxThrowInvalidArgException();
[[noreturn]] KXAFX_API void AFXAPI AfxThrowFileException(int cause, LONG lOsError = -1, LPCTSTR lpszFileName = NULL);
[[noreturn]] KXAFX_API void AFXAPI AfxThrowArchiveException(int cause, LPCTSTR lpszArchiveName = NULL);

// Exception macros over C++ exceptions. An exception caught by CATCH or CATCH_ALL is
// deleted when the TRY block ends, unless the handler rethrows it with THROW_LAST.
struct AFX_EXCEPTION_LINK {
    AFX_EXCEPTION_LINK() noexcept : m_pException(nullptr) {}
    ~AFX_EXCEPTION_LINK()
    {
        if (m_pException)
            m_pException->Delete();
    }
    AFX_EXCEPTION_LINK(const AFX_EXCEPTION_LINK&) = delete;
    AFX_EXCEPTION_LINK& operator=(const AFX_EXCEPTION_LINK&) = delete;
    CException* m_pException;
};

#define TRY \
    { \
        AFX_EXCEPTION_LINK _afxExceptionLink; \
        try {
#define CATCH(class_name, e) \
    } \
    catch (class_name * e) \
    { \
        ASSERT(e->IsKindOf(RUNTIME_CLASS(class_name))); \
        _afxExceptionLink.m_pException = e;
#define AND_CATCH(class_name, e) CATCH(class_name, e)
#define END_CATCH \
    } \
    }
#define CATCH_ALL(e) \
    } \
    catch (CException * e) \
    { \
        { \
            ASSERT(e->IsKindOf(RUNTIME_CLASS(CException))); \
            _afxExceptionLink.m_pException = e;
#define AND_CATCH_ALL(e) \
    } \
    catch (CException * e) \
    { \
        { \
            ASSERT(e->IsKindOf(RUNTIME_CLASS(CException))); \
            _afxExceptionLink.m_pException = e;
#define END_CATCH_ALL \
    } \
    } \
    }
#define END_TRY \
    } \
    catch (CException * e) \
    { \
        _afxExceptionLink.m_pException = e; \
    } \
    }
#define THROW(e) throw e;
#define THROW_LAST() (_afxExceptionLink.m_pException = nullptr, throw)

#include "afxfile_.h"
