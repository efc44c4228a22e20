#!/bin/sh
# -keep on the corpus of real files (../shared/corpus, see its SOURCES.md): each file is
# processed or refused as listed below. A processed file, merged with an empty table, gives
# the template's own bytes from %!PS-Adobe through its last %%EOF line, and every one that
# Ghostscript renders renders as the template does, pixel for pixel.
# Usage: keep_corpus.sh ORMEL PPM_TOOL CORPUS_DIR. Skips (status 77) without the corpus;
# without Ghostscript only the bytes are compared.
set -u
ormel=$1 ppm_tool=$2 corpus=$3
here=$(cd "$(dirname "$0")" && pwd)
render() { sh "$here/render.sh" -r 36 "$1" "$2" 2> /dev/null; }
[ -d "$corpus" ] || { echo "no corpus at $corpus: skipped"; exit 77; }
work=$(mktemp -d) || exit 99
trap 'rm -rf "$work"' EXIT
: > "$work/empty.txt"
command -v gs > /dev/null 2>&1 || echo "no Ghostscript: renderings not compared"

failed=0 processed=0 refused=0 rendered=0 rendered_names=""
while IFS='|' read -r file outcome; do
  template=$corpus/$file
  if "$ormel" -keep "$template" "$work/empty.txt" > "$work/out" 2> "$work/err"; then
    status=ok
  else
    status=$(cat "$work/err")
  fi
  if [ "$status" != "$outcome" ]; then
    echo "$file: expected \"$outcome\", got \"$status\""; failed=1; continue
  fi
  [ "$status" = ok ] || { refused=$((refused + 1)); continue; }
  processed=$((processed + 1))
  # The output is the template's bytes from %!PS-Adobe on, and no %%EOF follows its end.
  start=$(LC_ALL=C grep -abo '%!PS-Adobe' "$template" | head -1 | cut -d: -f1)
  length=$(wc -c < "$work/out")
  if ! cmp -s -n "$length" -i "$start:0" "$template" "$work/out" ||
     tail -c +$((start + length + 1)) "$template" | LC_ALL=C grep -aq '%%EOF' ||
     ! tail -c 200 "$work/out" | LC_ALL=C grep -aq '%%EOF'; then
    echo "$file: the output is not the template's bytes through its last %%EOF line"
    failed=1; continue
  fi
  command -v gs > /dev/null 2>&1 || continue
  render "$template" "$work/t.ppm" || continue
  rendered=$((rendered + 1))
  rendered_names="$rendered_names $file"
  if ! render "$work/out" "$work/o.ppm"; then
    echo "$file: Ghostscript renders the template but not the output"; failed=1; continue
  fi
  difference=$("$ppm_tool" diff "$work/t.ppm" "$work/o.ppm")
  [ "$difference" = same ] || { echo "$file: renders differently ($difference)"; failed=1; }
done <<'LIST'
aiaa-aiaalgo_ai7.eps|ok
aspose-ai_one_text_3_ai32.ai|ok
aspose-form_8_2l3_7_ai8.ai|ok
aspose-sample_ai8_raster.ai|ok
barcode4j-barcode.eps|cannot find %%BeginSetup
cmpj-cc-by-small_ai8_cr.eps|ok
dvipsk-pfbincl_ai8_truncated.eps|cannot find %%EOF
exiftool-PostScript_ps7.eps|cannot find %%EOF
exiv2-flat_inkscape.eps|cannot find %%EndProlog
exiv2-nested-place-xmp_ai8.eps|ok
exiv2-nested-place_ai3.eps|ok
exiv2-nested-place_ai8.eps|ok
filetype-fixture_ai24.eps|ok
fop-img-tiff-preview_ai32_doseps.eps|ok
ldp-linux-faq-small_ai4win.eps|ok
php-logo_ai6_doseps.eps|ok
php-logo_ai8.ai|ok
pillow-illu10_no_preview_aiCS6.eps|ok
pillow-illuCS6_preview_doseps.eps|ok
tk-logo_ai55.eps|ok
ulthese-ul_p_ai50_cr.eps|ok
xmp-BlueSquare_aiCS2_cr.eps|ok
LIST
echo "processed $processed, refused $refused, rendered and compared $rendered:$rendered_names"
exit $failed
