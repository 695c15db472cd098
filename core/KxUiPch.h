// Precompiled header of the library's own sources in every subsystem folder, given to each of
// them by the build; private, so the SDK's include/ does not carry it.
#pragma once
#include <windows.h>
#include <commctrl.h>
#include <afx.h>
#include <afxtempl.h>
#include <afxwin.h>
