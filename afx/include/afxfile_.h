// Files and archives: CTime (file times), CFile, CMemFile, CStdioFile, CArchive (included by afx.h).
#pragma once
#include <stdio.h>
#include <string.h>

class CArchive;
class CDocument;
class CPtrArray;
class CMapPtrToPtr;

// winbase.h maps GetCurrentTime() to GetTickCount(); CTime has a member of that name.
#ifdef GetCurrentTime
#undef GetCurrentTime
#endif

// A point in time, held as seconds since 1970-01-01 UTC (as file status reports it).
class KXAFX_API CTime {
public:
    static CTime WINAPI GetCurrentTime();

    CTime() = default;
    CTime(__time64_t time) : m_time(time) {}
    // Local date and time; nDST < 0 lets the C run-time decide whether daylight time applies.
    CTime(int nYear, int nMonth, int nDay, int nHour, int nMin, int nSec, int nDST = -1);
    CTime(const SYSTEMTIME& st, int nDST = -1);
    CTime(const FILETIME& ft, int nDST = -1);

    __time64_t GetTime() const { return m_time; }
    // Local time; false when the value cannot be represented.
    bool GetAsSystemTime(SYSTEMTIME& st) const;
    int GetYear() const;
    int GetMonth() const;
    int GetDay() const;
    int GetHour() const;
    int GetMinute() const;
    int GetSecond() const;
    int GetDayOfWeek() const; // 1 = Sunday

    bool operator==(CTime t) const { return m_time == t.m_time; }
    bool operator!=(CTime t) const { return m_time != t.m_time; }
    bool operator<(CTime t) const { return m_time < t.m_time; }
    bool operator>(CTime t) const { return m_time > t.m_time; }
    bool operator<=(CTime t) const { return m_time <= t.m_time; }
    bool operator>=(CTime t) const { return m_time >= t.m_time; }

private:
    __time64_t m_time = 0;
};

struct CFileStatus {
    CTime m_ctime;      // creation time
    CTime m_mtime;      // last modification time
    CTime m_atime;      // last access time
    ULONGLONG m_size;   // size in bytes
    BYTE m_attribute;   // CFile::Attribute bits
    BYTE _m_padding;
    TCHAR m_szFullName[_MAX_PATH];
};

// ---------------------------------------------------------------------------------------------
// CFile: a file on disk through its Win32 handle. Failures raise CFileException, except Open,
// which reports them through its result and optional exception object.

class KXAFX_API CFile : public CObject {
    DECLARE_DYNAMIC(CFile)

public:
    enum OpenFlags {
        modeRead = 0x00000,
        modeWrite = 0x00001,
        modeReadWrite = 0x00002,
        shareCompat = 0x00000,
        shareExclusive = 0x00010,
        shareDenyWrite = 0x00020,
        shareDenyRead = 0x00030,
        shareDenyNone = 0x00040,
        modeNoInherit = 0x00080,
        modeCreate = 0x01000,
        modeNoTruncate = 0x02000,
        typeText = 0x04000,
        typeBinary = 0x08000,
        osNoBuffer = 0x10000,
        osWriteThrough = 0x20000,
        osRandomAccess = 0x40000,
        osSequentialScan = 0x80000,
    };
    enum Attribute {
        normal = 0x00,
        readOnly = 0x01,
        hidden = 0x02,
        system = 0x04,
        volume = 0x08,
        directory = 0x10,
        archive = 0x20,
    };
    enum SeekPosition { begin = 0x0, current = 0x1, end = 0x2 };

    static const HANDLE hFileNull;

    CFile();
    // Wraps an open handle; the handle is not closed by the destructor.
    explicit CFile(HANDLE hFile);
    // Opens the file or raises CFileException.
    CFile(LPCTSTR lpszFileName, UINT nOpenFlags);
    ~CFile() override;

    HANDLE m_hFile;
    operator HANDLE() const { return m_hFile; }

    // Attributes
    virtual ULONGLONG GetPosition() const;
    BOOL GetStatus(CFileStatus& rStatus) const;
    virtual CString GetFileName() const;  // name and extension
    virtual CString GetFileTitle() const; // name without extension
    virtual CString GetFilePath() const;  // full path
    virtual void SetFilePath(LPCTSTR lpszNewName);

    // Operations
    virtual BOOL Open(LPCTSTR lpszFileName, UINT nOpenFlags, CFileException* pError = nullptr);
    static void PASCAL Rename(LPCTSTR lpszOldName, LPCTSTR lpszNewName);
    static void PASCAL Remove(LPCTSTR lpszFileName);
    // Status of a file by name; FALSE when it does not exist.
    static BOOL PASCAL GetStatus(LPCTSTR lpszFileName, CFileStatus& rStatus);

    ULONGLONG SeekToEnd() { return Seek(0, CFile::end); }
    void SeekToBegin() { Seek(0, CFile::begin); }

    // Overridables
    // A second CFile on a duplicate of the handle (same file position).
    virtual CFile* Duplicate() const;
    // Byte-range locks: others reading or writing the range fail with lockViolation.
    virtual void LockRange(ULONGLONG dwPos, ULONGLONG dwCount);
    virtual void UnlockRange(ULONGLONG dwPos, ULONGLONG dwCount);
    virtual ULONGLONG Seek(LONGLONG lOff, UINT nFrom);
    virtual void SetLength(ULONGLONG dwNewLen);
    virtual ULONGLONG GetLength() const;
    virtual UINT Read(void* lpBuf, UINT nCount);
    virtual void Write(const void* lpBuf, UINT nCount);
    virtual void Abort();
    virtual void Flush();
    virtual void Close();

protected:
    BOOL m_bCloseOnDelete;
    CString m_strFileName;
};

// ---------------------------------------------------------------------------------------------
// CMemFile: a file in a heap block (malloc/realloc/free, so a detached block belongs to the
// caller's C run-time heap). Writing past the end grows the block in steps of nGrowBytes;
// reading past the end returns what there is.

class KXAFX_API CMemFile : public CFile {
    DECLARE_DYNAMIC(CMemFile)

public:
    explicit CMemFile(UINT nGrowBytes = 1024);
    // Uses lpBuffer as the file (see Attach).
    CMemFile(BYTE* lpBuffer, UINT nBufferSize, UINT nGrowBytes = 0);
    ~CMemFile() override;

    // Makes lpBuffer the file. With nGrowBytes 0 the file is the buffer's nBufferSize bytes and
    // cannot grow; otherwise it starts empty and grows with realloc, so lpBuffer must come from
    // malloc. The caller keeps ownership (see Detach).
    void Attach(BYTE* lpBuffer, UINT nBufferSize, UINT nGrowBytes = 0);
    // Hands the block to the caller (free it with free) and leaves an empty file behind.
    BYTE* Detach();

    // Size and position of the memory file; no name, times or attributes.
    BOOL GetStatus(CFileStatus& rStatus) const;
    // Not supported by memory files (CNotSupportedException).
    CFile* Duplicate() const override;
    void LockRange(ULONGLONG dwPos, ULONGLONG dwCount) override;
    void UnlockRange(ULONGLONG dwPos, ULONGLONG dwCount) override;
    ULONGLONG GetPosition() const override;
    ULONGLONG Seek(LONGLONG lOff, UINT nFrom) override;
    void SetLength(ULONGLONG dwNewLen) override;
    ULONGLONG GetLength() const override;
    UINT Read(void* lpBuf, UINT nCount) override;
    void Write(const void* lpBuf, UINT nCount) override;
    void Abort() override;
    void Flush() override;
    void Close() override;

protected:
    virtual BYTE* Alloc(SIZE_T nBytes);
    virtual BYTE* Realloc(BYTE* lpMem, SIZE_T nBytes);
    virtual BYTE* Memcpy(BYTE* lpMemTarget, const BYTE* lpMemSource, SIZE_T nBytes);
    virtual void Free(BYTE* lpMem);
    // Makes the block at least dwNewLen bytes (rounded up to the grow step).
    virtual void GrowFile(SIZE_T dwNewLen);

    SIZE_T m_nGrowBytes;
    SIZE_T m_nPosition;
    SIZE_T m_nBufferSize;
    SIZE_T m_nFileSize;
    BYTE* m_lpBuffer;
    BOOL m_bAutoDelete;
};

// ---------------------------------------------------------------------------------------------
// CStdioFile: a C run-time stream. In text mode (the default) lines are stored in the ANSI code
// page with "\r\n" line ends; in binary mode ReadString/WriteString move UTF-16 code units
// unchanged.

class KXAFX_API CStdioFile : public CFile {
    DECLARE_DYNAMIC(CStdioFile)

public:
    CStdioFile();
    // Wraps an open stream; it is not closed by the destructor.
    explicit CStdioFile(FILE* pOpenStream);
    CStdioFile(LPCTSTR lpszFileName, UINT nOpenFlags);
    ~CStdioFile() override;

    FILE* m_pStream;

    virtual void WriteString(LPCTSTR lpsz);
    // Reads up to nMax - 1 characters, stopping after a newline (kept); null at end of file.
    virtual LPTSTR ReadString(LPTSTR lpsz, UINT nMax);
    // Reads one line without its newline; FALSE at end of file with nothing read.
    virtual BOOL ReadString(CString& rString);

    BOOL Open(LPCTSTR lpszFileName, UINT nOpenFlags, CFileException* pError = nullptr) override;
    // Not supported on streams (CNotSupportedException).
    CFile* Duplicate() const override;
    void LockRange(ULONGLONG dwPos, ULONGLONG dwCount) override;
    void UnlockRange(ULONGLONG dwPos, ULONGLONG dwCount) override;
    ULONGLONG GetPosition() const override;
    ULONGLONG Seek(LONGLONG lOff, UINT nFrom) override;
    ULONGLONG GetLength() const override;
    UINT Read(void* lpBuf, UINT nCount) override;
    void Write(const void* lpBuf, UINT nCount) override;
    void Abort() override;
    void Flush() override;
    void Close() override;

private:
    bool m_bText = true;
    // Reads raw text up to and including the next newline (at most nMax units); false at EOF.
    bool ReadLine(CString& rLine, UINT nMax);
};

// ---------------------------------------------------------------------------------------------
// CArchive: typed, buffered storing or loading on a CFile. Data is little-endian; strings and
// objects use the framework's persistent formats. Reading past the stored data, an unknown
// class or a bad reference raises CArchiveException.

class KXAFX_API CArchive {
public:
    enum Mode { store = 0, load = 1, bNoFlushOnDelete = 2, bNoByteSwap = 4 };

    // nBufSize bytes of buffer; lpBuf (optional) is used instead of allocating one.
    CArchive(CFile* pFile, UINT nMode, int nBufSize = 4096, void* lpBuf = nullptr);
    ~CArchive();
    CArchive(const CArchive&) = delete;
    CArchive& operator=(const CArchive&) = delete;

    BOOL IsLoading() const { return (m_nMode & load) != 0; }
    BOOL IsStoring() const { return (m_nMode & load) == 0; }
    BOOL IsByteSwapping() const { return FALSE; }
    BOOL IsBufferEmpty() const { return m_lpBufCur == m_lpBufMax; }
    CFile* GetFile() const { return m_pFile; }
    // Schema of the object being loaded (set by ReadObject for its Serialize).
    UINT GetObjectSchema();
    void SetObjectSchema(UINT nSchema) { m_nObjectSchema = nSchema; }

    CDocument* m_pDocument = nullptr;

    // Raw bytes. Read returns fewer than nMax only at the end of the data.
    UINT Read(void* lpBuf, UINT nMax);
    // Reads exactly nCount bytes or raises CArchiveException::endOfFile.
    void EnsureRead(void* lpBuf, UINT nCount);
    void Write(const void* lpBuf, UINT nMax);
    // Storing: writes the buffer to the file. Loading: seeks the file back to the first byte
    // not yet consumed and empties the buffer.
    void Flush();
    // Flushes and detaches from the file.
    void Close();
    // Detaches without flushing; errors are ignored.
    void Abort();

    // Text without terminator or length; lines are read up to "\n" or "\r\n".
    void WriteString(LPCTSTR lpsz);
    LPTSTR ReadString(LPTSTR lpsz, UINT nMax);
    BOOL ReadString(CString& rString);

    CArchive& operator<<(BYTE by) { return WriteValue(by); }
    CArchive& operator<<(WORD w) { return WriteValue(w); }
    CArchive& operator<<(LONG l) { return WriteValue(l); }
    CArchive& operator<<(DWORD dw) { return WriteValue(dw); }
    CArchive& operator<<(float f) { return WriteValue(f); }
    CArchive& operator<<(double d) { return WriteValue(d); }
    CArchive& operator<<(LONGLONG dwdw) { return WriteValue(dwdw); }
    CArchive& operator<<(ULONGLONG dwdw) { return WriteValue(dwdw); }
    CArchive& operator<<(int i) { return WriteValue(i); }
    CArchive& operator<<(short w) { return WriteValue(w); }
    CArchive& operator<<(char ch) { return WriteValue(ch); }
    CArchive& operator<<(wchar_t ch) { return WriteValue(ch); }
    CArchive& operator<<(unsigned u) { return WriteValue(u); }
    CArchive& operator<<(bool b) { return WriteValue(static_cast<BYTE>(b ? 1 : 0)); }

    CArchive& operator>>(BYTE& by) { return ReadValue(by); }
    CArchive& operator>>(WORD& w) { return ReadValue(w); }
    CArchive& operator>>(LONG& l) { return ReadValue(l); }
    CArchive& operator>>(DWORD& dw) { return ReadValue(dw); }
    CArchive& operator>>(float& f) { return ReadValue(f); }
    CArchive& operator>>(double& d) { return ReadValue(d); }
    CArchive& operator>>(LONGLONG& dwdw) { return ReadValue(dwdw); }
    CArchive& operator>>(ULONGLONG& dwdw) { return ReadValue(dwdw); }
    CArchive& operator>>(int& i) { return ReadValue(i); }
    CArchive& operator>>(short& w) { return ReadValue(w); }
    CArchive& operator>>(char& ch) { return ReadValue(ch); }
    CArchive& operator>>(wchar_t& ch) { return ReadValue(ch); }
    CArchive& operator>>(unsigned& u) { return ReadValue(u); }
    CArchive& operator>>(bool& b)
    {
        BYTE by = 0;
        ReadValue(by);
        b = by != 0;
        return *this;
    }

    // Objects with their class: the first occurrence of a class is stored by name and schema,
    // later ones by index; an object stored twice is loaded once and shared.
    CObject* ReadObject(const CRuntimeClass* pClass);
    void WriteObject(const CObject* pOb);
    CRuntimeClass* ReadClass(const CRuntimeClass* pClassRefRequested = nullptr,
                             UINT* pSchema = nullptr, DWORD* pObTag = nullptr);
    void WriteClass(const CRuntimeClass* pClassRef);
    void SerializeClass(const CRuntimeClass* pClassRef);
    // Registers an object that is referenced later but stored by other means.
    void MapObject(const CObject* pOb);
    void SetStoreParams(UINT nHashSize = 2053, UINT nBlockSize = 128);
    void SetLoadParams(UINT nGrowBy = 1024);

    // Element counts: 16 bits, escalating to 32 and 64 bits for large values.
    DWORD_PTR ReadCount();
    void WriteCount(DWORD_PTR dwCount);

    UINT m_nObjectSchema = static_cast<UINT>(-1);
    CString m_strFileName;

protected:
    UINT m_nMode;
    BOOL m_bUserBuf;
    int m_nBufSize;
    CFile* m_pFile;
    BYTE* m_lpBufCur;
    BYTE* m_lpBufMax;
    BYTE* m_lpBufStart;

    UINT m_nMapCount = 0;
    CPtrArray* m_pLoadArray = nullptr;   // loading: index -> class or object
    CMapPtrToPtr* m_pStoreMap = nullptr; // storing: class or object -> index
    CMapPtrToPtr* m_pSchemaMap = nullptr; // loading: class -> schema found in the data
    UINT m_nGrowSize = 1024;
    UINT m_nHashSize = 2053;

    // Makes at least nBytesNeeded unread bytes available or raises endOfFile.
    void FillBuffer(UINT nBytesNeeded);
    void CheckCount();
    void CheckLoading() const
    {
        if (!IsLoading())
            ThrowArchive(CArchiveException::writeOnly);
    }
    void CheckStoring() const
    {
        if (!IsStoring())
            ThrowArchive(CArchiveException::readOnly);
    }
    [[noreturn]] void ThrowArchive(int cause) const;

private:
    template <class T>
    CArchive& WriteValue(T value)
    {
        CheckStoring();
        if (m_lpBufCur + sizeof(T) > m_lpBufMax)
            Flush();
        memcpy(m_lpBufCur, &value, sizeof(T));
        m_lpBufCur += sizeof(T);
        return *this;
    }
    template <class T>
    CArchive& ReadValue(T& value)
    {
        CheckLoading();
        if (m_lpBufCur + sizeof(T) > m_lpBufMax)
            FillBuffer(static_cast<UINT>(sizeof(T) - (m_lpBufMax - m_lpBufCur)));
        memcpy(&value, m_lpBufCur, sizeof(T));
        m_lpBufCur += sizeof(T);
        return *this;
    }
    // As FillBuffer, but false instead of an exception at the end of the data.
    bool TryFill(UINT nBytesNeeded);
    // Next character for ReadString; false at the end of the data.
    bool ReadChar(wchar_t& ch);
    void Detach();
};

// Strings: a length prefix (0xFF 0xFFFE marks UTF-16 text; 0xFF 0xFFFF and 0xFFFFFFFF escalate
// the length to 32 and 64 bits), then the characters. Narrow text loads through the ANSI code page.
KXAFX_API CArchive& AFXAPI operator<<(CArchive& ar, const CString& str);
KXAFX_API CArchive& AFXAPI operator<<(CArchive& ar, LPCWSTR lpsz); // stored as a CString
KXAFX_API CArchive& AFXAPI operator>>(CArchive& ar, CString& str);
// Any other pointer has no persistent form; without this it would be stored as a bool.
CArchive& operator<<(CArchive& ar, const void* p) = delete;
KXAFX_API CArchive& AFXAPI operator<<(CArchive& ar, const CObject* pOb);
KXAFX_API CArchive& AFXAPI operator>>(CArchive& ar, CObject*& pOb);
KXAFX_API CArchive& AFXAPI operator>>(CArchive& ar, const CObject*& pOb);
