#!/bin/sh
# Runs ormel on the bundled shelf label and shows the new document (its carriage returns
# shown as line ends). Usage: sh examples/run-example.sh path/to/ormel
set -eu
ormel=$1
here=$(dirname "$0")
out=${TMPDIR:-/tmp}/ormel-example.ai
"$ormel" "$here/label.ai" "PR=$here/prices.txt" > "$out"
tr '\r' '\n' < "$out"
echo "(written to $out)"
