// Identifiers of the strings carried by the test language libraries KxTestU_<lang>.kxx.
#pragma once

#define IDS_TEST_GREETING  1   // a greeting in the library's language
#define IDS_TEST_WINDOW    2   // the word "window"
#define IDS_TEST_LANGUAGE  3   // the locale name the library was built for
#define IDS_TEST_ONLY_FR   4   // present in the French library only
