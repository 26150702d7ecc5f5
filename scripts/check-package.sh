#!/usr/bin/env bash
# Checks the release archive as a person gets it: makes it afresh from the build with
# CPack, unpacks it into a folder with a stand-in Zelmar.exe and one profile, and runs its
# Linkwright.exe there once with -RestoreAll. With no ShortcutList there is nothing to
# restore: the run must end by itself (a dialog or a message box would wait for a person),
# with the exit code the program gives (0), and leave the folder exactly as it was.
#
# usage: check-package.sh CPACK_CONFIG WORK_DIR ZELMAR_EXE MAKE_PROFILE_EXE
# WINEPREFIX names the prefix to work in (the build's own).
set -euo pipefail

config="$1" work="$2" zelmar="$3" make_profile="$4"
wine_run="$(cd "$(dirname "$0")" && pwd)/wine-run.sh"
winpath() { local p="$1"; printf 'Z:%s' "${p//\//\\}"; }
fail() { echo "FAIL: $*" >&2; exit 1; }
listing() { (cd "$1" && find . -printf '%p %s %T@\n' | sort); }

rm -rf "$work"
mkdir -p "$work/archive" "$work/Zelmardeck"
cpack -G ZIP --config "$config" -B "$work/archive" > "$work/cpack.log" 2>&1 \
  || { cat "$work/cpack.log" >&2; fail "CPack made no archive"; }
archive="$(find "$work/archive" -maxdepth 1 -name 'Linkwright-*-win64.zip' | head -1)"
[ -n "$archive" ] || fail "no Linkwright-<version>-win64.zip in $work/archive"

folder="$work/Zelmardeck"
(cd "$folder" && cmake -E tar xf "$archive")
contents="$(cd "$folder" && find . -type f | sort | tr '\n' ' ')"
[ "$contents" = "./Linkwright.exe ./README.txt " ] || fail "the archive holds: $contents"

cp "$zelmar" "$folder/Zelmar.exe"
mkdir "$folder/Profiles"
"$wine_run" "$make_profile" "$(winpath "$folder/Profiles/one.idprof")" "One" >/dev/null 2>&1 \
  || fail "the profile tool failed"
before="$(listing "$folder")"

status=0
(cd "$folder" && timeout 60 "$wine_run" Linkwright.exe -RestoreAll) > "$work/run.log" 2>&1 || status=$?
[ "$status" -ne 124 ] || fail "Linkwright.exe -RestoreAll did not end within 60 s: it waits on a window"
[ "$status" -eq 0 ] || fail "Linkwright.exe -RestoreAll ended with exit code $status"
[ "$(listing "$folder")" = "$before" ] || fail "Linkwright.exe -RestoreAll changed the folder"

echo "${archive##*/} holds Linkwright.exe and README.txt; Linkwright.exe -RestoreAll ended silently."
