#include "KxTestCrossDll.h"

int KxTestCatchFromFramework()
{
    try {
        AfxThrowInvalidArgException();
    } catch (CInvalidArgException* e) {
        e->Delete();
        return 1;
    } catch (CException* e) {
        e->Delete();
        return -1;
    }
    return 0;
}

void KxTestThrowFromDll()
{
    throw new CInvalidArgException;
}

wchar_t* KxTestAllocate(size_t count)
{
    wchar_t* p = new wchar_t[count];
    for (size_t i = 0; i < count; ++i)
        p[i] = L'a' + static_cast<wchar_t>(i % 26);
    return p;
}

IMPLEMENT_DYNCREATE(CKxTestShape, CObject)

BOOL KxTestIsShape(const CObject* pObject)
{
    return pObject && pObject->IsKindOf(RUNTIME_CLASS(CKxTestShape));
}

BOOL KxTestIsException(const CObject* pObject)
{
    return pObject && pObject->IsKindOf(RUNTIME_CLASS(CException));
}

CObject* KxTestCreateByName(LPCWSTR lpszClassName)
{
    return CRuntimeClass::CreateObject(lpszClassName);
}
