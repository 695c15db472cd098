// Run-time classes and persistence of the ready-made collections.
#include "afx.h"
#include "afxcoll.h"

IMPLEMENT_SERIAL(CObArray, CObject, 0)
IMPLEMENT_DYNAMIC(CPtrArray, CObject)
IMPLEMENT_SERIAL(CStringArray, CObject, 0)
IMPLEMENT_DYNAMIC(CUIntArray, CObject)
IMPLEMENT_SERIAL(CDWordArray, CObject, 0)
IMPLEMENT_SERIAL(CWordArray, CObject, 0)
IMPLEMENT_SERIAL(CByteArray, CObject, 0)
IMPLEMENT_DYNAMIC(CMapPtrToPtr, CObject)
IMPLEMENT_DYNAMIC(CMapStringToPtr, CObject)
IMPLEMENT_SERIAL(CMapStringToString, CObject, 0)
IMPLEMENT_DYNAMIC(CMapWordToPtr, CObject)
IMPLEMENT_SERIAL(CObList, CObject, 0)
IMPLEMENT_DYNAMIC(CPtrList, CObject)
IMPLEMENT_SERIAL(CStringList, CObject, 0)

void CObArray::Serialize(CArchive& ar)
{
    CObject::Serialize(ar);
    if (ar.IsStoring()) {
        ar.WriteCount(m_nSize);
        for (INT_PTR i = 0; i < m_nSize; ++i)
            ar << m_pData[i];
        return;
    }
    // One element at a time: a corrupt count ends at the end of the data, not in a huge block.
    DWORD_PTR nCount = ar.ReadCount();
    RemoveAll();
    for (DWORD_PTR i = 0; i < nCount; ++i) {
        CObject* pOb;
        ar >> pOb;
        Add(pOb);
    }
}

void CObList::Serialize(CArchive& ar)
{
    CObject::Serialize(ar);
    if (ar.IsStoring()) {
        ar.WriteCount(m_nCount);
        for (CNode* p = m_pNodeHead; p != nullptr; p = p->pNext)
            ar << p->data;
        return;
    }
    DWORD_PTR nCount = ar.ReadCount();
    for (DWORD_PTR i = 0; i < nCount; ++i) {
        CObject* pOb;
        ar >> pOb;
        AddTail(pOb);
    }
}

void CPtrArray::Serialize(CArchive& ar)
{
    CObject::Serialize(ar);
}

void CMapPtrToPtr::Serialize(CArchive& ar)
{
    CObject::Serialize(ar);
}

void CMapStringToPtr::Serialize(CArchive& ar)
{
    CObject::Serialize(ar);
}

void CMapWordToPtr::Serialize(CArchive& ar)
{
    CObject::Serialize(ar);
}

void CPtrList::Serialize(CArchive& ar)
{
    CObject::Serialize(ar);
}
