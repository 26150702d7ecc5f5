#!/usr/bin/env bash
# Builds both builds and runs every test: the native suite (with sanitizers), then the
# same suite cross-compiled for Windows and run under Wine, with the checks of the real
# program and of the release archive. Last, the native build is made once more with clang,
# only to see it build without a warning. Exits non-zero on any failure.
set -uo pipefail
cd "$(dirname "$0")"

scripts/install-deps.sh || exit 1

status=0
summary=()
for kind in native windows; do
  echo "=== $kind build"
  if ! scripts/build.sh "$kind"; then
    summary+=("$kind: build failed"); status=1; continue
  fi
  echo "=== $kind tests"
  log="build/$kind/ctest.log"
  if [ "$kind" = windows ]; then
    xvfb-run -a -s "-screen 0 1280x1024x24" ctest --test-dir "build/$kind" -j 2 --output-on-failure 2>&1 | tee "$log"
  else
    ctest --test-dir "build/$kind" -j 2 --output-on-failure 2>&1 | tee "$log"
  fi
  [ "${PIPESTATUS[0]}" -eq 0 ] || status=1
  summary+=("$kind: $(grep -E 'tests passed|tests failed' "$log" | tail -1)")
done

echo "=== clang build"
if scripts/build.sh clang; then
  summary+=("clang: built without warnings")
else
  summary+=("clang: build failed"); status=1
fi

echo "=== summary"
printf '%s\n' "${summary[@]}"
exit $status
