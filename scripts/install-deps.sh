#!/usr/bin/env bash
# Installs the Debian packages that building and testing Linkwright need, when missing.
# As root it runs apt-get; otherwise it prints the apt-get line to run and fails.
set -euo pipefail

packages=(
  cmake ninja-build g++ libgtest-dev libbenchmark-dev   # native build and tests
  clang                                                 # the native build with a second compiler
  g++-mingw-w64-x86-64-posix                            # the Windows build
  wine wine64 xvfb xdotool imagemagick                  # running it under Wine
)

missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
[ ${#missing[@]} -eq 0 ] && exit 0

line="apt-get update && apt-get install -y ${missing[*]}"
if [ "$(id -u)" -ne 0 ]; then
  echo "Missing packages. Run as root:" >&2
  echo "  $line" >&2
  exit 1
fi
echo "Installing: ${missing[*]}"
export DEBIAN_FRONTEND=noninteractive
apt-get update -qq
apt-get install -y -qq "${missing[@]}"
