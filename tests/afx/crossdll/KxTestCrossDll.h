// A small client DLL of the framework, used to throw and catch across module boundaries
// and to check run-time class information between modules.
#pragma once
#include <afx.h>

#ifdef KXTEST_CROSSDLL_BUILD
#define KXTEST_CROSSDLL_API __declspec(dllexport)
#else
#define KXTEST_CROSSDLL_API __declspec(dllimport)
#endif

// Calls into KxAfxU.dll, which throws; catches the exception here and deletes it.
// Returns 1 when a CInvalidArgException* was caught, 0 when nothing was thrown.
KXTEST_CROSSDLL_API int KxTestCatchFromFramework();

// Throws a CInvalidArgException* allocated in this DLL, for the caller to catch and delete.
KXTEST_CROSSDLL_API void KxTestThrowFromDll();

// Allocates a block here, to be freed by the caller's module.
KXTEST_CROSSDLL_API wchar_t* KxTestAllocate(size_t count);

// A dynamically creatable class defined in this DLL.
class KXTEST_CROSSDLL_API CKxTestShape : public CObject {
    DECLARE_DYNCREATE(CKxTestShape)
public:
    CKxTestShape() : m_nSides(0) {}
    virtual int Sides() const { return m_nSides; }
    int m_nSides;
};

// Checks made inside this DLL, on objects from any module.
KXTEST_CROSSDLL_API BOOL KxTestIsShape(const CObject* pObject);
KXTEST_CROSSDLL_API BOOL KxTestIsException(const CObject* pObject);
// Creates an object by class name from inside this DLL.
KXTEST_CROSSDLL_API CObject* KxTestCreateByName(LPCWSTR lpszClassName);
