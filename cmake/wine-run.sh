#!/bin/bash
# Runs a Windows program under Wine in the build tree's private prefix.
#
#   wine-run.sh PROGRAM.exe [ARGS...]   run a program (creates the prefix on first use)
#   wine-run.sh --stop                  stop this prefix's wineserver
#
# KXUI_WINEPREFIX names the prefix (default: <this script's dir>/wineprefix).
# The prefix uses the null graphics driver, so windows, drawing and common
# controls work without a display, and never offers to install the optional
# Mono or Gecko components. One persistent wineserver serves a whole run.
set -u
here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
export WINEPREFIX="${KXUI_WINEPREFIX:-$here/wineprefix}"
export WINEDEBUG="${WINEDEBUG:--all}"
export WINEARCH=win64
# No Mono or Gecko install dialog, ever.
export WINEDLLOVERRIDES="${WINEDLLOVERRIDES:-mscoree=;mshtml=}"
# Keep Wine away from any X server: the null driver is configured below.
unset DISPLAY WAYLAND_DISPLAY

wineserver_bin="$(command -v wineserver || echo /usr/lib/wine/wineserver64)"
# Debian's wine wrapper nags about a missing 32-bit Wine; our programs are 64-bit only.
wine_bin=/usr/lib/wine/wine64
[ -x "$wine_bin" ] || wine_bin="$(command -v wine64 || command -v wine)"

if [ "${1:-}" = "--stop" ]; then
    [ -d "$WINEPREFIX" ] && "$wineserver_bin" -k 2>/dev/null
    exit 0
fi

# Bump when the prefix's settings below change: existing prefixes are updated in place.
settings_version=2

make_prefix() {
    mkdir -p "$(dirname "$WINEPREFIX")"
    exec 9>"$WINEPREFIX.lock"
    flock 9
    if [ ! -f "$WINEPREFIX/.kxui-ready" ]; then
        rm -rf "$WINEPREFIX"
        "$wine_bin" wineboot -i >/dev/null 2>&1 || { echo "wine-run: wineboot failed" >&2; exit 1; }
        touch "$WINEPREFIX/.kxui-ready"
    fi
    if [ ! -f "$WINEPREFIX/.kxui-settings-$settings_version" ]; then
        reg() { "$wine_bin" reg add "$@" /f >/dev/null 2>&1; }
        # Windows, drawing and common controls without a display.
        reg 'HKCU\Software\Wine\Drivers' /v Graphics /d null
        # Never ask to download an HTML engine for the browser control.
        reg 'HKCU\Software\Wine\MSHTML' /v GeckoUrl /d ''
        # A crashing program ends at once with an error status instead of waiting for a
        # debugger that nobody will look at.
        reg 'HKLM\Software\Microsoft\Windows NT\CurrentVersion\AeDebug' /v Debugger /d ''
        reg 'HKLM\Software\Microsoft\Windows NT\CurrentVersion\AeDebug' /v Auto /d 1
        # Restart the server so that the desktop and services start again under these
        # settings (the first boot started them with the default display driver).
        "$wineserver_bin" -k >/dev/null 2>&1
        "$wineserver_bin" -w >/dev/null 2>&1
        rm -f "$WINEPREFIX"/.kxui-settings-*
        touch "$WINEPREFIX/.kxui-settings-$settings_version"
    fi
    flock -u 9
}

[ -f "$WINEPREFIX/.kxui-settings-$settings_version" ] || make_prefix
# Wine draws caption buttons and other frame glyphs with the Marlett symbol font. Debian's
# wine64 loader does not find the fonts in Wine's own data folder, so without this the
# minimise, maximise and close buttons show the letters "0", "1" and "r". A font in the
# prefix's Fonts folder is seen by every process started afterwards.
fonts="$WINEPREFIX/drive_c/windows/Fonts"
if [ ! -f "$fonts/marlett.ttf" ] && [ -f /usr/share/wine/fonts/marlett.ttf ] && [ -d "$fonts" ]; then
    cp /usr/share/wine/fonts/marlett.ttf "$fonts/" 2>/dev/null || true
fi
# A persistent server for the run; it exits by itself 60 s after the last client.
# The session's system processes (services, devices, desktop) are started here with
# no inherited output, so they never hold the caller's output pipes open.
"$wineserver_bin" -p60 </dev/null >/dev/null 2>&1 || true
"$wine_bin" wineboot </dev/null >/dev/null 2>&1 || true

prog="$1"; shift
exec "$wine_bin" "$prog" "$@"
