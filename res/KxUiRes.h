// Identifiers of the library's string resources, shared by KxUiDllU.dll and KxUiDllrcU.dll
// (both compile KxUiStrings.rc, so the two tables are identical).
//
// Load them with KxUiLoadStringWndRc (or KxUiLoadStringWndRc::loadStringStatic), which reads
// the library's resource module. A translated KxUiDllrcU.dll keeps these numbers.
//
// Ranges: 100-199 core services; 200-299 persistence; 300-399 layout; 400-499 grid;
// 500-599 lists; 600-699 edits and bars; 700-799 menus; 800-899 sheets and dialogs;
// 900-999 text and shell utilities.
#pragma once

#define IDS_KXUI_VERSION   100  // the library's name and version, "KxUi 0.1"
#define IDS_KXUI_LANGUAGE  101  // the language of this string table, in that language
#define IDS_KXUI_LIBRARY   102  // the library's display name, "KxUi user-interface library"
