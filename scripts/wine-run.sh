#!/usr/bin/env bash
# Runs a Windows program under Wine in the build's own prefix.
# WINEPREFIX defaults to a folder beside the working directory's build, so that no test
# touches ~/.wine. The first start of a new prefix takes about 20 seconds.
set -euo pipefail
export WINEPREFIX="${WINEPREFIX:-$PWD/wineprefix}"
export WINEDEBUG="${WINEDEBUG:--all}"
export WINEDLLOVERRIDES="${WINEDLLOVERRIDES:-mscoree,mshtml=;winemenubuilder.exe=d}"
exec wine "$@"
