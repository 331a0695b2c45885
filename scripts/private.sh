# A folder, a print server and screens for this run alone, taken away at its end. To be sourced by bash.
# shellcheck shell=bash

work=$(mktemp -d)
processes=()  # ended last to first
cleanup() {
  local i process
  for ((i = ${#processes[@]} - 1; i >= 0; --i)); do
    process=${processes[i]}
    kill "$process"
    wait "$process" || true  # it writes its files until it ends
  done
  rm -rf "$work"
}
trap cleanup EXIT

# A print server of our own, without queues.
start_server() {
  local port=$((20000 + RANDOM % 20000))
  mkdir -p "$work"/{root,cache,state,spool/tmp}
  chmod 755 "$work"
  printf '%s\n' "Listen 127.0.0.1:$port" "Browsing Off" "DefaultAuthType None" "WebInterface No" \
    "<Location />" "Order allow,deny" "Allow all" "</Location>" \
    "<Policy default>" "<Limit All>" "Order deny,allow" "</Limit>" "</Policy>" >"$work/cupsd.conf"
  printf '%s\n' "FileDevice Yes" "SystemGroup root" "Group nogroup" "ServerRoot $work/root" "CacheDir $work/cache" \
    "StateDir $work/state" "RequestRoot $work/spool" "TempDir $work/spool/tmp" "ErrorLog $work/error_log" \
    "AccessLog $work/access_log" "PageLog $work/page_log" >"$work/cups-files.conf"
  /usr/sbin/cupsd -f -c "$work/cupsd.conf" -s "$work/cups-files.conf" &
  processes+=($!)
  export CUPS_SERVER=127.0.0.1:$port
  for _ in $(seq 50); do
    if lpstat -r 2>/dev/null | grep -q "is running"; then
      break
    fi
    sleep 0.1
  done
}

# start_screen WIDTHxHEIGHT
start_screen() {
  Xvfb -displayfd 3 -screen 0 "$1x24" 3>"$work/display" 2>/dev/null &
  processes+=($!)
  for _ in $(seq 100); do
    if [ -s "$work/display" ]; then
      break
    fi
    sleep 0.1
  done
  DISPLAY=:$(cat "$work/display")
  export DISPLAY
}

# A session bus.
start_bus() {
  dbus-daemon --session --nofork --print-address=3 3>"$work/bus" 2>/dev/null &
  processes+=($!)
  until [ -s "$work/bus" ]; do sleep 0.01; done
  DBUS_SESSION_BUS_ADDRESS=$(cat "$work/bus")
  export DBUS_SESSION_BUS_ADDRESS
}

# The surroundings of a desktop portal, on an X screen, and of GTK programs that use it.
prepare_portal() {
  export HOME=$work/home XDG_RUNTIME_DIR=$work/run XDG_DESKTOP_PORTAL_DIR=$work/portals
  export GTK_USE_PORTAL=1 GDK_DEBUG=portals GDK_BACKEND=x11 GSK_RENDERER=cairo GTK_A11Y=none NO_AT_BRIDGE=1
  unset QT_QPA_PLATFORM
  mkdir -p "$HOME" "$XDG_DESKTOP_PORTAL_DIR"
  mkdir -m 700 "$XDG_RUNTIME_DIR"
}

# use_portal PROGRAM PORTAL-FILE BACKEND...: starts a backend and the portal with it alone, and then a program that prints.
# What they say is in $work/asked (the program), $work/job and $work/backend.log (the backend).
use_portal() {
  rm -f "$XDG_DESKTOP_PORTAL_DIR"/*
  cp "$2" "$XDG_DESKTOP_PORTAL_DIR"
  "${@:3}" 2>"$work/backend.log" >"$work/job" &
  backend=$!
  sleep 1
  /usr/libexec/xdg-desktop-portal 2>"$work/portal.log" &
  portal=$!
  sleep 1
  "$1" 2>"$work/program.log" >"$work/asked" &
  program=$!
  processes+=("$backend" "$portal" "$program")
}
leave_portal() {
  kill "$program" "$backend" "$portal"
  wait "$program" "$backend" "$portal" 2>/dev/null || true
  processes=("${processes[@]:0:${#processes[@]}-3}")
}

# A Wayland screen that nobody sees, of a compositor that lets windows belong to those of other programs. It refuses to
# run as root.
start_wayland_screen() {
  local folder=$work/screen as=(env)
  mkdir -m 700 "$folder"
  if [ "$(id -u)" -eq 0 ]; then
    chmod 755 "$work"
    chown nobody "$folder"
    as=(setpriv --reuid=nobody --regid=nogroup --clear-groups env)
  fi
  echo "output HEADLESS-1 resolution 1280x1024" >"$work/sway.conf"
  "${as[@]}" HOME="$folder" XDG_RUNTIME_DIR="$folder" WLR_BACKENDS=headless WLR_LIBINPUT_NO_DEVICES=1 WLR_RENDERER=pixman \
    sway -c "$work/sway.conf" >"$work/sway.log" 2>&1 &
  processes+=($!)
  for _ in $(seq 100); do
    if [ -S "$folder/wayland-1" ]; then
      break
    fi
    sleep 0.1
  done
  WAYLAND_DISPLAY=$folder/wayland-1
  SWAYSOCK=$(find "$folder" -name 'sway-ipc*')
  export WAYLAND_DISPLAY SWAYSOCK
}
