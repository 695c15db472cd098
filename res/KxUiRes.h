// Identifiers of the library's string resources (shared by KxUiDllU.dll and KxUiDllrcU.dll).
#pragma once

#define IDS_KXUI_VERSION 100  // the library's version text
