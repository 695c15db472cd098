// Precompiled header of the gallery.
#pragma once
#include <windows.h>
#include <commctrl.h>
#include <afxwin.h>
#include <afxext.h>
#include <afxcmn.h>
