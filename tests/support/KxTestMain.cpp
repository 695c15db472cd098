// Entry point of every suite executable: the test application, then the tests.
#include <gtest/gtest.h>
#include "KxTestApp.h"

namespace {

// Gives each test a fresh profile and message-box record.
class KxTestAppListener : public testing::EmptyTestEventListener {
    void OnTestStart(const testing::TestInfo&) override { KxTestApp::Get().BeginTest(); }
    void OnTestEnd(const testing::TestInfo&) override { KxTestApp::Get().EndTest(); }
};

}  // namespace

int main(int argc, char** argv)
{
    // A failing assertion in a test must never open a dialog and hang a headless run.
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX);
    testing::InitGoogleTest(&argc, argv);

    // The executable's application, initialised the way the framework's main does it.
    KxTestApp app;
    AfxWinInit(GetModuleHandleW(nullptr), nullptr, GetCommandLineW(), SW_HIDE);
    app.InitApplication();
    app.InitInstance();
    testing::UnitTest::GetInstance()->listeners().Append(new KxTestAppListener);

    const int result = RUN_ALL_TESTS();
    app.EndTest();
    AfxWinTerm();
    return result;
}
