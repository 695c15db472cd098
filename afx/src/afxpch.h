// Precompiled header of the framework's own sources.
#pragma once
#include <windows.h>
#include <commctrl.h>
#include <new>
#include "afx.h"
