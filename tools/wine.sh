#!/usr/bin/env bash
# Runs programs for Windows under Wine, without a display, in a Wine folder of their own.
#   tools/wine.sh start FOLDER             makes the folder where it is not there yet and starts its server
#   tools/wine.sh run FOLDER PROGRAM ...   runs a program; its exit code is the answer
#   tools/wine.sh stop FOLDER              ends the server and whatever still runs in the folder
set -euo pipefail

usage="usage: tools/wine.sh start|run|stop FOLDER [PROGRAM ...]"
action=${1:?$usage}
folder=${2:?$usage}
shift 2

export WINEPREFIX=$folder WINEDEBUG=${WINEDEBUG:--all} WINEDLLOVERRIDES="mscoree,mshtml="
# File names are UTF-8 by the locale; one that does not exist breaks those with accents.
export LANG=C.UTF-8
unset LC_ALL DISPLAY WAYLAND_DISPLAY

case $action in
    start)
        mkdir -p "$folder"
        if [ ! -e "$folder/kv-ready" ]; then
            timeout 180 wine wineboot -i >/dev/null 2>&1 </dev/null
            # Windows live in memory: no display is asked for.
            timeout 60 wine reg add 'HKCU\Software\Wine\Drivers' /v Graphics /d null /f >/dev/null 2>&1 </dev/null
            # A crash ends the program with a message; no window waits for an answer.
            timeout 60 wineserver -k >/dev/null 2>&1 || true
            timeout 60 wineserver -w >/dev/null 2>&1 || true
            touch "$folder/kv-ready"
        fi
        # The server and its services are started here, apart from the pipes of any test, and stay.
        timeout 60 wineserver -p >/dev/null 2>&1 </dev/null || true
        timeout 120 wine wineboot >/dev/null 2>&1 </dev/null
        ;;
    run) exec wine "$@" ;;
    stop)
        timeout 60 wineserver -k >/dev/null 2>&1 || true
        timeout 60 wineserver -w >/dev/null 2>&1 || true
        ;;
    *) echo "$usage" >&2; exit 2 ;;
esac
