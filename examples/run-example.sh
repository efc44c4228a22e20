#!/bin/sh
# Runs ormel on the bundled sheet of two shelf labels: the texts come from products.txt
# (with -rx=new, so a placeholder may name a font; the price is set in a Rimba numeral
# font), the brand logos from logos.txt, found below home/ and fitted into the old frames,
# an EAN-13 barcode drawn from each product's code (-barcode=EAN:ean13, column 5 of
# products.txt) and a product photo (column 6: JPEG, PNG or TIFF below home/Photos/, made by
# photos/make.sh). With -keep the template is copied whole and the new logos' PostScript is
# embedded in place of the stand-in art, the barcodes and photos in their linked frames, so
# the document prints without the linked files.
# Then the one-label template (shelf-label.ai) is merged with every product of
# catalogue.txt (a header row, then one product a row) into one file per product, named by
# the product, in OUTDIR/labels/, and into one PDF of all the labels, OUTDIR/labels.pdf.
# Writes the new document and the -report lines into OUTDIR (default: $TMPDIR or /tmp) and
# shows both, the document with its carriage returns shown as line ends. With Ghostscript
# installed it also draws PNG proofs of the template and of the new document there.
# Usage: sh examples/run-example.sh path/to/ormel [OUTDIR]
set -eu
ormel=$1
here=$(dirname "$0")
outdir=${2:-${TMPDIR:-/tmp}}
mkdir -p "$outdir"
out=$outdir/shelf-labels-merged.ai
report=$outdir/shelf-labels-merged.report

set -- -keep -rx=new -refpt=upperleft -report -home="$here/home/" -barcode=EAN:ean13 \
  "$here/shelf-labels.ai" "PR=$here/products.txt" "EPS-LOGO=$here/logos.txt" \
  "EPS-EAN=$here/products.txt" "EPS-PHOTO=$here/products.txt"
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
echo
echo "== Written to $outdir/:"
echo "   shelf-labels-merged.ai       the new document"
echo "   shelf-labels-merged.report   the -report lines"
if command -v gs > /dev/null 2>&1; then
  sh "$here/../tests/render.sh" -r 150 "$here/shelf-labels.ai" "$outdir/shelf-labels-template.png"
  sh "$here/../tests/render.sh" -r 150 "$out" "$outdir/shelf-labels-merged.png"
  echo "   shelf-labels-merged.png      proof of the new document (Ghostscript, 150 dpi)"
  echo "   shelf-labels-template.png    proof of the template, for comparison"
else
  echo "   (no PNG proofs: Ghostscript is not installed)"
fi

mkdir -p "$outdir/labels"
set -- -keep -rx=new -refpt=upperleft -home="$here/home/" -barcode=EAN:ean13 -each=1 -skip=1 \
  -out="$outdir/labels/{PR-1-1}.ai" "$here/shelf-label.ai" "PR=$here/catalogue.txt" \
  "EPS-LOGO=$here/catalogue-logos.txt" "EPS-EAN=$here/catalogue.txt" \
  "EPS-PHOTO=$here/catalogue.txt"
echo
printf '$ ormel %s\n' "$*"
"$ormel" "$@"
echo "== One file per product, in $outdir/labels/:"
ls "$outdir/labels"

# The same labels as the pages of one PDF, which Ghostscript renders (-out= ending in .pdf).
if command -v gs > /dev/null 2>&1; then
  set -- -keep -rx=new -refpt=upperleft -home="$here/home/" -barcode=EAN:ean13 -each=1 -skip=1 \
    -out="$outdir/labels.pdf" "$here/shelf-label.ai" "PR=$here/catalogue.txt" \
    "EPS-LOGO=$here/catalogue-logos.txt" "EPS-EAN=$here/catalogue.txt" \
    "EPS-PHOTO=$here/catalogue.txt"
  echo
  printf '$ ormel %s\n' "$*"
  "$ormel" "$@"
  echo "== Every label a page of $outdir/labels.pdf"
else
  echo "   (no labels.pdf: Ghostscript is not installed)"
fi
