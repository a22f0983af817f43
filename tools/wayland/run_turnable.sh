#!/usr/bin/env bash
# Runs a program under a headless Sway, whose output can be turned: run_turnable.sh PROGRAM [ARGUMENT...]
# Ends with 77, and a reason, where Sway is missing. There is neither mouse nor finger.
set -euo pipefail

skip() { echo "skipped: $1"; exit 77; }
command -v sway >/dev/null || skip "sway is missing"

XDG_RUNTIME_DIR=$(mktemp -d)
export XDG_RUNTIME_DIR SWAYSOCK=$XDG_RUNTIME_DIR/sway.socket
chmod 700 "$XDG_RUNTIME_DIR"
printf '%s\n' 'output HEADLESS-1 resolution 390x844 position 0 0' 'default_border none' >"$XDG_RUNTIME_DIR/config"
compositor=
finish() {
  [ -z "$compositor" ] || kill "$compositor" 2>/dev/null || true
  wait
  rm -rf "$XDG_RUNTIME_DIR"
}
trap finish EXIT

# Sway refuses to run as root; its clients may.
as_user=()
if [ "$(id -u)" = 0 ]; then
  as_user=(setpriv --reuid=65534 --regid=65534 --clear-groups)
  chown -R 65534:65534 "$XDG_RUNTIME_DIR"
fi
env -u DISPLAY -u WAYLAND_DISPLAY WLR_BACKENDS=headless WLR_RENDERER=pixman WLR_LIBINPUT_NO_DEVICES=1 \
  "${as_user[@]}" sway -c "$XDG_RUNTIME_DIR/config" >"$XDG_RUNTIME_DIR/log" 2>&1 &
compositor=$!
display=
for _ in $(seq 100); do
  display=$(cd "$XDG_RUNTIME_DIR" && find . -name 'wayland-*' -type s -printf '%f\n' | head -1)
  [ -n "$display" ] && [ -S "$SWAYSOCK" ] && break
  kill -0 "$compositor" 2>/dev/null || break
  sleep 0.1
done
[ -n "$display" ] && [ -S "$SWAYSOCK" ] || { cat "$XDG_RUNTIME_DIR/log"; exit 1; }

env -u DISPLAY WAYLAND_DISPLAY="$display" GDK_BACKEND=wayland QT_QPA_PLATFORM=wayland GSK_RENDERER=cairo \
  LIBGL_ALWAYS_SOFTWARE=1 WEBKIT_DISABLE_SANDBOX_THIS_IS_DANGEROUS=1 GTK_A11Y=none NO_AT_BRIDGE=1 "$@"
