#!/usr/bin/env bash
# Makes the Wine prefix of the Windows tests (WINEPREFIX) and has every program started in
# it open in one virtual desktop as big as the test screen: windows, the pointer, clicks and
# drags then stay inside Wine, where they are routed as on Windows, with no window manager.
set -euo pipefail
wineboot --init
wine reg add 'HKCU\Software\Wine\Explorer' /v Desktop /d Default /f >/dev/null
wine reg add 'HKCU\Software\Wine\Explorer\Desktops' /v Default /d 1280x1024 /f >/dev/null
