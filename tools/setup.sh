#!/bin/bash
# Installs, only when missing, what building and testing KxUi needs on Debian:
# the MinGW-w64 cross compiler, CMake, Ninja, Wine, Xvfb, GoogleTest sources and
# ImageMagick (to inspect the gallery's PNG snapshots). Quick and silent when ready.
set -eu
packages=(cmake ninja-build g++-mingw-w64-x86-64-posix wine64 wine xvfb googletest imagemagick)

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
