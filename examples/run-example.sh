#!/bin/sh
# Runs ormel on the bundled sheet of two shelf labels: the texts come from products.txt
# (with -rx=new, so a placeholder may name a font; the price is set in a Rimba numeral
# font), the brand logos from logos.txt, found below home/ and fitted into the old frames.
# Shows the new document with its carriage returns shown as line ends, then the -report
# lines. Usage: sh examples/run-example.sh path/to/ormel
set -eu
ormel=$1
here=$(dirname "$0")
out=${TMPDIR:-/tmp}/ormel-example.ai
report=${TMPDIR:-/tmp}/ormel-example.report

set -- -rx=new -refpt=upperleft -report -home="$here/home/" "$here/shelf-labels.ai" \
  "PR=$here/products.txt" "EPS-LOGO=$here/logos.txt"
printf '$ ormel %s\n' "$*"
if ! "$ormel" "$@" > "$out" 2> "$report"; then
  cat "$report" >&2
  exit 1
fi
echo
echo "== The new document ($out), carriage returns shown as line ends:"
tr '\r' '\n' < "$out"
echo
echo "== What became of each placeholder (-report, on standard error):"
cat "$report"
