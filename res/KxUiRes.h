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

// Hyperlink actions: what ErrorNotify shows for each error value.
#define IDS_KXUI_HLA_USER_FAILED     700  // "%s action failed!" (the action's name)
#define IDS_KXUI_HLA_UNKNOWN_ACTION  701  // "Failed to execute unknown action!"
#define IDS_KXUI_HLA_OOM             702  // shell result 0
#define IDS_KXUI_HLA_FILE_NOT_FOUND  703  // 2
#define IDS_KXUI_HLA_PATH_NOT_FOUND  704  // 3
#define IDS_KXUI_HLA_ACCESS_DENIED   705  // 5
#define IDS_KXUI_HLA_NO_MEMORY       706  // 8
#define IDS_KXUI_HLA_BAD_FORMAT      707  // 11
#define IDS_KXUI_HLA_SHARE           708  // 26
#define IDS_KXUI_HLA_ASSOC_INCOMPLETE 709 // 27
#define IDS_KXUI_HLA_DDE_TIMEOUT     710  // 28
#define IDS_KXUI_HLA_DDE_FAIL        711  // 29
#define IDS_KXUI_HLA_DDE_BUSY        712  // 30
#define IDS_KXUI_HLA_NO_ASSOC        713  // 31
#define IDS_KXUI_HLA_DLL_NOT_FOUND   714  // 32
#define IDS_KXUI_HLA_UNKNOWN_ERROR   715  // any other value

// Bitmap menus: the customisation context menu.
#define IDS_KXUI_BM_DELETE           730  // "Delete"
#define IDS_KXUI_BM_APPEARANCE       731  // "Appearance..."
#define IDS_KXUI_BM_SEPARATOR_BEFORE 732  // "Put Separator Before"
#define IDS_KXUI_BM_SEPARATOR_AFTER  733  // "Put Separator After"
#define IDS_KXUI_BM_RECENTLY_USED    734  // "Recently Used"
