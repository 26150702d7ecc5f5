#!/usr/bin/env bash
# Builds Release and measures the three performance figures, each against its bare
# baseline in the same run, the two sides alternating round by round:
#   1. the catalogue scan of 1,000 and 10,000 profiles (native, Google Benchmark);
#   2. Linkwright.exe -RestoreAll over 1,000 listed enhanced shortcuts, under Wine;
#   3. the start of Linkwright.exe until its dialog is visible, under Wine.
# Not part of the test command. Rounds: SCAN_ROUNDS (15), RESTORE_ROUNDS (3), START_ROUNDS (50).
# Another build can be measured with the same baselines: CATALOGUE_BENCHMARK names its
# catalogue_benchmark, LINKWRIGHT_EXE its Linkwright.exe.
# The raw figures stay in build/bench-native/ and build/bench-windows/.
set -euo pipefail
cd "$(dirname "$0")/.."

# The Windows programs need a display; without one the whole run goes under Xvfb.
if [ -z "${DISPLAY:-}" ]; then
  exec xvfb-run -a -s "-screen 0 1024x768x24" "$0" "$@"
fi

scan_rounds="${SCAN_ROUNDS:-15}"
restore_rounds="${RESTORE_ROUNDS:-3}"
start_rounds="${START_ROUNDS:-50}"
launcher=()
command -v ccache >/dev/null && launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)

native=build/bench-native
windows=build/bench-windows
echo "=== building Release"
cmake -S . -B "$native" -G Ninja -DCMAKE_BUILD_TYPE=Release -DLINKWRIGHT_BENCHMARKS=ON "${launcher[@]}" >/dev/null
cmake --build "$native" --target catalogue_benchmark make_profile
cmake -S . -B "$windows" -G Ninja -DCMAKE_BUILD_TYPE=Release -DLINKWRIGHT_BENCHMARKS=ON \
  -DCMAKE_TOOLCHAIN_FILE=cmake/mingw-w64-x86_64.cmake "${launcher[@]}" >/dev/null
cmake --build "$windows" --target Linkwright ZelmarStandIn bench_shortcuts bare_restore bare_start start_timer

results=()

echo "=== 1. catalogue scan ($scan_rounds rounds)"
"${CATALOGUE_BENCHMARK:-$native/bench/catalogue_benchmark}" --benchmark_repetitions="$scan_rounds" \
  --benchmark_enable_random_interleaving=true --benchmark_min_time=0.5 \
  --benchmark_out="$native/catalogue.json" --benchmark_out_format=json >/dev/null
results+=("$(bench/ratios.py gbench "$native/catalogue.json")")
echo "${results[-1]}"

# Under Wine, in a prefix of the benchmarks' own, with a server kept running for the
# whole run so that neither side pays for starting it.
export WINEPREFIX="$PWD/$windows/wineprefix" WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml=;winemenubuilder.exe=d"
# A new prefix's server lingers after wineboot, and a second one started beside it ends at
# once with status 2: wait for it to go before the persistent one starts.
if [ ! -d "$WINEPREFIX" ]; then
  wineboot --init >/dev/null 2>&1
  wineserver -w
fi
wineserver -p
trap 'wineserver -k 2>/dev/null || true' EXIT
winpath() { local p="$1"; printf 'Z:%s' "${p//\//\\}"; }

# The installation, inside the prefix's drive C: so that the shortcuts hold the paths of a
# plain Windows drive: Linkwright.exe beside a stand-in Zelmar.exe and one profile in
# C:\Bench, a game in C:\BenchGames, and 1,000 shortcuts enhanced with that profile, kept
# aside as made. The game's folder lies outside C:\Bench, whose own times change with every
# round, so that a restored shortcut's bytes are the same after every round.
drive_c="$WINEPREFIX/drive_c"
inst="$drive_c/Bench"
rm -rf "$inst" "$drive_c/BenchGames"
mkdir -p "$inst/Profiles" "$inst/Shortcuts" "$drive_c/BenchGames"
cp "${LINKWRIGHT_EXE:-$windows/app/Linkwright.exe}" "$inst/Linkwright.exe"
cp "$windows/bench/bare_start.exe" "$windows/bench/bare_restore.exe" "$inst/"
cp "$windows/tests/e2e/Zelmar.exe" "$inst/Zelmar.exe"
cp "$windows/tests/e2e/Zelmar.exe" "$drive_c/BenchGames/Game.exe"
"$native/tools/make_profile" "$(winpath "$inst/Profiles/wheel.idprof")" "Racing Wheel"
game='C:\BenchGames\Game.exe' games='C:\BenchGames' args="-windowed -level 3"
wine "$windows/bench/bench_shortcuts.exe" 'C:\Bench\Shortcuts' 1000 'C:\Bench\Zelmar.exe' \
  "$game" "$games" "$args" "Racing Wheel" 'C:\Bench\ShortcutList.made'
cp -a "$inst/Shortcuts" "$inst/Shortcuts.made"

echo "=== 2. -RestoreAll over 1,000 shortcuts ($restore_rounds rounds after one not counted)"
times="$PWD/$windows/restore-all.txt"
: > "$times"
restored=""
for round in $(seq 0 "$restore_rounds"); do
  sides="product bare"
  [ $((round % 2)) -eq 1 ] && sides="bare product"
  for side in $sides; do
    rm -rf "$inst/Shortcuts"
    cp -a "$inst/Shortcuts.made" "$inst/Shortcuts"
    cp "$inst/ShortcutList.made" "$inst/ShortcutList"
    sync
    begin=$(date +%s%N)
    if [ "$side" = product ]; then
      (cd "$inst" && wine Linkwright.exe -RestoreAll)
    else
      (cd "$inst" && wine bare_restore.exe ShortcutList "$game" "$games" "$args" >/dev/null)
    fi
    end=$(date +%s%N)
    [ "$round" -gt 0 ] && echo "$side $(( (end - begin) / 1000000 ))" >> "$times"
    # Every run after the first must leave the very same shortcuts behind, restored.
    sum="$(cat "$inst"/Shortcuts/*.lnk | md5sum)"
    if [ "$sum" = "$(cat "$inst"/Shortcuts.made/*.lnk | md5sum)" ]; then
      echo "$side restored nothing" >&2; exit 1
    fi
    if [ "$round" -gt 0 ] && [ "$sum" != "$restored" ]; then
      echo "$side left other shortcuts than the run before it" >&2; exit 1
    fi
    restored="$sum"
  done
done
results+=("$(bench/ratios.py pairs "$times" "-RestoreAll, 1,000 shortcuts")")
echo "${results[-1]}"

echo "=== 3. start until the dialog is visible ($start_rounds pairs)"
times="$PWD/$windows/start.txt"
rm -f "$inst/ShortcutList"
timer="$PWD/$windows/bench/start_timer.exe"
(cd "$inst" && wine "$timer" "$start_rounds" "Linkwright v1.0 for Zelmardeck" \
  Linkwright.exe bare_start.exe) | tr -d '\r' > "$times"
results+=("$(bench/ratios.py pairs "$times" "start until the dialog is visible")")
echo "${results[-1]}"

echo "=== figures"
printf '%s\n' "${results[@]}"
