// Export macro and common definitions of KxUiDllU.dll.
#pragma once
#include <afx.h>

#ifdef KXUI_BUILD_DLL
#define KXUI_API __declspec(dllexport)
#else
#define KXUI_API __declspec(dllimport)
#endif
