#!/usr/bin/env bash
# Runs the catalogue tool as a shop would, on good and on bad input. Arguments: the tool and the sample catalogue.
set -u
tool=$1 catalogue=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failures=0

fail() { echo "FAILED: $*"; failures=$((failures + 1)); }

# expect STATUS TEXT ARGUMENT...: runs the tool on our standard input; TEXT must be in what it writes.
expect() {
  local status=$1 text=$2 actual
  shift 2
  "$tool" "$@" >"$work/out" 2>"$work/err"
  actual=$?
  [ "$actual" = "$status" ] || fail "$*: exit status $actual instead of $status: $(cat "$work/err")"
  cat "$work/out" "$work/err" | grep -qF -e "$text" || fail "$*: nothing says '$text': $(cat "$work/err")"
}

good="$catalogue/shirt_oxford.json"
count=$(find "$catalogue" -name '*.json' | wc -l)
expect 0 "$count products, all good" --check "$catalogue" </dev/null
expect 0 "$count products, all good" "$catalogue" </dev/null
cp "$work/out" "$work/canonical"
[ "$(wc -l <"$work/canonical")" = "$count" ] || fail "there is not one line a product"
expect 0 "$count products" <"$work/canonical"
cmp -s "$work/out" "$work/canonical" || fail "canonical output does not stay as it is"
expect 0 "1 product, good" --check - <"$good"
[ -s "$work/err" ] && fail "a good product leads to messages"

expect 1 "standard input: product.variations[4].price.current: Expected Float but found a string" \
  < <(awk '/"current"/ && ++n == 5 {sub(/59.95/, "\"59.95\"")} {print}' "$good")
expect 1 'Variation SHIRT-OXFORD-S-BLUE uses undefined option PI\x00NK for color' \
  < <(sed '0,/"option": "BLUE"/s//"option": "PI\\u0000NK"/' "$good")
expect 1 "standard input, product 2: product spec version 5 not supported" \
  < <(cat "$good"; sed 's/"_schemaVersion": 4/"_schemaVersion": 5/' "$good")
expect 1 "not valid JSON" </dev/null
expect 1 "not valid JSON" < <(head -c 100000 "$tool")
expect 1 "not valid UTF-8" < <(printf '{"locale": "\xff"}')
expect 1 "byte order mark" < <(printf '\xef\xbb\xbf'; cat "$good")
expect 1 "Expected Object but found an array" < <(printf '[%s]' "$(cat "$good")")

mkdir -p "$work/shop/a.json/deeper" "$work/none"
cp "$good" "$work/shop/z.json"
echo '{}' >"$work/shop/a.json/deeper/b.json"
echo 'not read' >"$work/shop/readme.txt"
expect 1 "2 products, 1 refused" "$work/shop" </dev/null
[ "$(wc -l <"$work/out")" = 1 ] || fail "a refused product keeps the others from being printed"
expect 2 "1 product, 1 file not read" --check "$good" "$work/missing.json" </dev/null
expect 2 "missing.json: cannot be opened: No such file or directory" "$work/missing.json" </dev/null
expect 2 "none: there is no *.json file in this directory" "$work/none" </dev/null
expect 2 "no option --verify" --verify "$good" </dev/null
expect 2 "a single product is larger than 64 MiB" /dev/zero </dev/null
expect 0 "usage: corvane-product" --help </dev/null

"$tool" "$catalogue" 2>"$work/err" >/dev/full && fail "a full disk is not noticed"
grep -qF "standard output: cannot be written" "$work/err" || fail "a full disk is not reported"
exit $((failures > 0))
