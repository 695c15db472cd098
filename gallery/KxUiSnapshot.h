// Pictures of windows for the gallery's snapshot mode.
#pragma once
#include <windows.h>

// Paints a shown top-level window and all its children now and copies the result, frame
// and menu bar included, into a 32-bit bitmap (owned by the caller). The null display
// driver keeps every window's surface in memory, so this needs no display.
HBITMAP KxCaptureWindow(HWND hWnd);

// Writes a bitmap as a PNG file through the platform's imaging codecs. False on failure.
bool KxWritePng(HBITMAP hBitmap, LPCWSTR path);

// True when the bitmap is not of one colour (a page that drew nothing is blank).
bool KxHasContent(HBITMAP hBitmap);
