#!/usr/bin/env bash
# Installs a build and uses it the way host apps do: headers, CMake, pkg-config, the tool.
# usage: install_test.sh BUILD_FOLDER
set -euo pipefail
build=$1
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
fail() { echo "install_test: $*" >&2; exit 1; }

cmake --install "$build" --prefix "$work/first" >/dev/null
# Nothing may point to where it was installed first.
mv "$work/first" "$work/prefix"
prefix=$work/prefix
libraries=$(dirname "$(find "$prefix" -name libcorvane.so)")
has_gtk=$([ -e "$libraries/libcorvane-gtk.so" ] && echo yes || echo no)
has_qt=$([ -e "$libraries/libcorvane-qt.so" ] && echo yes || echo no)
PKG_CONFIG_PATH=$libraries/pkgconfig:${PKG_CONFIG_PATH:-}
export PKG_CONFIG_PATH

# All headers at once, with no other folder to look in: of what they include only the compiler's and the C library's own
# headers may lie elsewhere. That each header compiles alone is seen while building.
cd "$prefix/include"
headers=$(find corvane -name '*.h' | sort)
[ -n "$headers" ] || fail "no headers"
# shellcheck disable=SC2086
printf '#include "%s"\n' $headers | g++ -std=c++23 -M -I. -x c++ - >"$work/included" || fail "a header is missing"
if ! command -v dpkg >/dev/null; then
  echo "skipped: whose headers they include, as only Debian's package list tells"
else
  foreign=$(tr -s ' \\' '\n' <"$work/included" | grep '^/' | grep -v '^/usr/lib/gcc/' | xargs -r dpkg -S | cut -d: -f1 |
    sort -u | grep -vE '^(libc6-dev|linux-libc-dev|libstdc\+\+-[0-9]+-dev)$' || true)
  [ -z "$foreign" ] || fail "the headers use those of $foreign"
fi
# What exports must be installed: everything else in the libraries is hidden.
cd "$here/../.."
for header in $(grep -rl --include='*.h' CORVANE_EXPORT corvane); do
  case $header in
    corvane/platform/gtk/*) [ "$has_gtk" = yes ] || continue ;;
    corvane/platform/qt/*) [ "$has_qt" = yes ] || continue ;;
  esac
  [ -e "$prefix/include/$header" ] || fail "$header exports but is not installed"
done

run() { LD_LIBRARY_PATH=$libraries "$@"; }

cmake -S "$here/consumer" -B "$work/cmake" -G Ninja -DCMAKE_PREFIX_PATH="$prefix" >"$work/log" 2>&1 &&
  cmake --build "$work/cmake" >>"$work/log" 2>&1 || { cat "$work/log"; fail "no consumer with CMake"; }
"$work/cmake/consumer" || fail "the consumer built with CMake fails"

compile() { # output, source, pkg-config module
  # shellcheck disable=SC2046
  g++ -std=c++23 -o "$work/$1" "$here/consumer/$2" $(pkg-config --cflags --libs "$3") || fail "no $1 with pkg-config"
}
compile consumer consumer.cpp corvane
run "$work/consumer" || fail "the consumer built with pkg-config fails"
if [ "$has_gtk" = yes ]; then
  [ -x "$work/cmake/consumer-gtk" ] || fail "the CMake package does not offer corvane::gtk"
  compile consumer-gtk consumer_gtk.cpp corvane-gtk
  "$work/cmake/consumer-gtk" || fail "the GTK consumer built with CMake fails"
  run "$work/consumer-gtk" || fail "the GTK consumer built with pkg-config fails"
else
  echo "skipped: the GTK consumer, as the backend is not built"
fi
if [ "$has_qt" = yes ]; then
  export QT_QPA_PLATFORM=offscreen
  if [ "$(id -u)" = 0 ]; then export QTWEBENGINE_DISABLE_SANDBOX=1; fi
  [ -x "$work/cmake/consumer-qt" ] || fail "the CMake package does not offer corvane::qt"
  compile consumer-qt consumer_qt.cpp corvane-qt
  "$work/cmake/consumer-qt" || fail "the Qt consumer built with CMake fails"
  run "$work/consumer-qt" || fail "the Qt consumer built with pkg-config fails"
else
  echo "skipped: the Qt consumer, as the backend is not built"
fi

# The tool finds its library by itself.
"$prefix/bin/corvane-product" "$here"/../../demo/catalogue/*.json >"$work/log" || { cat "$work/log"; fail "the tool fails"; }
echo "installed, moved and used: $(wc -l <<<"$headers") headers, CMake, pkg-config and the tool"
