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
export WINEDLLOVERRIDES="${WINEDLLOVERRIDES:-mscoree,mshtml=}"
desktop="/desktop=Linkwright,1024x768"
title="Linkwright v1.0 for Zelmardeck"

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
rm -f "$picture"
export sample="$build/sample" tools="$build/tests/e2e" desktop title picture

xvfb-run -a -s "-screen 0 1024x768x24" bash -euo pipefail -c '
  winpath() { local p="$1"; printf "Z:%s" "${p//\//\\}"; }
  # Runs await_window inside the desktop with the given options; prints what it found.
  await() {
    local done_file="$sample/await.done"
    rm -f "$done_file"
    wine explorer "$desktop" "$(winpath "$tools/await_window.exe")" "$title" "$(winpath "$done_file")" "$@" \
      >/dev/null 2>&1 &   # nothing may hold the output open that $(await) reads
    for _ in $(seq 1 240); do [ -s "$done_file" ] && break; sleep 0.5; done
    cat "$done_file" 2>/dev/null || echo none
    rm -f "$done_file"
  }
  cd "$sample"
  # The first program started into a desktop keeps that command waiting while the desktop lasts.
  wine explorer "$desktop" Linkwright.exe &
  status="$(await -timeout 90)"
  if [ "$status" != found ]; then
    echo "Linkwright did not show its dialog ($status)." >&2
    wineserver -k; exit 1
  fi
  sleep 2   # let it finish painting
  import -window root "$picture"
  report="$sample/road.txt"
  rm -f "$report"
  wine explorer "$desktop" "$(winpath "$tools/sample_road.exe")" "$(winpath "$sample/Shortcuts/Racer.lnk")" \
    "Racing Wheel" "$(winpath "$report")" >/dev/null 2>&1 &
  for _ in $(seq 1 240); do [ -s "$report" ] && break; sleep 0.5; done
  sleep 0.5   # written in one go; let it be closed
  echo "The sample shortcut Racer.lnk, enhanced with \"Racing Wheel\" and restored:"
  tr -d "\r" < "$report" 2>/dev/null || echo "sample_road wrote no report." >&2
  status="$(await -timeout 20 -close)"
  [ "$status" = closed ] || echo "Linkwright did not close ($status)." >&2
  wineserver -k 2>/dev/null || true
'
echo "Picture of the dialog: $picture"
