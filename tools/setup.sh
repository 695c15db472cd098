#!/bin/bash
# Installs, only when missing, what building and testing KxUi needs on Debian:
# the MinGW-w64 cross compiler, CMake, Ninja, Wine with the fonts and X libraries a real
# window needs (Wine's own fonts hold Marlett, which draws the caption buttons; without it
# they show as the letters "0 1 r"), Xvfb, xdotool, GoogleTest sources and ImageMagick (to
# inspect the gallery's PNG snapshots). Quick and silent when ready.
set -eu
packages=(cmake ninja-build g++-mingw-w64-x86-64-posix wine64 wine fonts-wine fonts-liberation
          libxrender1 libxrandr2 libxcursor1 libxi6 libxinerama1 libxcomposite1 libxfixes3
          xvfb xdotool googletest imagemagick)

missing=()
for p in "${packages[@]}"; do
    dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
[ ${#missing[@]} -eq 0 ] && exit 0

echo "setup: installing ${missing[*]}"
SUDO=""
[ "$(id -u)" -eq 0 ] || SUDO="sudo"
export DEBIAN_FRONTEND=noninteractive
$SUDO apt-get update -qq
$SUDO apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
echo "setup: done"
