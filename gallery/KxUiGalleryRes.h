// Resource and command identifiers of the gallery.
#pragma once

#define IDR_GALLERY        100
#define ID_VIEW_NEXTPAGE   32800
#define ID_VIEW_PREVPAGE   32801
#define ID_HELP_ABOUT      32802
#define ID_FILE_EXIT       32803
#define IDC_PAGELIST       1000
#define IDC_PAGE           1001
