// Precompiled header of the library's own sources.
#pragma once
#include <windows.h>
#include <commctrl.h>
#include <afx.h>
#include <afxtempl.h>
#include <afxwin.h>
