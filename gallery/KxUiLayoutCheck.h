// Checks a laid-out page the way a user's eye would: every control inside the page, no two
// controls on top of each other (except a control placed inside a tab control or a group box),
// and no label, check box or button too small for its text.
#pragma once
#include <afxwin.h>
#include <vector>

// One problem per entry, worded for a person ("'Confirm befor...' is clipped: needs 161 px, has 150").
std::vector<CString> KxCheckPageLayout(HWND hPage);
