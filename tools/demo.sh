#!/bin/bash
# Runs the gallery. Headless (no DISPLAY), it writes one picture per page to
# out/gallery/ and prints their names; with a display, it opens the window.
set -eu
build="${1:-build}"
root="$(cd "$(dirname "$0")/.." && pwd)"
out="$root/out/gallery"
mkdir -p "$out"
export KXUI_WINEPREFIX="$root/$build/wineprefix"
run() { "$root/cmake/wine-run.sh" "$@"; }
winpath() { echo "Z:${1//\//\\}"; }

status=0
gallery="$root/$build/bin/KxUiGallery.exe"
if [ -n "${DISPLAY:-}" ]; then
    # A real window needs Wine's X11 driver: use a prefix of its own, not the null-driver one.
    export KXUI_WINEPREFIX="$root/$build/wineprefix-x11"
    [ -d "$KXUI_WINEPREFIX" ] || WINEPREFIX="$KXUI_WINEPREFIX" WINEDEBUG=-all wineboot -i >/dev/null 2>&1
    # The caption buttons' symbols (see cmake/wine-run.sh).
    fonts="$KXUI_WINEPREFIX/drive_c/windows/Fonts"
    [ -f "$fonts/marlett.ttf" ] || cp /usr/share/wine/fonts/marlett.ttf "$fonts/" 2>/dev/null || true
    WINEPREFIX="$KXUI_WINEPREFIX" WINEDEBUG=-all wine "$gallery" || status=$?
    WINEPREFIX="$KXUI_WINEPREFIX" wineserver -k 2>/dev/null || true
    exit $status
fi
rm -f "$out"/*.png
run "$gallery" --snapshot "$(winpath "$out")" || status=$?
"$root/cmake/wine-run.sh" --stop
exit $status
