#!/bin/bash
# Runs the demonstration: the gallery when it is built, else the hello program.
# Headless (no DISPLAY), pictures are written to out/gallery/ and their names printed.
set -eu
build="${1:-build}"
root="$(cd "$(dirname "$0")/.." && pwd)"
out="$root/out/gallery"
mkdir -p "$out"
export KXUI_WINEPREFIX="$root/$build/wineprefix"
run() { "$root/cmake/wine-run.sh" "$@"; }
winpath() { echo "Z:${1//\//\\}"; }

status=0
if [ -f "$root/$build/bin/KxUiGallery.exe" ]; then
    if [ -n "${DISPLAY:-}" ]; then
        run "$root/$build/bin/KxUiGallery.exe" || status=$?
    else
        run "$root/$build/bin/KxUiGallery.exe" --snapshot "$(winpath "$out")" || status=$?
    fi
else
    run "$root/$build/bin/KxUiHello.exe" "$(winpath "$out")" || status=$?
fi
"$root/cmake/wine-run.sh" --stop
exit $status
