// Internals shared by the framework's window sources.
#pragma once
#include "afxwin.h"

// Message-map dispatch of the handler signatures that take a device context
// (erase background and control colours); defined with the drawing wrappers.
BOOL AfxDispatchDCEntry(CWnd* pWnd, UINT_PTR nSig, AFX_PMSG pfn, WPARAM wParam, LPARAM lParam, LRESULT* pResult);

// Finds the entry of a map for a window message (nCode 0, id 0) or command.
const AFX_MSGMAP_ENTRY* AfxFindMessageEntry(const AFX_MSGMAP_ENTRY* lpEntry, UINT nMsg, UINT nCode, UINT nID);

// Copies a window's text into a CString.
CString AfxGetWindowText(HWND hWnd);
