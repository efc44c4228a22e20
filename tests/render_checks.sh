#!/bin/sh
# Ghostscript reads what the example and ormel produce, through tests/render.sh.
# Usage: render_checks.sh CHECK path/to/ormel, where CHECK is one of
#   template    the example template renders, its texts showing
#   merged      ormel's document from the example renders, its texts showing and
#               different from the template's
#   repeatable  each example logo renders twice to the same bytes; a page is the size of
#               the document's bounding box, EPS or not
#   errors      documents that stop with an error fail to render, also where Ghostscript
#               itself ends with status 0
#   tables      the example filled from a spreadsheet's CSV prints as from a raw table
#               whose cells carry the same text in escapes; the CSV read raw does not print
# Status 77 (a skip) when Ghostscript is not installed.
set -u
check=$1
ormel=$2
root=$(cd "$(dirname "$0")/.." && pwd)
render="sh $root/tests/render.sh"
work=$(mktemp -d) || exit 99
trap 'rm -rf "$work"' EXIT
command -v gs > /dev/null 2>&1 || { echo "Ghostscript (gs) is not installed: skipped"; exit 77; }

fail() { echo "FAIL: $*"; exit 1; }

# rows PPM FIRST COUNT: the pixel bytes of COUNT rows from row FIRST (0 is the top row); the
# pixels are the last width*height*3 bytes of the file.
rows() {
  size=$(head -c 100 "$1" | grep -a -m 1 '^[0-9]* [0-9]*$')
  set -- "$@" $size
  tail -c $((($5 - $2) * $4 * 3)) "$1" | head -c $(($3 * $4 * 3))
}

# has_dark PPM FIRST COUNT: some byte of those rows is below 64, darker than the sheet's
# light gray frames: text drawn in black.
has_dark() {
  [ "$(rows "$@" | tr -d '\100-\377' | head -c 1 | wc -c)" -eq 1 ]
}

# At 72 dpi, rows 90 to 199 of the sheet hold the first label's texts, from its name to
# its unit, below its logo.
text_rows="90 110"

case $check in
  template)
    $render "$root/examples/shelf-labels.ai" "$work/template.ppm" || fail "template"
    has_dark "$work/template.ppm" $text_rows || fail "the template's texts do not show" ;;
  merged)
    sh "$root/examples/run-example.sh" "$ormel" "$work" > /dev/null || fail "run-example.sh"
    $render "$work/shelf-labels-merged.ai" "$work/merged.ppm" || fail "merged document"
    has_dark "$work/merged.ppm" $text_rows || fail "the merged document's texts do not show"
    $render "$root/examples/shelf-labels.ai" "$work/template.ppm" || fail "template"
    [ "$(rows "$work/template.ppm" $text_rows | cksum)" != "$(rows "$work/merged.ppm" $text_rows | cksum)" ] ||
      fail "the first label's texts render as in the template" ;;
  repeatable)
    # Not an EPS, its box away from the origin, and the page's graphics state reset: its
    # one black square must fill the page.
    printf '%%!PS-Adobe-3.0\r%%%%BoundingBox: 100 -200 120 -180\r%%%%EndComments\r%s\r' \
      'initgraphics 100 -200 20 20 rectfill showpage' > "$work/square.ps"
    $render "$work/square.ps" "$work/square.ppm" || fail "square.ps"
    [ "$(rows "$work/square.ppm" 0 20 | tr -d '\000' | wc -c)" -eq 0 ] ||
      fail "square.ps: the page is not its bounding box"
    for logo in "Kebun Segar:200 80" "Caf:e9 Java:91 91"; do
      eps="$root/examples/home/Brands/${logo%:*}/logo.eps"
      $render "$eps" "$work/first.ppm" && $render "$eps" "$work/second.ppm" || fail "$eps"
      cmp "$work/first.ppm" "$work/second.ppm" || fail "$eps renders differently twice"
      has_dark "$work/first.ppm" 0 80 || fail "$eps renders no dark pixel"
      head -c 100 "$work/first.ppm" | grep -a -q "^${logo##*:}\$" ||
        fail "$eps: the page is not its bounding box, ${logo##*:}"
    done ;;
  errors)
    # An undefined name ends the run; the same error caught and reported by the document
    # lets Ghostscript end with status 0.
    printf '%%!PS\nundefinedname showpage\n' > "$work/stops.ps"
    printf '%%!PS\n{ undefinedname } stopped { handleerror } if showpage\n' > "$work/caught.ps"
    for doc in stops caught; do
      $render "$work/$doc.ps" "$work/$doc.ppm" 2> "$work/$doc.err"
      status=$?
      [ "$status" -eq 1 ] || fail "$doc.ps: render.sh status $status, expected 1"
      grep -q '/undefined in undefinedname' "$work/$doc.err" || fail "$doc.ps: no error shown"
      [ ! -e "$work/$doc.ppm" ] || fail "$doc.ps: the raster of a failed render is kept"
    done ;;
  tables)
    # UTF-8 with a byte-order mark and CR LF rows, accents, parentheses, a quoted comma and
    # a backslash, and a logo folder named with an accent; the raw tables spell the same
    # text in the escapes of the document's strings, in ISO Latin-1 as the example's fonts.
    printf '%b\r\n' '\0357\0273\0277Caf\0303\0251 Cr\0303\0250me (1 kg),"Aceh, Gayo",24900,per kg' \
      '"T-Shirt (XL",Bandung,87500,\\ each' > "$work/products.csv"
    printf '%s\n' 'Caf\351 Cr\350me \(1 kg\)	Aceh, Gayo	24900	per kg' \
      'T-Shirt \(XL	Bandung	87500	\\ each' > "$work/products.txt"
    printf 'Brands:Caf\303\251 Java:logo.eps\r\nBrands:Kebun Segar:logo.eps\r\n' > "$work/logos.csv"
    printf 'Brands:Caf\\351 Java:logo.eps\nBrands:Kebun Segar:logo.eps\n' > "$work/logos.txt"
    set -- -rx=new -refpt=upperleft -home="$root/examples/home/" "$root/examples/shelf-labels.ai"
    "$ormel" "$@" "PR=$work/products.txt" "EPS-LOGO=$work/logos.txt" > "$work/raw.ai" &&
      "$ormel" -table=csv -encoding=ISO-8859-1 "$@" "PR=$work/products.csv" \
        "EPS-LOGO=$work/logos.csv" > "$work/csv.ai" || fail "ormel"
    cmp -s "$work/raw.ai" "$work/csv.ai" && fail "the CSV's document is the raw table's, byte for byte"
    $render "$work/raw.ai" "$work/raw.ppm" && $render "$work/csv.ai" "$work/csv.ppm" ||
      fail "a merged document does not render"
    cmp "$work/raw.ppm" "$work/csv.ppm" || fail "the CSV's document prints otherwise"
    has_dark "$work/csv.ppm" $text_rows || fail "the CSV's texts do not show"
    $render "$root/examples/shelf-labels.ai" "$work/template.ppm" || fail "template"
    [ "$(rows "$work/template.ppm" $text_rows | cksum)" != "$(rows "$work/csv.ppm" $text_rows | cksum)" ] ||
      fail "the first label's texts render as in the template"
    "$ormel" "$@" "PR=$work/products.csv" > "$work/broken.ai" || fail "ormel, raw"
    if $render "$work/broken.ai" "$work/broken.ppm" 2> /dev/null; then
      fail "the CSV read raw renders"
    fi ;;
  *)
    echo "unknown check: $check"; exit 99 ;;
esac
