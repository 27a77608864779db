#!/usr/bin/env bash
# End-to-end check with a real AT-SPI client:
#   run_atspi_check.sh <atspi_range_slider_app> [check script]
# Starts a private X server, session bus and accessibility bus, publishes the
# accessibility bus on the root window, touches the registry, and only then
# starts the application, so that it finds the bus when it registers (a Qt 5
# application that tries before the bus is reachable never appears). Every
# wait is bounded; everything started here is stopped on exit, and nothing
# started in the background writes to the caller's output (a test runner
# waits for that to close).
# Debian packages: xvfb x11-utils dbus-x11 at-spi2-core python3-pyatspi.
set -euo pipefail

app=${1:?usage: run_atspi_check.sh <app> [check script]}
check=${2:-$(dirname "$0")/check_range_slider.py}
work=$(mktemp -d)
pids=()

fail() { echo "run_atspi_check: $*" >&2; exit 1; }

# Stops a process of ours and, first, what it started (the bus launcher
# starts the accessibility bus and the registry). The parents come from
# /proc, as a bare machine may have no ps.
declare -A children=()
read_children() {
    local stat fields state ppid rest pid
    children=()
    for stat in /proc/[0-9]*/stat; do
        # A process may end between the listing and the reading.
        { fields=$(<"$stat"); } 2>/dev/null || continue
        pid=${stat#/proc/}
        pid=${pid%/stat}
        # After the command name come the state and the parent's id.
        read -r state ppid rest <<<"${fields##*) }"
        children[$ppid]+=" $pid"
    done
}
stop_tree() {
    local child
    for child in ${children[$1]:-}; do
        stop_tree "$child"
    done
    kill "$1" 2>/dev/null || true
}

cleanup() {
    local i pid
    set +e
    read_children
    for ((i = ${#pids[@]} - 1; i >= 0; i--)); do
        stop_tree "${pids[i]}"
    done
    for pid in "${pids[@]}"; do
        wait "$pid" 2>/dev/null || true
    done
    rm -rf "$work"
}
trap cleanup EXIT

# Polls a command every 0.2 s for at most $1 seconds.
wait_until() {
    local seconds=$1
    shift
    local tries=$((seconds * 5))
    while ((tries-- > 0)); do
        if "$@" >/dev/null 2>&1; then return 0; fi
        sleep 0.2
    done
    return 1
}

launcher=""
for candidate in /usr/libexec/at-spi-bus-launcher /usr/lib/at-spi2-core/at-spi-bus-launcher; do
    [ -x "$candidate" ] && launcher=$candidate && break
done
[ -n "$launcher" ] || fail "at-spi-bus-launcher not found (Debian: at-spi2-core)"
for tool in Xvfb xprop dbus-daemon dbus-send; do
    command -v "$tool" >/dev/null || fail "$tool not found (Debian: xvfb x11-utils dbus-x11 at-spi2-core)"
done
/usr/bin/python3 -c 'import pyatspi' 2>/dev/null || fail "python3 cannot import pyatspi (Debian: python3-pyatspi)"

# 1. The X server, on the first free display; -noreset keeps the root window
#    (and the property published on it) when the last client goes away.
mkfifo "$work/displayfd"
Xvfb -displayfd 3 -noreset -nolisten tcp -screen 0 1024x768x24 3>"$work/displayfd" >"$work/xvfb.log" 2>&1 &
pids+=($!)
read -r -t 15 display <"$work/displayfd" || fail "Xvfb did not start: $(cat "$work/xvfb.log")"
export DISPLAY=:$display
wait_until 10 xprop -root -len 0 _XKB_RULES_NAMES || fail "Xvfb on $DISPLAY does not answer"

# 2. A private session bus, and the accessibility bus started by its launcher.
dbus-daemon --session --nofork --print-address=4 4>"$work/session-address" >"$work/dbus.log" 2>&1 &
pids+=($!)
wait_until 10 test -s "$work/session-address" || fail "no session bus: $(cat "$work/dbus.log")"
DBUS_SESSION_BUS_ADDRESS=$(head -n 1 "$work/session-address")
export DBUS_SESSION_BUS_ADDRESS
unset AT_SPI_BUS_ADDRESS

"$launcher" --launch-immediately >"$work/launcher.log" 2>&1 &
pids+=($!)
# Asked only once the launcher owns its name: a call to org.a11y.Bus before
# would make the session bus start a second launcher.
launcher_ready() {
    dbus-send --session --print-reply=literal --dest=org.freedesktop.DBus / \
        org.freedesktop.DBus.NameHasOwner string:org.a11y.Bus 2>/dev/null | grep -q true
}
wait_until 15 launcher_ready || fail "the accessibility bus launcher did not start: $(cat "$work/launcher.log")"
bus_address() {
    dbus-send --session --print-reply=literal --dest=org.a11y.Bus /org/a11y/bus org.a11y.Bus.GetAddress \
        >"$work/a11y-address" 2>/dev/null && grep -q unix: "$work/a11y-address"
}
wait_until 15 bus_address || fail "the accessibility bus did not come up: $(cat "$work/launcher.log")"
address=$(tr -d ' \n' <"$work/a11y-address")

# 3. Published where clients look for it first.
xprop -root -f AT_SPI_BUS 8s -set AT_SPI_BUS "$address"

# 4. The registry, started by the bus on first use.
touch_registry() {
    dbus-send --bus="$address" --print-reply --dest=org.a11y.atspi.Registry \
        /org/a11y/atspi/accessible/root org.freedesktop.DBus.Properties.Get \
        string:org.a11y.atspi.Accessible string:ChildCount
}
wait_until 15 touch_registry || fail "the AT-SPI registry does not answer on $address"

# 5. Only now the application, with Qt's bridge switched on.
QT_QPA_PLATFORM=xcb QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1 QT_ACCESSIBILITY=1 \
    "$app" >"$work/app.log" 2>"$work/app.err" &
pids+=($!)
wait_until 20 grep -qx ready "$work/app.log" \
    || fail "the application did not start: $(cat "$work/app.err")"

# 6. The client.
if ! timeout 60 /usr/bin/python3 "$check" "$work/app.log"; then
    echo "--- application output:" >&2
    cat "$work/app.log" "$work/app.err" >&2
    fail "the AT-SPI check failed"
fi
