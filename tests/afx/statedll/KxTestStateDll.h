// A DLL built on the framework with a string table of its own, to test module states.
#pragma once
#include <afxwin.h>

#ifdef KXTEST_STATEDLL_BUILD
#define KXTEST_STATEDLL_API __declspec(dllexport)
#else
#define KXTEST_STATEDLL_API __declspec(dllimport)
#endif

// String nID loaded the way an exported library function does: in the DLL's module state.
KXTEST_STATEDLL_API CString KxTestDllLoadString(UINT nID);
// The same without switching the module state (loads from the caller's resources).
KXTEST_STATEDLL_API CString KxTestDllLoadStringUnmanaged(UINT nID);
// AfxGetInstanceHandle / AfxGetResourceHandle / AfxGetApp seen inside the DLL's state.
KXTEST_STATEDLL_API HINSTANCE KxTestDllInstance();
KXTEST_STATEDLL_API HINSTANCE KxTestDllResourceHandle();
KXTEST_STATEDLL_API CWinApp* KxTestDllApp();
KXTEST_STATEDLL_API AFX_MODULE_STATE* KxTestDllStaticState();
// Calls back into the caller while in the DLL's state; returns what the callback returned.
KXTEST_STATEDLL_API CString KxTestDllCallBack(CString (*callback)());
// Throws a CInvalidArgException* while in the DLL's state.
KXTEST_STATEDLL_API void KxTestDllThrow();
