// The library's version, as compiled and as carried in its string table.
#pragma once
#include "KxUiDef.h"

// Version of KxUiDllU.dll packed as 0xMMmmpppp (major, minor, patch).
KXUI_API DWORD KxUiGetVersion();
