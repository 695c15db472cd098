// Automation and ActiveX control containment.
//
// A window hosts an ActiveX control through CWnd::CreateControl once the program has
// called AfxEnableControlContainer (after AfxOleInit). The platform's container window
// (class "AtlAxWin" of atl.dll) holds the control; the CWnd object wraps that window.
#pragma once
#include "afxole.h"

// Makes CWnd::CreateControl available to the process; call it once after AfxOleInit.
// Returns FALSE when the platform's control container cannot be loaded.
KXAFX_API BOOL AFXAPI AfxEnableControlContainer();
