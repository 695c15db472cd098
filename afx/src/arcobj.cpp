// CArchive: objects and their classes.
//
// Stored form: before each object a 16-bit tag.
//   0x0000                     null pointer
//   0x0001..0x7FFE             an object stored earlier, by index
//   0x7FFF + 32-bit index      the same, for large indexes (bit 31 set: a class index)
//   0x8000 | class index       an object of a class stored earlier, its data follows
//   0xFFFF + class record      an object of a new class: schema (16 bits), name length (16 bits)
//                              and the class name (narrow characters), then the object's data
// Classes and objects share one index space, starting at 1 in the order they first appear.
#include "afx.h"
#include "afxcoll.h"

namespace {
const WORD wNullTag = 0;
const WORD wNewClassTag = 0xFFFF;
const WORD wClassTag = 0x8000;
const DWORD dwBigClassTag = 0x80000000;
const WORD wBigObjectTag = 0x7FFF;
const UINT nMaxMapCount = 0x3FFFFFFE;
const int nMaxClassName = 64;
} // namespace

void CArchive::CheckCount()
{
    if (m_nMapCount >= nMaxMapCount)
        ThrowArchive(CArchiveException::badIndex);
}

void CArchive::MapObject(const CObject* pOb)
{
    if (IsStoring()) {
        if (m_pStoreMap == nullptr) {
            m_pStoreMap = new CMapPtrToPtr;
            m_pStoreMap->InitHashTable(m_nHashSize);
            m_pStoreMap->SetAt(nullptr, reinterpret_cast<void*>(static_cast<DWORD_PTR>(wNullTag)));
            m_nMapCount = 1;
        }
        if (pOb != nullptr) {
            CheckCount();
            m_pStoreMap->SetAt(const_cast<CObject*>(pOb),
                               reinterpret_cast<void*>(static_cast<DWORD_PTR>(m_nMapCount++)));
        }
    } else {
        if (m_pLoadArray == nullptr) {
            m_pLoadArray = new CPtrArray;
            m_pLoadArray->SetSize(1, m_nGrowSize);
            m_pLoadArray->SetAt(wNullTag, nullptr);
            m_nMapCount = 1;
        }
        if (pOb != nullptr) {
            CheckCount();
            m_pLoadArray->InsertAt(m_nMapCount++, const_cast<CObject*>(pOb));
        }
    }
}

void CArchive::WriteClass(const CRuntimeClass* pClassRef)
{
    if (pClassRef == nullptr)
        AfxThrowInvalidArgException();
    CheckStoring();
    if (pClassRef->m_wSchema == 0xFFFF)
        AfxThrowNotSupportedException(); // not a serializable class
    MapObject(nullptr);
    void* pIndex;
    if (m_pStoreMap->Lookup(const_cast<CRuntimeClass*>(pClassRef), pIndex)) {
        DWORD nClassIndex = static_cast<DWORD>(reinterpret_cast<DWORD_PTR>(pIndex));
        if (nClassIndex < wBigObjectTag) {
            *this << static_cast<WORD>(wClassTag | nClassIndex);
        } else {
            *this << wBigObjectTag;
            *this << (dwBigClassTag | nClassIndex);
        }
        return;
    }
    *this << wNewClassTag;
    pClassRef->Store(*this);
    CheckCount();
    m_pStoreMap->SetAt(const_cast<CRuntimeClass*>(pClassRef),
                       reinterpret_cast<void*>(static_cast<DWORD_PTR>(m_nMapCount++)));
}

void CArchive::WriteObject(const CObject* pOb)
{
    CheckStoring();
    MapObject(nullptr);
    void* pIndex;
    if (pOb == nullptr) {
        *this << wNullTag;
    } else if (m_pStoreMap->Lookup(const_cast<CObject*>(pOb), pIndex)) {
        DWORD nObIndex = static_cast<DWORD>(reinterpret_cast<DWORD_PTR>(pIndex));
        if (nObIndex < wBigObjectTag) {
            *this << static_cast<WORD>(nObIndex);
        } else {
            *this << wBigObjectTag;
            *this << nObIndex;
        }
    } else {
        WriteClass(pOb->GetRuntimeClass());
        CheckCount();
        m_pStoreMap->SetAt(const_cast<CObject*>(pOb),
                           reinterpret_cast<void*>(static_cast<DWORD_PTR>(m_nMapCount++)));
        const_cast<CObject*>(pOb)->Serialize(*this);
    }
}

CRuntimeClass* CArchive::ReadClass(const CRuntimeClass* pClassRefRequested, UINT* pSchema,
                                   DWORD* pObTag)
{
    CheckLoading();
    if (pClassRefRequested != nullptr && pClassRefRequested->m_wSchema == 0xFFFF)
        AfxThrowNotSupportedException();
    MapObject(nullptr);

    WORD wTag;
    *this >> wTag;
    DWORD obTag;
    if (wTag == wBigObjectTag)
        *this >> obTag;
    else
        obTag = (static_cast<DWORD>(wTag & wClassTag) << 16) | (wTag & ~wClassTag);

    if (!(obTag & dwBigClassTag)) {
        // An object reference where a class was expected.
        if (pObTag == nullptr)
            ThrowArchive(CArchiveException::badIndex);
        *pObTag = obTag;
        return nullptr;
    }

    CRuntimeClass* pClassRef;
    UINT nSchema;
    if (wTag == wNewClassTag) {
        pClassRef = CRuntimeClass::Load(*this, &nSchema);
        if (pClassRef == nullptr)
            ThrowArchive(CArchiveException::badClass);
        if ((pClassRef->m_wSchema & ~VERSIONABLE_SCHEMA) != nSchema &&
            !(pClassRef->m_wSchema & VERSIONABLE_SCHEMA))
            ThrowArchive(CArchiveException::badSchema);
        // Every class read is remembered with the schema found in the data (a versionable class
        // reads older schemas itself); the map also tells class entries from object entries.
        if (m_pSchemaMap == nullptr)
            m_pSchemaMap = new CMapPtrToPtr;
        m_pSchemaMap->SetAt(pClassRef, reinterpret_cast<void*>(static_cast<DWORD_PTR>(nSchema)));
        CheckCount();
        m_pLoadArray->InsertAt(m_nMapCount++, pClassRef);
    } else {
        DWORD nClassIndex = obTag & ~dwBigClassTag;
        if (nClassIndex == 0 || nClassIndex >= static_cast<DWORD>(m_pLoadArray->GetSize()))
            ThrowArchive(CArchiveException::badIndex);
        pClassRef = static_cast<CRuntimeClass*>(m_pLoadArray->GetAt(nClassIndex));
        void* pSchemaValue;
        if (m_pSchemaMap == nullptr || !m_pSchemaMap->Lookup(pClassRef, pSchemaValue))
            ThrowArchive(CArchiveException::badIndex); // the index names an object
        nSchema = static_cast<UINT>(reinterpret_cast<DWORD_PTR>(pSchemaValue));
    }

    if (pClassRefRequested != nullptr && !pClassRef->IsDerivedFrom(pClassRefRequested))
        ThrowArchive(CArchiveException::badClass);

    if (pSchema != nullptr)
        *pSchema = nSchema;
    else
        m_nObjectSchema = nSchema;
    if (pObTag != nullptr)
        *pObTag = obTag;
    return pClassRef;
}

void CArchive::SerializeClass(const CRuntimeClass* pClassRef)
{
    if (IsStoring())
        WriteClass(pClassRef);
    else
        ReadClass(pClassRef);
}

CObject* CArchive::ReadObject(const CRuntimeClass* pClassRefRequested)
{
    UINT nSchema;
    DWORD obTag;
    CRuntimeClass* pClassRef = ReadClass(pClassRefRequested, &nSchema, &obTag);

    if (pClassRef == nullptr) {
        // A reference to an object loaded before.
        if (obTag >= static_cast<DWORD>(m_pLoadArray->GetSize()))
            ThrowArchive(CArchiveException::badIndex);
        void* pEntry = m_pLoadArray->GetAt(obTag);
        void* pSchemaValue;
        if (m_pSchemaMap != nullptr && m_pSchemaMap->Lookup(pEntry, pSchemaValue))
            ThrowArchive(CArchiveException::badIndex); // the index names a class
        CObject* pOb = static_cast<CObject*>(pEntry);
        if (pOb != nullptr && pClassRefRequested != nullptr && !pOb->IsKindOf(pClassRefRequested))
            ThrowArchive(CArchiveException::badClass);
        return pOb;
    }

    CObject* pOb = pClassRef->CreateObject();
    if (pOb == nullptr)
        ThrowArchive(CArchiveException::badClass);
    // Registered before its data is read, so that the data can refer back to it.
    CheckCount();
    UINT nIndex = m_nMapCount++;
    m_pLoadArray->InsertAt(nIndex, pOb);
    UINT nSchemaSave = m_nObjectSchema;
    m_nObjectSchema = nSchema;
    try {
        pOb->Serialize(*this);
    } catch (...) {
        m_nObjectSchema = nSchemaSave;
        if (m_pLoadArray != nullptr && nIndex < static_cast<UINT>(m_pLoadArray->GetSize()))
            m_pLoadArray->SetAt(nIndex, nullptr);
        delete pOb;
        throw;
    }
    m_nObjectSchema = nSchemaSave;
    return pOb;
}

// ---------------------------------------------------------------------------------------------
// Class records

void CRuntimeClass::Store(CArchive& ar) const
{
    WORD nLen = static_cast<WORD>(lstrlenA(m_lpszClassName));
    ar << static_cast<WORD>(m_wSchema) << nLen;
    ar.Write(m_lpszClassName, nLen * sizeof(char));
}

CRuntimeClass* PASCAL CRuntimeClass::Load(CArchive& ar, UINT* pwSchemaNum)
{
    WORD wSchema, nLen;
    ar >> wSchema >> nLen;
    if (pwSchemaNum != nullptr)
        *pwSchemaNum = wSchema;
    if (nLen >= nMaxClassName)
        return nullptr;
    char szClassName[nMaxClassName];
    ar.EnsureRead(szClassName, nLen);
    szClassName[nLen] = 0;
    return FromName(szClassName);
}

// ---------------------------------------------------------------------------------------------

CArchive& AFXAPI operator<<(CArchive& ar, const CObject* pOb)
{
    ar.WriteObject(pOb);
    return ar;
}

CArchive& AFXAPI operator>>(CArchive& ar, CObject*& pOb)
{
    pOb = ar.ReadObject(nullptr);
    return ar;
}

CArchive& AFXAPI operator>>(CArchive& ar, const CObject*& pOb)
{
    pOb = ar.ReadObject(nullptr);
    return ar;
}
