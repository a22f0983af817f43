#!/usr/bin/env bash
# Runs the catalogue tool as a shop would, on good and on bad input. Arguments: the tool and the sample catalogue.
set -u
export LC_ALL=C
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

expect 1 "standard input:325:22: error: product.variations[4].price.current: Expected Float but found a string" \
  < <(awk '/"current"/ && ++n == 5 {sub(/59.95/, "\"59.95\"")} {print}' "$good")
expect 1 'product.variations[1].attributes[1].option: Variation SHIRT-OXFORD-S-BLUE uses undefined option PI\x00NK for color' \
  < <(sed '0,/"option": "BLUE"/s//"option": "PI\\u0000NK"/' "$good")
expect 1 "standard input:515:21: error: _schemaVersion: product spec version 5 not supported (product 2, byte" \
  < <(cat "$good"; sed 's/"_schemaVersion": 4/"_schemaVersion": 5/' "$good")
expect 1 "standard input:1:1: error: expected a product, found the end of the file" </dev/null
expect 1 "100000 bytes from here on are not read" < <(head -c 100000 "$tool")
expect 1 "not valid UTF-8" < <(printf '{"locale": "\xff"}')
expect 1 "1 product, 1 error between products" --check < <(printf '\xef\xbb\xbf'; cat "$good")
expect 0 "2 products, all good" --check < <(printf '[%s ,\n%s]' "$(cat "$good")" "$(cat "$good")")
expect 1 "Expected Object but found an array" < <(printf '[[%s]]' "$(cat "$good")")

# One line a product, one array in one line, and an array over many lines: each with a brace missing in the third of five.
compact=$(head -n 1 "$work/canonical")
broken=${compact%\}}
expect 1 "standard input:4:1: error: expected ',' or '}', found '{' in the object from 3:1 on (product 3, byte" \
  < <(printf '%s\n' "$compact" "$compact" "$broken" "$compact" "$compact")
expect 1 "5 products, 1 refused" --check < <(printf '[%s, %s, %s, %s, %s]' "$compact" "$compact" "$broken" "$compact" "$compact")
expect 1 "5 products, 2 refused, $((${#compact} - 26)) bytes behind errors not read" --check < <(
  printf '[\n  %s,\n  %s,\n  %s,\n  %s,\n  %s\n]\n' "$compact" "$compact" "${compact/\"locale\":\"/\"locale\":}" "$broken" "$compact")

# What each fault is told as; the product behind it is found all the same.
while IFS='|' read -r text message; do
  expect 1 "error: expected $message" --check < <(printf '%s\n%s\n' "$text" "$compact")
  grep -qE '^([12] products, 1 refused|1 product, 1 error)' "$work/out" || fail "$text: $(cat "$work/out")"
done <<'END'
{"a" 1}|':', found '1' in the object from 1:1 on (product 1, byte 6)
{"a":[1,{"b":02}]}|',' or '}', found '2' in the object from 1:9 on
{"a":[1 2]}|',' or ']', found '2'
{"a":1,}|a name in double quotes, found '}'
{"é":tru}|a value, found 't' in the object from 1:1 on (product 1, byte 7)
{"a":-.5}|a digit, found '.'
{"a":"b|'"' at the end of the text, found the end of the line
{"a":"\x"}|one of " \ / b f n r t u after a backslash, found 'x'
{"a":[}|a value or ']', found '}'
hello, world|a product or an array of products, found 'h'
END

mkdir -p "$work/shop/a.json/deeper" "$work/none"
cp "$good" "$work/shop/z.json"
echo '{}' >"$work/shop/a.json/deeper/b.json"
echo 'not read' >"$work/shop/readme.txt"
expect 1 "2 products, 1 refused" "$work/shop" </dev/null
[ "$(wc -l <"$work/out")" = 1 ] || fail "a refused product keeps the others from being printed"
expect 2 "1 product, 1 file not read" --check "$good" "$work/missing.json" </dev/null
expect 2 "missing.json: error: cannot be opened: No such file or directory" "$work/missing.json" </dev/null
expect 2 "none: error: there is no *.json file in this directory" "$work/none" </dev/null
expect 2 "no option --verify" --verify "$good" </dev/null
expect 2 "a single line without a product is larger than 64 MiB" /dev/zero </dev/null
expect 2 "a single product is larger than 64 MiB" < <(printf '{"a":"'; head -c 70000000 /dev/zero | tr '\0' x)
expect 0 "usage: corvane-product" --help </dev/null
expect 0 "corvane-product 0." --version </dev/null
for option in $("$tool" --help | grep -oE -- '--[a-z]+' | sort -u); do
  for file in corvane-product.1.in shell/corvane-product.bash shell/_corvane-product shell/corvane-product.fish; do
    grep -qE -- "(-|\[|l )${option#--}" "$(dirname "$0")/$file" || fail "$file does not have $option"
  done
done

# Whatever the lenient reading leaves out is said.
lenient() { sed -e 's/"brandName": "[^"]*"/"brandName": 5/' -e '0,/"rating": 4.5/s//"rating": "4.5"/' -e '0,/BULLETS/s//TABLE/' "$good"; }
expect 0 "45:18: warning: product.brandName: Left out: Expected String but found a number. (product 1, byte" < <(lenient)
[ "$(wc -l <"$work/out")" = 1 ] || fail "a warning keeps a product from being printed"
expect 1 "1 product, 1 refused" --strict --check < <(lenient)
expect 0 "1 product, good, 3 warnings" --json < <(lenient)
for place in product.brandName 'product.variations[0].rating.rating' 'product.variations[0].details[0].detailType'; do
  grep -qF "\"kind\":\"dropped\",\"message\":\"Left out: " "$work/out" || fail "--json: $(cat "$work/out")"
  grep -qF "\"product\":1,\"path\":\"$place\"}" "$work/out" || fail "--json does not tell of $place"
done

# A closed pipe ends it without a word.
{ "$tool" "$catalogue"/* "$catalogue"/* "$catalogue"/* 2>"$work/err"; echo $? >"$work/status"; } | true
{ [ "$(cat "$work/status")" != 0 ] && [ ! -s "$work/err" ]; } || fail "a closed pipe: $(cat "$work/status" "$work/err")"
"$tool" "$catalogue" 2>"$work/err" >/dev/full && fail "a full disk is not noticed"
grep -qF "standard output: error: cannot be written" "$work/err" || fail "a full disk is not reported"
exit $((failures > 0))
