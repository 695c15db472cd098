// Resource ids of the SDK consumer.
#pragma once
#define IDR_MAINFRAME 128
#define IDD_ABOUTBOX 100
#define IDC_ABOUT_NAME 1000
#define ID_HELP_ABOUT 32771
#define ID_VIEW_GREETING 32772
#define ID_INDICATOR_GREETING 32773
