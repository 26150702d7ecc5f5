#!/usr/bin/env bash
# Linkwright's main job on the bundled sample installation.
set -euo pipefail
cd "$(dirname "$0")"

scripts/install-deps.sh
scripts/build.sh windows
echo "Built. Still to come: Linkwright.exe and the sample installation it runs in."
