#!/bin/sh
# The libraries of barcodes and photos are not linked, and a run opens only those its art
# needs: none for texts, libzint (with libpng) for barcodes, and for photos the readers' libraries (with
# libtiff's own). glibc's loader names every library it opens (LD_DEBUG=files); skipped (77)
# where it does not, or without readelf. Usage: lazy_libraries.sh path/to/ormel
set -u
ormel=$(cd "$(dirname "$1")" && pwd)/$(basename "$1")
golden=$(cd "$(dirname "$0")/golden" && pwd) || exit 99
art_libraries='libzint|libjpeg|libpng16|libtiff|libLerc'

command -v readelf > /dev/null 2>&1 || exit 77
LD_DEBUG=files "$ormel" --version 2>&1 > /dev/null | grep -q 'file=' || exit 77

failed=0
linked=$(readelf -d "$ormel" | grep NEEDED | grep -oE "($art_libraries)[^]]*" | tr '\n' ' ')
if [ -n "$linked" ]; then
  echo "FAIL linked: $linked"
  failed=1
fi

# art_opened CASE: the art libraries that ormel opens when run as the golden case CASE runs
# it (with --version when CASE is empty), sorted and separated by spaces.
art_opened() {
  (
    if [ -n "$1" ]; then
      cd "$golden/$1" || exit 99
      set --
      while IFS= read -r arg; do set -- "$@" "$arg"; done < args
    else
      set -- --version
    fi
    LD_DEBUG=files "$ormel" "$@" 2>&1 > /dev/null
  ) | grep -oE "file=($art_libraries)[^ ]*" | sed 's/^file=//; s/\.so.*//' | sort -u |
    tr '\n' ' ' | sed 's/ $//'
}

# check CASE EXPECTED
check() {
  opened=$(art_opened "$1")
  if [ "$opened" != "$2" ]; then
    echo "FAIL ${1:---version}: opened '$opened', expected '$2'"
    failed=1
  else
    echo "ok   ${1:---version}: '$2'"
  fi
}

check "" ""
check arg-one-table ""
check barcode-kinds "libpng16 libzint"  # libzint writes PNG files too
check photo-types "libLerc libjpeg libpng16 libtiff"
exit $failed
