#!/usr/bin/env bash
# Runs a command on a virtual display of its own, with a window manager. Both end with the command. ZEL_SCREEN
# is the size of the display.
set -euo pipefail

readonly longest_seconds=3600  # should this script be killed, they end by themselves
here=$(cd "$(dirname "$0")" && pwd)
work=$(mktemp -d)
server='' manager=''

end_display() {
    [[ -z $manager ]] || kill "$manager" 2>/dev/null || true
    [[ -z $server ]] || kill "$server" 2>/dev/null || true
    wait 2>/dev/null || true
    rm -rf "$work"
}
trap end_display EXIT

# Waits until a command succeeds.
wait_until() {
    local tries
    for ((tries = 0; tries < 200; ++tries)); do
        if "$@" >/dev/null 2>&1; then return 0; fi
        sleep 0.1
    done
    echo "No virtual display: '$*' never came true" >&2
    cat "$work/log" >&2
    return 1
}

# Without a number given, the server takes a free one and writes it to the file. It must not start anew when
# its last program leaves: the next one would find no display meanwhile.
timeout "$longest_seconds" Xvfb -displayfd 3 -screen 0 "${ZEL_SCREEN:-1600x1000}x24" -nolisten tcp -noreset 3>"$work/number" 2>"$work/log" &
server=$!
wait_until grep -q . "$work/number"
DISPLAY=":$(cat "$work/number")"
export DISPLAY

wait_until xprop -root WM_NAME  # a window manager that finds no display gives up at once

timeout "$longest_seconds" openbox --config-file "$here/openbox.xml" >>"$work/log" 2>&1 &
manager=$!
wait_until sh -c 'xprop -root _NET_SUPPORTING_WM_CHECK | grep -q "window id"'

"$@"
