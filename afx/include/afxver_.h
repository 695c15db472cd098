// Build configuration shared by every framework header.
#pragma once

#ifndef UNICODE
#error "KxAfx is a Unicode framework: define UNICODE and _UNICODE"
#endif

#include <windows.h>
#include <tchar.h>

// Classes and functions of KxAfxU.dll.
#ifdef KXAFX_BUILD_DLL
#define KXAFX_API __declspec(dllexport)
#else
#define KXAFX_API __declspec(dllimport)
#endif

#ifndef AFXAPI
#define AFXAPI __stdcall
#endif
#ifndef AFX_CDECL
#define AFX_CDECL __cdecl
#endif
#ifndef AFX_INLINE
#define AFX_INLINE inline
#endif
