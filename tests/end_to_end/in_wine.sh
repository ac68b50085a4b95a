#!/usr/bin/env bash
# Runs a command with a Wine of the build's own: its prefix and its home lie under build/, nothing of the
# user's is touched, and every Windows program ends with the command.
set -euo pipefail

readonly prefix_version=1  # another number makes the prefix anew
here=$(cd "$(dirname "$0")" && pwd)
wine_root=$(cd "$here/../.." && pwd)/build/wine

export WINEPREFIX=$wine_root/prefix
export HOME=$wine_root/home
export XDG_CACHE_HOME=$HOME/.cache XDG_CONFIG_HOME=$HOME/.config XDG_DATA_HOME=$HOME/.local/share
export WINEARCH=win64
export WINEDEBUG=-all
export LC_ALL=C.UTF-8  # file names of any language
export WINEDLLOVERRIDES='mscoree,mshtml='  # no question whether to fetch what the program does not use

stop_wine() {
    wineserver --kill >/dev/null 2>&1 || true
    timeout 30 wineserver --wait >/dev/null 2>&1 || true
}

make_prefix() {
    local stamp=$WINEPREFIX/made_by_version_$prefix_version log=$wine_root/make_prefix.log
    if [[ -e $stamp ]]; then return; fi

    echo "Making a Wine prefix, once" >&2
    rm -rf "$WINEPREFIX" "$HOME"
    mkdir -p "$HOME"
    if ! { env -u DISPLAY wineboot --init &&
        env -u DISPLAY wine reg import "$here/wine.reg"; } >"$log" 2>&1; then
        cat "$log" >&2
        exit 1
    fi
    stop_wine
    touch "$stamp"
}

mkdir -p "$HOME"
stop_wine  # one left by an earlier run would go on using that run's display
make_prefix
trap stop_wine EXIT
"$@"
