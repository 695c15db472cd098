// The framework's ready-made collections: arrays, maps and lists of objects, pointers, strings and
// integers. Each is a CObject with run-time class information, built on the templates of
// afxtempl.h; the serializable ones store the same format as the classic framework.
#pragma once
#include "afxtempl.h"

// Arrays

class KXAFX_API CObArray : public CArray<CObject*, CObject*> {
    DECLARE_SERIAL(CObArray)
public:
    CObArray() = default;
    // Stores each element as an object with its class (see CArchive::WriteObject).
    void Serialize(CArchive& ar) override;
};

class KXAFX_API CPtrArray : public CArray<void*, void*> {
    DECLARE_DYNAMIC(CPtrArray)
public:
    CPtrArray() = default;
    // Pointers have no persistent form: nothing is stored.
    void Serialize(CArchive& ar) override;
};

class KXAFX_API CStringArray : public CArray<CString, const CString&> {
    DECLARE_SERIAL(CStringArray)
public:
    CStringArray() = default;
};

class KXAFX_API CUIntArray : public CArray<UINT, UINT> {
    DECLARE_DYNAMIC(CUIntArray)
public:
    CUIntArray() = default;
};

class KXAFX_API CDWordArray : public CArray<DWORD, DWORD> {
    DECLARE_SERIAL(CDWordArray)
public:
    CDWordArray() = default;
};

class KXAFX_API CWordArray : public CArray<WORD, WORD> {
    DECLARE_SERIAL(CWordArray)
public:
    CWordArray() = default;
};

class KXAFX_API CByteArray : public CArray<BYTE, BYTE> {
    DECLARE_SERIAL(CByteArray)
public:
    CByteArray() = default;
};

// Maps

class KXAFX_API CMapPtrToPtr : public CMap<void*, void*, void*, void*> {
    DECLARE_DYNAMIC(CMapPtrToPtr)
public:
    explicit CMapPtrToPtr(INT_PTR nBlockSize = 10) : CMap(nBlockSize) {}
    void Serialize(CArchive& ar) override;
};

class KXAFX_API CMapStringToPtr : public CMap<CString, LPCTSTR, void*, void*> {
    DECLARE_DYNAMIC(CMapStringToPtr)
public:
    explicit CMapStringToPtr(INT_PTR nBlockSize = 10) : CMap(nBlockSize) {}
    void Serialize(CArchive& ar) override;
};

class KXAFX_API CMapStringToString : public CMap<CString, LPCTSTR, CString, LPCTSTR> {
    DECLARE_SERIAL(CMapStringToString)
public:
    explicit CMapStringToString(INT_PTR nBlockSize = 10) : CMap(nBlockSize) {}
};

class KXAFX_API CMapWordToPtr : public CMap<WORD, WORD, void*, void*> {
    DECLARE_DYNAMIC(CMapWordToPtr)
public:
    explicit CMapWordToPtr(INT_PTR nBlockSize = 10) : CMap(nBlockSize) {}
    void Serialize(CArchive& ar) override;
};

// Lists

class KXAFX_API CObList : public CList<CObject*, CObject*> {
    DECLARE_SERIAL(CObList)
public:
    explicit CObList(INT_PTR nBlockSize = 10) : CList(nBlockSize) {}
    void Serialize(CArchive& ar) override;
};

class KXAFX_API CPtrList : public CList<void*, void*> {
    DECLARE_DYNAMIC(CPtrList)
public:
    explicit CPtrList(INT_PTR nBlockSize = 10) : CList(nBlockSize) {}
    void Serialize(CArchive& ar) override;
};

class KXAFX_API CStringList : public CList<CString, const CString&> {
    DECLARE_SERIAL(CStringList)
public:
    explicit CStringList(INT_PTR nBlockSize = 10) : CList(nBlockSize) {}
};
