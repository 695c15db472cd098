// Version tests decided from given version records, one record per Windows release.
#include "KxUiSystemInfo.h"

namespace {

enum Test : unsigned {
    Win31 = 1u << 0, Win95 = 1u << 1, Win98 = 1u << 2, WinME = 1u << 3, Win9x = 1u << 4,
    WinNT4 = 1u << 5, Win2K = 1u << 6, WinXP = 1u << 7,
    Win95Up = 1u << 8, Win98Up = 1u << 9, WinMEUp = 1u << 10, WinNT4Up = 1u << 11,
    Win2KUp = 1u << 12, WinXPUp = 1u << 13, WinVistaUp = 1u << 14, ClearType = 1u << 15,
};

unsigned answers(const KxUiSystemInfo& info)
{
    unsigned bits = 0;
    const std::pair<bool, unsigned> tests[] = {
        {info.IsWin31(), Win31}, {info.IsWin95(), Win95}, {info.IsWin98(), Win98},
        {info.IsWinME(), WinME}, {info.IsWin9x(), Win9x}, {info.IsWinNT4(), WinNT4},
        {info.IsWin2K(), Win2K}, {info.IsWinXP(), WinXP}, {info.IsWin95OrGreater(), Win95Up},
        {info.IsWin98OrGreater(), Win98Up}, {info.IsWinMEOrGreater(), WinMEUp},
        {info.IsWinNT4OrGreater(), WinNT4Up}, {info.IsWin2KOrGreater(), Win2KUp},
        {info.IsWinXPOrGreater(), WinXPUp}, {info.IsWinVistaOrGreater(), WinVistaUp},
        {info.IsClearTypeTextQualitySupported() != 0, ClearType},
    };
    for (const auto& t : tests)
        bits |= t.first ? t.second : 0;
    return bits;
}

OSVERSIONINFOW version(DWORD platform, DWORD major, DWORD minor)
{
    OSVERSIONINFOW v = {};
    v.dwOSVersionInfoSize = sizeof(v);
    v.dwPlatformId = platform;
    v.dwMajorVersion = major;
    v.dwMinorVersion = minor;
    return v;
}

struct Release {
    const char* name;
    DWORD platform, major, minor;
    unsigned expected;
};

const Release kReleases[] = {
    {"Win32s", 0, 3, 10, Win31},
    {"Windows 95", 1, 4, 0, Win95 | Win9x | Win95Up},
    {"Windows 95 OSR2.5", 1, 4, 3, Win95 | Win9x | Win95Up},
    {"Windows 98", 1, 4, 10, Win98 | Win9x | Win95Up | Win98Up},
    {"Windows 98 SE build", 1, 4, 11, Win9x | Win95Up | Win98Up},
    {"Windows ME", 1, 4, 90, WinME | Win9x | Win95Up | Win98Up | WinMEUp},
    {"Windows NT 3.51", 2, 3, 51, 0},
    {"Windows NT 4", 2, 4, 0, WinNT4 | WinNT4Up},
    {"Windows 2000", 2, 5, 0, Win2K | WinNT4Up | Win2KUp},
    {"Windows XP", 2, 5, 1, WinXP | WinNT4Up | Win2KUp | WinXPUp | ClearType},
    {"Windows Server 2003", 2, 5, 2, WinNT4Up | Win2KUp | WinXPUp | ClearType},
    {"Windows Vista", 2, 6, 0, WinNT4Up | Win2KUp | WinXPUp | WinVistaUp | ClearType},
    {"Windows 7", 2, 6, 1, WinNT4Up | Win2KUp | WinXPUp | WinVistaUp | ClearType},
    {"Windows 10", 2, 10, 0, WinNT4Up | Win2KUp | WinXPUp | WinVistaUp | ClearType},
    // A later platform identifier is taken as a successor of the NT family.
    {"platform 3, 6.0", 3, 6, 0, WinNT4Up | Win2KUp | WinXPUp | WinVistaUp | ClearType},
};

} // namespace

TEST(SystemInfo, EveryVersionTestForEveryRelease)
{
    for (const Release& r : kReleases) {
        KxUiSystemInfo info(version(r.platform, r.major, r.minor));
        EXPECT_EQ(r.expected, answers(info)) << r.name;
    }
}

TEST(SystemInfo, RightToLeftLayoutFromWindows2000OrMiddleEastSystems)
{
    const bool middleEast = GetSystemMetrics(SM_MIDEASTENABLED) != 0;
    EXPECT_TRUE(KxUiSystemInfo(version(2, 5, 0)).IsLayoutRTLSupported());
    EXPECT_TRUE(KxUiSystemInfo(version(2, 6, 1)).IsLayoutRTLSupported());
    EXPECT_EQ(middleEast, KxUiSystemInfo(version(2, 4, 0)).IsLayoutRTLSupported() != 0);
    EXPECT_EQ(middleEast, KxUiSystemInfo(version(1, 4, 90)).IsLayoutRTLSupported() != 0);
}

TEST(SystemInfo, DefaultAsksThePlatform)
{
    OSVERSIONINFOW platform = {};
    platform.dwOSVersionInfoSize = sizeof(platform);
    ASSERT_TRUE(GetVersionExW(&platform));

    KxUiSystemInfo info;
    const OSVERSIONINFOW& v = info.getVersionInfo();
    EXPECT_EQ(276u, v.dwOSVersionInfoSize);
    EXPECT_EQ(platform.dwPlatformId, v.dwPlatformId);
    EXPECT_EQ(platform.dwMajorVersion, v.dwMajorVersion);
    EXPECT_EQ(platform.dwMinorVersion, v.dwMinorVersion);
    EXPECT_EQ(platform.dwBuildNumber, v.dwBuildNumber);
    // Every system this library builds for is an NT system of Windows 7 or later.
    EXPECT_TRUE(info.IsWinVistaOrGreater());
    EXPECT_FALSE(info.IsWin9x());
}
