#!/bin/sh
# Reads a document with Ghostscript's own scanner and compares the strings of its Tx
# operators, converted back to UTF-8, with a list: its first line names the document's
# encoding, each further line is one string, a line break inside it written \r. A string
# that breaks the syntax of the file fails the check.
# Usage: ps_strings.sh DOCUMENT LIST
set -u
document=$1
list=$2
work=$(mktemp -d) || exit 99
trap 'rm -rf "$work"' EXIT
cat > "$work/strings.ps" << 'END'
/source DOCUMENT (r) file def
/previous null def
{ source token not { exit } if
  dup type /nametype eq 1 index xcheck and { dup /Tx eq { previous print (\n) print } if } if
  /previous exch def
} loop
END
if ! gs -q -dNODISPLAY -dBATCH -dNOPAUSE -dNOSAFER -sDOCUMENT="$document" "$work/strings.ps" \
    > "$work/raw" 2> "$work/err"; then
  echo "Ghostscript cannot read $document:"; cat "$work/raw" "$work/err"; exit 1
fi
iconv -f "$(head -n 1 "$list")" -t UTF-8 < "$work/raw" | sed 's/\r/\\r/g' > "$work/strings" ||
  exit 1
tail -n +2 "$list" > "$work/expected"
if ! cmp -s "$work/expected" "$work/strings"; then
  echo "the strings Ghostscript reads differ from $list:"; diff "$work/expected" "$work/strings"
  exit 1
fi
