#!/usr/bin/env bash
# Configures and builds one of the builds: native | windows | clang.
# Native builds with AddressSanitizer, LeakSanitizer and UBSan, so that every native test
# run is also a leak check. The Windows build cross-compiles with MinGW-w64. The clang
# build is the native build made with the second compiler, to keep the tree warning-clean
# with it too (warnings are errors).
set -euo pipefail
cd "$(dirname "$0")/.."

kind="$1"
case "$kind" in
  native)  args=(-DLINKWRIGHT_SANITIZE=ON) ;;
  windows) args=(-DCMAKE_TOOLCHAIN_FILE=cmake/mingw-w64-x86_64.cmake) ;;
  clang)   args=(-DCMAKE_CXX_COMPILER=clang++) ;;
  *) echo "usage: build.sh native|windows|clang" >&2; exit 2 ;;
esac
cmake -S . -B "build/$kind" -G Ninja -DCMAKE_BUILD_TYPE=Debug "${args[@]}" > /dev/null
cmake --build "build/$kind" -j 2
