// Entry point of every suite executable.
#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    // A failing assertion in a test must never open a dialog and hang a headless run.
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
