#include "KxUiSystemInfo.h"

KxUiSystemInfo::KxUiSystemInfo()
{
    ::ZeroMemory(&m_osVersion, sizeof(m_osVersion));
    m_osVersion.dwOSVersionInfoSize = sizeof(m_osVersion);
    ::GetVersionExW(&m_osVersion);
}

KxUiSystemInfo::KxUiSystemInfo(const OSVERSIONINFOW& version) : m_osVersion(version)
{
    m_osVersion.dwOSVersionInfoSize = sizeof(m_osVersion);
}

bool KxUiSystemInfo::isVersion(DWORD major, DWORD minor) const
{
    return m_osVersion.dwMajorVersion == major && m_osVersion.dwMinorVersion == minor;
}

bool KxUiSystemInfo::isVersionAtLeast(DWORD major, DWORD minor) const
{
    return m_osVersion.dwMajorVersion > major
        || (m_osVersion.dwMajorVersion == major && m_osVersion.dwMinorVersion >= minor);
}

bool KxUiSystemInfo::IsWin31() const { return isPlatform(VER_PLATFORM_WIN32s); }
bool KxUiSystemInfo::IsWin95() const
{
    return isPlatform(VER_PLATFORM_WIN32_WINDOWS) && m_osVersion.dwMajorVersion == 4 && m_osVersion.dwMinorVersion < 10;
}
bool KxUiSystemInfo::IsWin98() const { return isPlatform(VER_PLATFORM_WIN32_WINDOWS) && isVersion(4, 10); }
bool KxUiSystemInfo::IsWinME() const { return isPlatform(VER_PLATFORM_WIN32_WINDOWS) && isVersion(4, 90); }
bool KxUiSystemInfo::IsWin9x() const { return isPlatform(VER_PLATFORM_WIN32_WINDOWS); }
bool KxUiSystemInfo::IsWinNT4() const { return isPlatform(VER_PLATFORM_WIN32_NT) && isVersion(4, 0); }
bool KxUiSystemInfo::IsWin2K() const { return isPlatform(VER_PLATFORM_WIN32_NT) && isVersion(5, 0); }
bool KxUiSystemInfo::IsWinXP() const { return isPlatform(VER_PLATFORM_WIN32_NT) && isVersion(5, 1); }

bool KxUiSystemInfo::IsWin95OrGreater() const
{
    return isPlatform(VER_PLATFORM_WIN32_WINDOWS) && m_osVersion.dwMajorVersion >= 4;
}
bool KxUiSystemInfo::IsWin98OrGreater() const { return isPlatform(VER_PLATFORM_WIN32_WINDOWS) && isVersionAtLeast(4, 10); }
bool KxUiSystemInfo::IsWinMEOrGreater() const { return isPlatform(VER_PLATFORM_WIN32_WINDOWS) && isVersionAtLeast(4, 90); }

// The NT tests accept any later platform identifier too (the NT family's successors).
bool KxUiSystemInfo::IsWinNT4OrGreater() const
{
    return m_osVersion.dwPlatformId >= VER_PLATFORM_WIN32_NT && m_osVersion.dwMajorVersion >= 4;
}
bool KxUiSystemInfo::IsWin2KOrGreater() const
{
    return m_osVersion.dwPlatformId >= VER_PLATFORM_WIN32_NT && m_osVersion.dwMajorVersion >= 5;
}
bool KxUiSystemInfo::IsWinXPOrGreater() const
{
    return m_osVersion.dwPlatformId >= VER_PLATFORM_WIN32_NT && isVersionAtLeast(5, 1);
}
bool KxUiSystemInfo::IsWinVistaOrGreater() const
{
    return m_osVersion.dwPlatformId >= VER_PLATFORM_WIN32_NT && isVersionAtLeast(6, 0);
}

int KxUiSystemInfo::IsLayoutRTLSupported() const
{
    return IsWin2KOrGreater() || ::GetSystemMetrics(SM_MIDEASTENABLED) != 0;
}

int KxUiSystemInfo::IsClearTypeTextQualitySupported() const
{
    return IsWinXPOrGreater();
}
