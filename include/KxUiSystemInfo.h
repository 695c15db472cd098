// KxUiSystemInfo: which Windows the program runs on.
#pragma once
#include "KxUiDef.h"

class KXUI_API KxUiSystemInfo {
public:
    // Asks the platform (GetVersionExW).
    KxUiSystemInfo();
    // Answers for the given version record, e.g. to decide for another system.
    explicit KxUiSystemInfo(const OSVERSIONINFOW& version);

    const OSVERSIONINFOW& getVersionInfo() const { return m_osVersion; }

    // Exact systems. Platform identifiers: 0 Win32s, 1 Windows 9x family, 2 NT family.
    bool IsWin31() const;
    bool IsWin95() const;
    bool IsWin98() const;
    bool IsWinME() const;
    bool IsWin9x() const;
    bool IsWinNT4() const;
    bool IsWin2K() const;
    bool IsWinXP() const;

    // A system of the same family at least as recent. The 9x tests are false on the NT
    // family and the NT tests false on the 9x family.
    bool IsWin95OrGreater() const;
    bool IsWin98OrGreater() const;
    bool IsWinMEOrGreater() const;
    bool IsWinNT4OrGreater() const;
    bool IsWin2KOrGreater() const;
    bool IsWinXPOrGreater() const;
    bool IsWinVistaOrGreater() const;

    // Right-to-left layout: Windows 2000 and later, or a Middle-East enabled system.
    int IsLayoutRTLSupported() const;
    // ClearType text quality: Windows XP and later.
    int IsClearTypeTextQualitySupported() const;

protected:
    bool isPlatform(DWORD platformId) const { return m_osVersion.dwPlatformId == platformId; }
    bool isVersion(DWORD major, DWORD minor) const;         // exactly major.minor
    bool isVersionAtLeast(DWORD major, DWORD minor) const;  // major.minor or later

    OSVERSIONINFOW m_osVersion;
};
