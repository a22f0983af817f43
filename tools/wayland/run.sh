#!/usr/bin/env bash
# Runs a program under a headless Weston: run.sh MODULE [--scale=N] PROGRAM [ARGUMENT...]
# Ends with 77, and a reason, where there is no compositor or it was built without the input module.
set -euo pipefail

module=$1
shift
skip() { echo "skipped: $1"; exit 77; }
command -v weston >/dev/null || skip "weston is missing"
[ -f "$module" ] || skip "the input module is missing, which needs libweston-10-dev"
options=()
if [[ $1 == --scale=* ]]; then options+=("$1"); shift; fi

XDG_RUNTIME_DIR=$(mktemp -d)
export XDG_RUNTIME_DIR CORVANE_INPUT=$XDG_RUNTIME_DIR/input
chmod 700 "$XDG_RUNTIME_DIR"
compositor=
finish() {
  [ -z "$compositor" ] || kill "$compositor" 2>/dev/null || true
  wait
  rm -rf "$XDG_RUNTIME_DIR"
}
trap finish EXIT

# The size of a phone. The kiosk's windows fill the output, so that a point of the window is one of the output.
weston --backend=headless-backend.so --use-pixman --width=390 --height=844 --no-config --idle-time=0 \
  --shell=kiosk-shell.so --socket=wayland-test --modules="$(realpath "$module")" "${options[@]}" \
  >"$XDG_RUNTIME_DIR/log" 2>&1 &
compositor=$!
for _ in $(seq 100); do
  [ -S "$XDG_RUNTIME_DIR/wayland-test" ] && [ -p "$CORVANE_INPUT" ] && break
  kill -0 "$compositor" 2>/dev/null || break
  sleep 0.1
done
[ -p "$CORVANE_INPUT" ] || { cat "$XDG_RUNTIME_DIR/log"; exit 1; }

env -u DISPLAY WAYLAND_DISPLAY=wayland-test GDK_BACKEND=wayland QT_QPA_PLATFORM=wayland GSK_RENDERER=cairo \
  LIBGL_ALWAYS_SOFTWARE=1 WEBKIT_DISABLE_SANDBOX_THIS_IS_DANGEROUS=1 GTK_A11Y=none NO_AT_BRIDGE=1 "$@"
