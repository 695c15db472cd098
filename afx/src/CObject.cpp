// CObject and run-time class information, with the process-wide class list.
#include "afx.h"
#include <cstring>

/////////////////////////////////////////////////////////////////////////////
// Class list. Each module's classes register from static objects when the module loads
// and leave when it unloads, so FromName sees the classes of every loaded module.

namespace {

SRWLOCK g_classLock = SRWLOCK_INIT;
AFX_CLASSINIT* g_classList = nullptr;

}  // namespace

AFX_CLASSINIT::AFX_CLASSINIT(CRuntimeClass* pNewClass) : m_pClass(pNewClass), m_pNext(nullptr)
{
    AcquireSRWLockExclusive(&g_classLock);
    m_pNext = g_classList;
    g_classList = this;
    ReleaseSRWLockExclusive(&g_classLock);
}

AFX_CLASSINIT::~AFX_CLASSINIT()
{
    AcquireSRWLockExclusive(&g_classLock);
    for (AFX_CLASSINIT** pp = &g_classList; *pp; pp = &(*pp)->m_pNext) {
        if (*pp == this) {
            *pp = m_pNext;
            break;
        }
    }
    ReleaseSRWLockExclusive(&g_classLock);
}

/////////////////////////////////////////////////////////////////////////////
// CRuntimeClass

CObject* CRuntimeClass::CreateObject()
{
    if (!m_pfnCreateObject)
        return nullptr;
    try {
        return (*m_pfnCreateObject)();
    } catch (CException* e) {
        e->Delete();
    } catch (...) {
    }
    return nullptr;
}

BOOL CRuntimeClass::IsDerivedFrom(const CRuntimeClass* pBaseClass) const
{
    if (!pBaseClass)
        return FALSE;
    for (const CRuntimeClass* p = this; p; p = p->m_pfnGetBaseClass ? (*p->m_pfnGetBaseClass)() : nullptr) {
        if (p == pBaseClass)
            return TRUE;
    }
    return FALSE;
}

CRuntimeClass* PASCAL CRuntimeClass::FromName(LPCSTR lpszClassName)
{
    if (!lpszClassName)
        return nullptr;
    CRuntimeClass* found = nullptr;
    AcquireSRWLockShared(&g_classLock);
    for (AFX_CLASSINIT* p = g_classList; p; p = p->m_pNext) {
        if (std::strcmp(p->m_pClass->m_lpszClassName, lpszClassName) == 0) {
            found = p->m_pClass;
            break;
        }
    }
    ReleaseSRWLockShared(&g_classLock);
    return found;
}

CRuntimeClass* PASCAL CRuntimeClass::FromName(LPCWSTR lpszClassName)
{
    if (!lpszClassName)
        return nullptr;
    // Class names are C++ identifiers: anything outside ASCII matches no class.
    char name[256];
    size_t i = 0;
    for (; lpszClassName[i]; ++i) {
        if (i + 1 >= sizeof name || lpszClassName[i] > 0x7F)
            return nullptr;
        name[i] = static_cast<char>(lpszClassName[i]);
    }
    name[i] = 0;
    return FromName(name);
}

CObject* PASCAL CRuntimeClass::CreateObject(LPCSTR lpszClassName)
{
    CRuntimeClass* p = FromName(lpszClassName);
    return p ? p->CreateObject() : nullptr;
}

CObject* PASCAL CRuntimeClass::CreateObject(LPCWSTR lpszClassName)
{
    CRuntimeClass* p = FromName(lpszClassName);
    return p ? p->CreateObject() : nullptr;
}

/////////////////////////////////////////////////////////////////////////////
// CObject

const CRuntimeClass CObject::classCObject = {"CObject", sizeof(CObject), 0xFFFF, nullptr, nullptr};
static AFX_CLASSINIT _init_CObject(_RUNTIME_CLASS(CObject));

CObject::~CObject() = default;

CRuntimeClass* CObject::GetRuntimeClass() const
{
    return _RUNTIME_CLASS(CObject);
}

CRuntimeClass* PASCAL CObject::_GetBaseClass()
{
    return nullptr;
}

CRuntimeClass* PASCAL CObject::GetThisClass()
{
    return _RUNTIME_CLASS(CObject);
}

BOOL CObject::IsSerializable() const
{
    return GetRuntimeClass()->m_wSchema != 0xFFFF;
}

BOOL CObject::IsKindOf(const CRuntimeClass* pClass) const
{
    return GetRuntimeClass()->IsDerivedFrom(pClass);
}

void CObject::Serialize(CArchive&) {}

void CObject::AssertValid() const {}

void CObject::Dump(CDumpContext& dc) const
{
    dc << "a " << GetRuntimeClass()->m_lpszClassName << " at " << static_cast<const void*>(this) << "\n";
}

CObject* AFXAPI AfxDynamicDownCast(CRuntimeClass* pClass, CObject* pObject)
{
    return pObject && pObject->IsKindOf(pClass) ? pObject : nullptr;
}

CObject* AFXAPI AfxStaticDownCast(CRuntimeClass* pClass, CObject* pObject)
{
    if (pObject && !pObject->IsKindOf(pClass))
        AfxAssertFailedLine(__FILE__, __LINE__);
    return pObject;
}
