// A small client DLL of the framework, used to throw and catch across module boundaries.
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
