#!/usr/bin/env bash
# Compares what the libraries of a build offer to compiled host apps with what is kept here.
# usage: compare.sh BUILD_FOLDER [--update]   exit status 1 for a difference, 77 where nothing can be compared
set -euo pipefail
build=$(cd "$1" && pwd)
update=${2:-}
cd "$(dirname "${BASH_SOURCE[0]}")"
command -v abidw >/dev/null || { echo "skipped: abidw is not installed"; exit 77; }
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cmake --install "$build" --component development --prefix "$work" >/dev/null

differs=0
compared=0
for library in corvane/libcorvane.so corvane/platform/gtk/libcorvane-gtk.so corvane/platform/qt/libcorvane-qt.so; do
  name=$(basename "$library" .so)
  [ -e "$build/$library" ] || { echo "skipped: $name is not built"; continue; }
  abidw --headers-dir "$work/include" --drop-private-types --suppressions public_types.ini --exported-interfaces-only \
    --no-corpus-path --no-comp-dir-path --no-show-locs --no-parameter-names --no-elf-needed --type-id-style hash \
    --out-file "$work/$name.abi" "$build/$library"
  if [ "$update" = --update ]; then
    cp "$work/$name.abi" "$name.abi"
    echo "$name: kept, $(grep -c '<elf-symbol ' "$name.abi") symbols"
    continue
  fi
  status=0
  abidiff --no-show-locs "$name.abi" "$work/$name.abi" || status=$?
  [ $((status & 3)) = 0 ] || { echo "abidiff fails"; exit 2; }
  compared=1
  if [ $status = 0 ]; then
    echo "$name: as it was, $(grep -c '<elf-symbol ' "$name.abi") symbols"
  else
    differs=1
  fi
done
[ "$update" = --update ] || [ $compared = 1 ] || exit 77
[ $differs = 0 ] || echo "The binary interface has changed; docs/abi.md says what to do."
exit $differs
