// Precompiled header of the framework's own sources: most of them are the window layer.
#pragma once
#include <windows.h>
#include <commctrl.h>
#include <new>
#include "afx.h"
#include "afxwin.h"
