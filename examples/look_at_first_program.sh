#!/usr/bin/env bash
# Runs a first program with the stand-in page on a display of its own, and looks at what is seen and said.
# usage: look_at_first_program.sh PAGE_SERVER PROGRAM
set -euo pipefail
command -v xvfb-run >/dev/null || { echo "skipped: xvfb is missing"; exit 77; }
work=$(mktemp -d)
trap 'kill -- -$program 2>/dev/null || true; rm -rf "$work"' EXIT
export GDK_BACKEND=x11 GSK_RENDERER=cairo LIBGL_ALWAYS_SOFTWARE=1 GTK_A11Y=none NO_AT_BRIDGE=1 QT_QPA_PLATFORM=xcb
export WEBKIT_DISABLE_SANDBOX_THIS_IS_DANGEROUS=1 QTWEBENGINE_DISABLE_SANDBOX=1 XDG_DATA_HOME=$work XDG_CACHE_HOME=$work
unset WAYLAND_DISPLAY
fail() { echo "$*"; cat "$work/said"; exit 1; }

run() { # COMMAND...
  setsid xvfb-run -a -s "-screen 0 500x900x24 -fbdir $work" "$@" >"$work/said" 2>&1 &
  program=$!
}
# How many different colours the display shows; a head and a table come before the picture.
colours() { tail -c $((500 * 900 * 4)) "$work/Xvfb_screen0" | od -An -v -tx4 -w4 | sort -u | wc -l; }
until_seen() { # what is expected, command...
  local what=$1
  shift
  for _ in $(seq 200); do
    if "$@" 2>/dev/null; then return; fi
    sleep 0.3
  done
  fail "never seen: $what"
}
# An empty page has a hundred at most, and the stand-in page some thousands.
shows_page() { [ "$(colours)" -gt 1000 ]; }

run "$1" "$2"
until_seen "the event of the loaded page" grep -q didLoad "$work/said"
until_seen "a page with pictures and text" shows_page
kill -- -$program
wait $program 2>/dev/null || true

run "$2" http://127.0.0.1:65533/
until_seen "why the page does not load" grep -q "^http://127.0.0.1:65533/.*: ." "$work/said"
