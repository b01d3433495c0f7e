#!/usr/bin/env bash
# Runs a command on an X desktop of its own: Xvfb, a window manager that comes up with its defaults, and a notification
# area; nothing of the person's settings, session or message bus gets in. Everything ends with the command, or with
# this script, however that ends: on_desktop.sh COMMAND [ARGUMENT]...
# Window manager and notification area may still be on their way: the command looks for them (see DesktopTest).
set -euo pipefail
home=$(mktemp -d)
trap 'kill $(jobs -p) 2>/dev/null || true; wait; rm -rf "$home"' EXIT
trap 'exit 1' INT TERM HUP

around=(PATH="$PATH" LANG=C.UTF-8 DBUS_SESSION_BUS_ADDRESS=disabled: QT_QPA_PLATFORM=xcb)
for name in HOME XDG_CONFIG_HOME XDG_DATA_HOME XDG_CACHE_HOME XDG_RUNTIME_DIR; do
    around+=("$name=$home")
done
for name in TMPDIR BRELO_SOURCE_DIR ASAN_OPTIONS LSAN_OPTIONS UBSAN_OPTIONS; do
    [ -z "${!name:-}" ] || around+=("$name=${!name}")
done
become() { exec setpriv --pdeathsig KILL env -i "${around[@]}" "$@"; }

coproc server { become Xvfb -displayfd 1 -screen 0 1280x1024x24 -nolisten tcp -noreset; }
read -r -t 60 display <&"${server[0]}" || { echo "Xvfb does not come up." >&2; exit 1; }
around+=("DISPLAY=:$display")
become openbox --config-file /etc/xdg/openbox/rc.xml --sm-disable &
become trayer --edge bottom &
become "$@" &
wait $!
