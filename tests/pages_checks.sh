#!/bin/sh
# The PDFs and PNG proofs that ormel has Ghostscript render, read by the clients that print
# shops and viewers use: pdfinfo, pdftotext and pdffonts (poppler-utils) and qpdf.
# Usage: pages_checks.sh CHECK path/to/ormel, where CHECK is one of
#   book       every catalogue label a page of one PDF, in order, with its texts; qpdf --check
#              passes, every font is embedded, CMYK stays CMYK, the page is the label's box;
#              -report tells each document as other batches do
#   one        without -each, the sheet of two labels is one page of its own size
#   each       a pattern with a cell writes one PDF per label, and nothing else; twenty of them
#   proofs     PNG proofs are Ghostscript's own rendering of each label's document, byte for
#              byte (so pixel for pixel), at -dpi= and at the default 150 dpi
#   corpus     the same for twelve Illustrator EPS files of ../shared/corpus (skipped without it)
#   shards     -shard=I/M with {shard} in the name: each shard's PDF holds its own labels
#   isolation  what one document defines or leaves on the stacks never reaches the next
#   failure    a document that does not render ends the run with its number and
#              Ghostscript's message; an older PDF stays as it was, the proofs before it are
#              complete, and no temporary file is left
#   signal     a run ended by a signal ends its Ghostscript and leaves no temporary file
#   nogs       without Ghostscript: the Debian package to install, and no file
# Status 77 (a skip) when Ghostscript or a client is not installed.
set -u
check=$1
ormel=$2
case $ormel in /*) ;; *) ormel=$PWD/$ormel ;; esac
root=$(cd "$(dirname "$0")/.." && pwd)
examples=$root/examples
work=$(mktemp -d) || exit 99
trap 'rm -rf "$work"' EXIT
cd "$work" || exit 99
if [ "$check" != nogs ]; then
  for tool in gs pdfinfo pdftotext pdffonts qpdf; do
    command -v $tool > /dev/null 2>&1 || { echo "$tool is not installed: skipped"; exit 77; }
  done
fi

fail() { echo "FAIL: $*"; exit 1; }
pages() { pdfinfo "$1" | sed -n 's/^Pages: *//p'; }
# has_text PDF PAGE TEXT: the text of that page holds TEXT.
has_text() { pdftotext -f "$2" -l "$2" "$1" - | grep -qF "$3" || fail "$1: page $2 lacks \"$3\""; }
# The catalogue's products (after its header row), one a line: name, then origin.
products() { tail -n +2 "$examples/catalogue.txt" | cut -f "$1"; }
# label ARGS...: ormel on the one-label template with every product of the catalogue.
label() {
  "$ormel" -keep -rx=new -refpt=upperleft -home="$examples/home/" -barcode=EAN:ean13 -each=1 \
    -skip=1 "$@" "$examples/shelf-label.ai" "PR=$examples/catalogue.txt" \
    "EPS-LOGO=$examples/catalogue-logos.txt" "EPS-EAN=$examples/catalogue.txt" \
    "EPS-PHOTO=$examples/catalogue.txt"
}
# only FILE...: the folder holds exactly these files, hidden ones included.
only() { [ "$(ls -A | tr '\n' ' ')" = "$* " ] || fail "files: $(ls -A | tr '\n' ' '), expected: $*"; }

case $check in
  book)
    label -report -out=labels.pdf 2> report.txt || fail "ormel: $(cat report.txt)"
    [ "$(pages labels.pdf)" = 5 ] || fail "labels.pdf has $(pages labels.pdf) pages, not 5"
    k=1
    products 1 | while IFS= read -r name; do has_text labels.pdf $k "$name"; k=$((k + 1)); done || exit 1
    k=1
    products 2 | while IFS= read -r origin; do has_text labels.pdf $k "Origin: $origin"; k=$((k + 1)); done || exit 1
    has_text labels.pdf 4 "325,000"
    qpdf --check labels.pdf > qpdf.txt 2>&1 || fail "qpdf --check: $(cat qpdf.txt)"
    pdffonts labels.pdf > fonts.txt || fail "pdffonts"
    for font in Helvetica Helvetica-Bold; do grep -q "+$font " fonts.txt || fail "$font not listed: $(cat fonts.txt)"; done
    # Columns: name, type (one or two words), encoding, then emb; every font embedded.
    tail -n +3 fonts.txt | awk '{ if ($(NF - 4) != "yes") { print; bad = 1 } } END { exit bad }' ||
      fail "a font is not embedded: $(cat fonts.txt)"
    qpdf --qdf --object-streams=disable labels.pdf plain.pdf
    grep -aq '^0 0 0 1 k$' plain.pdf || fail "the price's CMYK black is not a CMYK colour in the PDF"
    pdfinfo -box labels.pdf | grep -q '^MediaBox: *0.00 *0.00 *220.00 *210.00' ||
      fail "the page is not the label's box 220 x 210: $(pdfinfo -box labels.pdf | grep MediaBox)"
    [ "$(grep -c '^document [1-5]: layer 2: text PR-1-1_ (row 1, column 1): replaced$' report.txt)" = 5 ] ||
      fail "-report: $(cat report.txt)" ;;
  one)
    "$ormel" -keep -rx=new -home="$examples/home/" -barcode=EAN:ean13 -out=sheet.pdf \
      "$examples/shelf-labels.ai" "PR=$examples/products.txt" "EPS-LOGO=$examples/logos.txt" \
      "EPS-EAN=$examples/products.txt" "EPS-PHOTO=$examples/products.txt" || fail "ormel"
    [ "$(pages sheet.pdf)" = 1 ] || fail "sheet.pdf has $(pages sheet.pdf) pages"
    pdfinfo -box sheet.pdf | grep -q '^MediaBox: *0.00 *0.00 *220.00 *430.00' || fail "page size"
    for row in 1 2; do has_text sheet.pdf 1 "$(sed -n ${row}p "$examples/products.txt" | cut -f 1)"; done
    qpdf --check sheet.pdf > /dev/null || fail "qpdf --check" ;;
  each)
    label -out='{PR-1-1}.pdf' || fail "ormel"
    products 1 | while IFS= read -r name; do
      [ "$(pages "$name.pdf")" = 1 ] || fail "$name.pdf is not one page"
      has_text "$name.pdf" 1 "$name"
      qpdf --check "$name.pdf" > /dev/null || fail "qpdf --check $name.pdf"
    done || exit 1
    only 'Jeruk Medan.pdf' 'Kopi Arabika Gayo.pdf' 'Kopi Luwak.pdf' 'Mangga Harum Manis.pdf' 'Salak Pondoh.pdf'
    # Past the 16 files after which Ghostscript 10.0 failed while compressing fonts.
    mkdir many && cd many || exit 1
    (cat "$examples/catalogue.txt"; for i in 1 2 3; do tail -n +2 "$examples/catalogue.txt"; done) > products.txt
    # The label's logo has no table here: the batch ends with status 3, its pages written.
    "$ormel" -rx=new -each=1 -skip=1 -out='label-#.pdf' "$examples/shelf-label.ai" PR=products.txt \
      2> /dev/null || [ $? = 3 ] || fail "20 labels"
    [ "$(pages label-20.pdf)" = 1 ] && has_text label-20.pdf 1 "Jeruk Medan" ;;
  proofs)
    mkdir ai png default
    label -out='ai/label-#.ai' && label -dpi=100 -out='png/label-#.png' &&
      label -out='default/label-#.png' || fail "ormel"
    for k in 1 2 3 4 5; do
      sh "$root/tests/render.sh" -r 100 "ai/label-$k.ai" "ai/label-$k.png" || fail "render.sh"
      cmp "ai/label-$k.png" "png/label-$k.png" || fail "proof $k is not Ghostscript's rendering"
    done
    sh "$root/tests/render.sh" -r 150 ai/label-1.ai ai/label-150.png || fail "render.sh"
    cmp ai/label-150.png default/label-1.png || fail "the default proof is not at 150 dpi"
    # 220 x 210 points at 150 dpi: 458 x 438 pixels (width and height in the IHDR chunk).
    [ "$(od -An -tu1 -j16 -N8 default/label-1.png | tr -s ' ')" = " 0 0 1 202 0 0 1 182" ] ||
      fail "proof size: $(od -An -tu1 -j16 -N8 default/label-1.png)" ;;
  corpus)
    # Illustrator's own EPS files of the shared corpus, copied whole (-keep): each proof is
    # what Ghostscript draws of the same document cropped to its box.
    corpus=$root/../shared/corpus
    [ -d "$corpus" ] || { echo "no shared corpus: skipped"; exit 77; }
    : > empty.txt
    for name in aiaa-aiaalgo_ai7 exiv2-nested-place-xmp_ai8 exiv2-nested-place_ai3 \
      exiv2-nested-place_ai8 fop-img-tiff-preview_ai32_doseps ldp-linux-faq-small_ai4win \
      php-logo_ai6_doseps pillow-illu10_no_preview_aiCS6 pillow-illuCS6_preview_doseps \
      tk-logo_ai55 ulthese-ul_p_ai50_cr xmp-BlueSquare_aiCS2_cr; do
      "$ormel" -keep "$corpus/$name.eps" empty.txt > "$name.eps" &&
        "$ormel" -keep -dpi=72 -out="$name.png" "$corpus/$name.eps" empty.txt || fail "ormel $name"
      sh "$root/tests/render.sh" "$name.eps" "$name-gs.png" 2> /dev/null || fail "render.sh $name"
      cmp "$name.png" "$name-gs.png" || fail "the proof of $name is not Ghostscript's rendering"
    done ;;
  shards)
    label -shard=1/2 -out='book-{shard}.pdf' && label -shard=2/2 -out='book-{shard}.pdf' || fail "ormel"
    [ "$(pages book-1.pdf) $(pages book-2.pdf)" = "3 2" ] || fail "pages $(pages book-1.pdf) $(pages book-2.pdf)"
    has_text book-1.pdf 2 "Salak Pondoh"
    has_text book-2.pdf 2 "Kopi Luwak"
    only book-1.pdf book-2.pdf ;;
  isolation)
    # The setup section fails the document if an earlier one's definition is still there,
    # and leaves operands and a dictionary behind for the wrapper to clear.
    printf '%s\r' '%!PS-Adobe-3.0 EPSF-3.0' '%%BoundingBox: 0 0 200 40' '%%EndComments' \
      '%%BeginProlog' '/To { pop gsave } def /TO { grestore } def /TP { } def' \
      '/Tp { pop 6 array astore concat 0 0 moveto } def' \
      '/Tf { pop pop exch pop /Helvetica findfont exch scalefont setfont } def' \
      '/Tx { show } def' '%%EndProlog' '%%BeginSetup' \
      'userdict /seen known { leaked } if userdict /seen true put' '1 2 3 5 dict begin' \
      '%%EndSetup' '%AI5_BeginLayer' '0 To' '1 0 0 1 10 15 0 Tp' 'TP' \
      '/_Helvetica 12 14.4 0 Tf' '(TX-1-1) Tx' 'TO' '%AI5_EndLayer--' '%%PageTrailer' \
      'showpage' '%%Trailer' '%%EOF' > doc.ai
    printf 'first\nsecond\nthird\n' > tab.txt
    "$ormel" -keep -each=1 -out=all.pdf doc.ai TX=tab.txt 2> err.txt || fail "ormel: $(cat err.txt)"
    [ "$(pages all.pdf)" = 3 ] || fail "all.pdf has $(pages all.pdf) pages"
    has_text all.pdf 3 third
    # Fed one after the other without the wrapper, the second document fails.
    "$ormel" -keep -each=1 -out=doc-#.ai doc.ai TX=tab.txt || fail "ormel"
    cat doc-1.ai doc-2.ai | gs -q -dSAFER -dBATCH -dNOPAUSE -sDEVICE=nullpage -_ 2>&1 |
      grep -q '/undefined in leaked' || fail "the check does not see a leak" ;;
  failure)
    # The third product's name closes its string early: Ghostscript meets undefinedname.
    sed '4s/^[^\t]*/Salak) undefinedname (/' "$examples/catalogue.txt" > bad.txt
    echo 'an older PDF' > book.pdf
    set -- -rx=new -each=1 -skip=1 "$examples/shelf-label.ai" PR=bad.txt
    "$ormel" -out=book.pdf "$@" 2> err.txt
    [ $? = 2 ] || fail "status of the book"
    [ "$(cat err.txt)" = "document 3 (book.pdf): Ghostscript cannot render it: /undefined in undefinedname" ] ||
      fail "message: $(cat err.txt)"
    [ "$(cat book.pdf)" = 'an older PDF' ] || fail "the older PDF was touched"
    "$ormel" -out='proof-#.png' "$@" 2> err.txt
    [ $? = 2 ] || fail "status of the proofs"
    grep -q '^document 3 (proof-3.png): Ghostscript cannot render it: /undefined in undefinedname$' err.txt ||
      fail "message: $(cat err.txt)"
    only bad.txt book.pdf err.txt proof-1.png proof-2.png
    # A document without a box has no page size.
    printf '%s\r' '%!PS-Adobe-3.0' '%%EndComments' '%%EndProlog' '%%BeginSetup' '%%EndSetup' \
      '%%PageTrailer' '%%Trailer' '%%EOF' > nobox.ai
    "$ormel" -out=nobox.pdf nobox.ai bad.txt 2> err.txt
    [ $? = 2 ] && [ "$(cat err.txt)" = "nobox.pdf: no %%BoundingBox gives the size of its page" ] ||
      fail "no box: $(cat err.txt)"
    [ ! -e nobox.pdf ] || fail "nobox.pdf written" ;;
  signal)
    # kill while Ghostscript renders 1,000 labels: it ends too, and no temporary file is left
    # (it had opened the next page's file, which it would have written after the removal).
    (head -n 1 "$examples/catalogue.txt"; i=0
     while [ $i -lt 200 ]; do tail -n +2 "$examples/catalogue.txt"; i=$((i + 1)); done) > products.txt
    "$ormel" -rx=new -each=1 -skip=1 -out='label-#.pdf' "$examples/shelf-label.ai" PR=products.txt &
    pid=$!
    sleep 0.5
    gs_pid=$(pgrep -P $pid)
    kill -TERM $pid
    wait $pid
    [ $? = 143 ] || fail "ormel was not ended by the signal"
    [ -z "$gs_pid" ] || ! kill -0 "$gs_pid" 2> /dev/null || fail "Ghostscript goes on"
    sleep 0.2
    [ -z "$(ls -A | grep '^\.ormel')" ] || fail "temporary files left: $(ls -A | grep '^\.ormel')" ;;
  nogs)
    printf 'Salak\n' > tab.txt
    PATH=$work "$ormel" -out=label.pdf "$examples/shelf-label.ai" tab.txt 2> err.txt
    [ $? = 2 ] || fail "status"
    [ "$(cat err.txt)" = "Ghostscript (gs) is not installed: install the Debian package ghostscript" ] ||
      fail "message: $(cat err.txt)"
    only err.txt tab.txt ;;
  *)
    echo "unknown check: $check"; exit 99 ;;
esac
