// The binaries load under Wine, answer, and share exceptions and heap blocks.
#include "crossdll/KxTestCrossDll.h"
#include "KxUiVersion.h"
#include "../../res/KxUiRes.h"

TEST(Build, ExceptionThrownInFrameworkIsCaughtInAnotherDll)
{
    EXPECT_EQ(1, KxTestCatchFromFramework());
}

TEST(Build, ExceptionThrownInDllIsCaughtAndDeletedInExecutable)
{
    bool caught = false;
    try {
        KxTestThrowFromDll();
    } catch (CException* e) {
        caught = dynamic_cast<CInvalidArgException*>(e) != nullptr;
        e->Delete();
    }
    EXPECT_TRUE(caught);
}

TEST(Build, FrameworkExceptionCaughtInExecutable)
{
    EXPECT_THROW(AfxThrowInvalidArgException(), CInvalidArgException*);
    try {
        AfxThrowInvalidArgException();
    } catch (CException* e) {
        e->Delete();
    }
}

TEST(Build, HeapBlockAllocatedInDllIsFreedHere)
{
    wchar_t* p = KxTestAllocate(1000);
    EXPECT_EQ(L'a', p[0]);
    EXPECT_EQ(L'z', p[25]);
    delete[] p;
}

TEST(Build, LibraryAndResourceModuleCarryTheStringTable)
{
    EXPECT_EQ(0x00010000u, KxUiGetVersion());
    wchar_t buf[64];
    HMODULE lib = GetModuleHandleW(L"KxUiDllU.dll");
    ASSERT_NE(nullptr, lib);
    ASSERT_GT(LoadStringW(lib, IDS_KXUI_VERSION, buf, 64), 0);
    EXPECT_STREQ(L"KxUi 0.1", buf);

    HMODULE rc = LoadLibraryExW(L"KxUiDllrcU.dll", nullptr, LOAD_LIBRARY_AS_DATAFILE);
    ASSERT_NE(nullptr, rc);
    ASSERT_GT(LoadStringW(rc, IDS_KXUI_VERSION, buf, 64), 0);
    EXPECT_STREQ(L"KxUi 0.1", buf);
    FreeLibrary(rc);
}
