#!/usr/bin/env bash
# Makes the sample installation: Linkwright.exe beside a stand-in Zelmar.exe, a Profiles
# folder written by the profile tool, a few games to start, and sample shortcuts written
# through the shell under Wine. Everything is made anew on each run; nothing of it is
# committed.
#
# usage: make-sample.sh SAMPLE_DIR LINKWRIGHT_EXE ZELMAR_EXE MAKE_PROFILE_EXE SAMPLE_TOOL_EXE
# WINEPREFIX names the prefix to work in (the build's own).
set -euo pipefail

sample="$1" linkwright="$2" zelmar="$3" make_profile="$4" sample_tool="$5"
wine_run="$(cd "$(dirname "$0")/../../scripts" && pwd)/wine-run.sh"

# The Windows path of a host path, as programs see it under Wine.
winpath() { local p="$1"; printf 'Z:%s' "${p//\//\\}"; }

rm -rf "$sample"
mkdir -p "$sample/Profiles" "$sample/Games" "$sample/Shortcuts"
cp "$linkwright" "$sample/Linkwright.exe"
cp "$zelmar" "$sample/Zelmar.exe"
# The games are stand-ins too: started, they log their command line to Zelmar.log beside them.
cp "$zelmar" "$sample/Games/Racer.exe"
cp "$zelmar" "$sample/Games/Flight.exe"

profile() { "$wine_run" "$make_profile" "$(winpath "$sample/Profiles/$1")" "$2"; }
profile wheel.idprof "Racing Wheel"
profile yoke.idprof "Flight Yoke"
profile pad1.idprof "Arcade Pad - Player 1"
profile pad2.idprof "Arcade Pad - Player 2"

games="$(winpath "$sample/Games")"
links="$sample/Shortcuts"
# shortcut NAME TARGET ARGUMENTS FOLDER ICON READONLY(0|1), written through the shell.
shortcut() { "$wine_run" "$sample_tool" shortcut "$(winpath "$links/$1")" "${@:2}"; }
# A game with quoted arguments, a working folder and an icon of its own.
shortcut Racer.lnk "$games\\Racer.exe" '-config "C:\My Files\racer.cfg" -windowed' "$games" \
  'C:\windows\notepad.exe' 0
# A program with no icon location: the icon comes from the target.
shortcut Notepad.lnk 'C:\windows\notepad.exe' '' '' '' 0
# A read-only shortcut: Linkwright clears the bit when it loads it.
shortcut "Flight (read-only).lnk" "$games\\Flight.exe" -joystick "$games" '' 1

echo "Sample installation: $sample"
