// Module states: each module's resources and instance, switched by AFX_MANAGE_STATE.
#include <afxwin.h>
#include "KxAfxTestRes.h"
#include "KxTestApp.h"
#include "statedll/KxTestStateDll.h"

namespace {

CString LoadHere(UINT id)
{
    CString s;
    s.LoadString(id);
    return s;
}

}  // namespace

TEST(ModuleState, ExportedFunctionsSwitchToTheirModulesResourcesAndBack)
{
    HMODULE dll = ::GetModuleHandleW(L"KxTestStateDll.dll");
    ASSERT_NE(nullptr, dll);
    EXPECT_EQ(CString(L"from the executable"), LoadHere(IDS_TEST_WHERE));
    EXPECT_EQ(CString(L"from the DLL"), KxTestDllLoadString(IDS_TEST_WHERE));
    EXPECT_EQ(CString(L"only in the DLL"), KxTestDllLoadString(9));
    // Without the switch the DLL's code loads the caller's resources.
    EXPECT_EQ(CString(L"from the executable"), KxTestDllLoadStringUnmanaged(IDS_TEST_WHERE));
    EXPECT_EQ(CString(), KxTestDllLoadStringUnmanaged(9));
    // Back in the executable's state.
    EXPECT_EQ(CString(L"from the executable"), LoadHere(IDS_TEST_WHERE));
    EXPECT_EQ(AfxGetAppModuleState(), AfxGetModuleState());

    EXPECT_EQ(dll, KxTestDllInstance());
    EXPECT_EQ(dll, KxTestDllResourceHandle());
    EXPECT_EQ(::GetModuleHandleW(nullptr), AfxGetInstanceHandle());
    EXPECT_NE(AfxGetStaticModuleState(), KxTestDllStaticState());
    EXPECT_EQ(AfxGetAppModuleState(), AfxGetStaticModuleState());
    // The DLL has no application of its own: it works for the host's.
    EXPECT_EQ(static_cast<CWinApp*>(&KxTestApp::Get()), KxTestDllApp());
}

TEST(ModuleState, CallbacksIntoTheCallerRunInTheDllsStateUntilTheyReturn)
{
    // What the caller's code sees while a library function is on the stack.
    const CString inside = KxTestDllCallBack([] { return LoadHere(IDS_TEST_WHERE); });
    EXPECT_EQ(CString(L"from the DLL"), inside);
    EXPECT_EQ(CString(L"from the executable"), LoadHere(IDS_TEST_WHERE));

    // An exception leaving the DLL restores the caller's state on the way out.
    try {
        KxTestDllThrow();
        ADD_FAILURE() << "no exception";
    } catch (CException* e) {
        e->Delete();
    }
    EXPECT_EQ(AfxGetAppModuleState(), AfxGetModuleState());
    EXPECT_EQ(CString(L"from the executable"), LoadHere(IDS_TEST_WHERE));
}

TEST(ModuleState, ResourceHandleIsPerModuleAndStateIsPerThread)
{
    HMODULE dll = ::GetModuleHandleW(L"KxTestStateDll.dll");
    HINSTANCE exe = AfxGetResourceHandle();
    {
        // The executable takes its strings from the DLL for a while.
        AfxSetResourceHandle(dll);
        EXPECT_EQ(CString(L"from the DLL"), LoadHere(IDS_TEST_WHERE));
        EXPECT_EQ(dll, KxTestDllResourceHandle());
        AfxSetResourceHandle(exe);
    }
    EXPECT_EQ(CString(L"from the executable"), LoadHere(IDS_TEST_WHERE));

    // Another thread starts in the application's state, whatever this one uses.
    AFX_MAINTAIN_STATE2 guard(KxTestDllStaticState());
    EXPECT_EQ(CString(L"from the DLL"), LoadHere(IDS_TEST_WHERE));
    struct Result {
        AFX_MODULE_STATE* state;
        CString text;
    } result{nullptr, CString()};
    HANDLE thread = ::CreateThread(
        nullptr, 0,
        [](void* p) -> DWORD {
            auto* r = static_cast<Result*>(p);
            r->state = AfxGetModuleState();
            r->text = LoadHere(IDS_TEST_WHERE);
            return 0;
        },
        &result, 0, nullptr);
    ASSERT_NE(nullptr, thread);
    ::WaitForSingleObject(thread, INFINITE);
    ::CloseHandle(thread);
    EXPECT_EQ(AfxGetAppModuleState(), result.state);
    EXPECT_EQ(CString(L"from the executable"), result.text);
}
