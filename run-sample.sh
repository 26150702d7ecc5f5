#!/usr/bin/env bash
# Linkwright's main job on the sample installation: builds Linkwright.exe and the sample
# installation (build/windows/sample), then starts Linkwright in it under Wine, in a virtual
# desktop so that the window has a frame and drag and drop stays inside Wine.
#
# With DISPLAY set, the desktop opens on that display and the run lasts until Linkwright is
# closed. Without one, it runs under Xvfb: it waits for the dialog, saves a picture of the
# screen to build/windows/artifacts/sample-run.png and prints that path; then it drags the
# sample shortcut Racer.lnk onto the dialog, adds a profile, saves and restores, printing the
# shortcut before, after Save and after Restore; and it closes Linkwright.
set -euo pipefail
cd "$(dirname "$0")"

scripts/install-deps.sh
scripts/build.sh windows
cmake --build build/windows --target sample

build="$PWD/build/windows"
export WINEPREFIX="$build/wineprefix"
export WINEDEBUG="${WINEDEBUG:--all}"
export WINEDLLOVERRIDES="${WINEDLLOVERRIDES:-mscoree,mshtml=;winemenubuilder.exe=d}"
desktop="/desktop=Linkwright,1024x768"

# A wineserver left from making the sample serves no display: start afresh on this one.
wineserver -k 2>/dev/null || true

if [ -n "${DISPLAY:-}" ]; then
  echo "Starting Linkwright in $build/sample (shortcuts to drop on it: $build/sample/Shortcuts)"
  cd "$build/sample"
  wine explorer "$desktop" Linkwright.exe
  wineserver -w   # until Linkwright and its desktop have ended
  exit 0
fi

artifacts="$build/artifacts"
mkdir -p "$artifacts"
picture="$artifacts/sample-run.png"
report="$build/sample/road.txt"
rm -f "$picture" "$report"
winpath() { local p="$1"; printf 'Z:%s' "${p//\//\\}"; }

# sample_tool waits for the dialog, takes the picture, works the dialog, closes Linkwright and
# then writes its report: the first program started into a desktop keeps its command waiting
# while the desktop lasts, so both go to the background.
cd "$build/sample"
xvfb-run -a -s "-screen 0 1024x768x24" bash -c '
  wine explorer "$1" Linkwright.exe >/dev/null 2>&1 &
  wine explorer "$1" "$2" road "$3" "Racing Wheel" "$4" "$5" >/dev/null 2>&1 &
  for _ in $(seq 1 300); do [ -s "$6" ] && break; sleep 0.5; done
  sleep 0.5   # written in one go; let it be closed
  wineserver -k 2>/dev/null || true
' sample-run "$desktop" "$(winpath "$build/tests/e2e/sample_tool.exe")" "$(winpath "$build/sample/Shortcuts/Racer.lnk")" \
  "$(winpath "$report")" "$(winpath "$artifacts/sample-run.ppm")" "$report"

echo "The sample shortcut Racer.lnk, enhanced with \"Racing Wheel\" and restored:"
if [ ! -s "$report" ]; then
  echo "sample_tool wrote no report." >&2
  exit 1
fi
tr -d '\r' < "$report"
if [ -s "$artifacts/sample-run.ppm" ]; then
  convert "$artifacts/sample-run.ppm" "$picture"
  rm "$artifacts/sample-run.ppm"
  echo "Picture of the dialog: $picture"
fi
! grep -q '^Stopped:' "$report"
