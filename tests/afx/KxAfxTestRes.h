// Resource ids of the afx suite's executable.
#pragma once

#define IDS_TEST_WHERE 1          // same id as in the state test DLL, another text
#define IDS_TEST_PROMPT 2
#define IDS_TEST_FRAME 100        // frame: title, menu, accelerators
#define IDR_TEST_FRAME 100
#define IDD_TEST_DIALOG 200
#define IDC_TEST_NAME 201
#define IDC_TEST_COUNT 202
#define IDC_TEST_CHECK 203
#define IDC_TEST_RADIO1 204
#define IDC_TEST_RADIO2 205
#define IDC_TEST_RADIO3 206
#define IDC_TEST_COMBO 207
#define IDC_TEST_BUTTON 208
#define ID_TEST_OPEN 300
#define ID_TEST_SAVE 301
#define ID_TEST_VIEWONLY 302
#define ID_TEST_NOHANDLER 303
#define ID_TEST_CHECKED 304
#define ID_TEST_APPCMD 305
#define ID_TEST_PANE 306
#define ID_TEST_RENAMED 307
