#!/bin/sh
# Renders a PostScript or EPS document with Ghostscript, the way a print shop's RIP would
# read it, so tests can check that a document prints and compare rasters.
#
#   sh tests/render.sh [-r DPI] DOCUMENT OUTPUT
#
# OUTPUT ending in .png gets a PNG (for people to look at); any other name gets raw PPM
# bytes (P6, 8-bit RGB), for exact comparison with cmp. Several pages follow one another in
# the one file. The options are fixed, so the same document and DPI (72 unless -r) give the
# same bytes: -dSAFER -dBATCH -dNOPAUSE, 4-bit anti-aliasing of text and graphics, only
# Ghostscript's own fonts (-dNOPLATFONTS, so a missing font is substituted the same way on
# every machine), and the document's %%BoundingBox as the page, EPS or not, so the raster
# shows the art wherever it lies; a document without one prints on A4.
#
# Status: 0 rendered; 1 Ghostscript failed or printed an error (a document that stops
# with /undefined is a failure even where Ghostscript ends with status 0); 2 usage;
# 77 no Ghostscript (gs) on this machine, which CTest takes as a skip (SKIP_RETURN_CODE).
# Ghostscript's messages, warnings included, go to standard error. OUTPUT is removed
# after a failure. OUTPUT must not hold a %, which Ghostscript reads as a page number.
set -u
dpi=72
if [ "${1:-}" = -r ] && [ $# -ge 2 ]; then
  dpi=$2
  shift 2
fi
if [ $# -ne 2 ]; then
  echo "usage: render.sh [-r DPI] DOCUMENT OUTPUT" >&2
  exit 2
fi
document=$1
output=$2
if ! command -v gs > /dev/null 2>&1; then
  echo "render.sh: Ghostscript (gs) is not installed: skipped" >&2
  exit 77
fi
if [ ! -r "$document" ]; then
  echo "render.sh: cannot read $document" >&2
  exit 2
fi
case $output in
  *.png) device=png16m ;;
  *) device=ppmraw ;;
esac

# The page is the document's bounding box: Ghostscript crops an EPS to it (-dEPSCrop); any
# other document with a %%BoundingBox in its header gets that page size, and its origin
# moved there by the page device's Install procedure, which initgraphics keeps.
install=
case $(head -c 256 "$document" | tr '\r' '\n' | head -n 1) in
  %!*EPSF*) ;;
  %!*)
    box=$(head -c 65536 "$document" | tr '\r' '\n' | sed -n -e '/^%%EndComments/q' \
      -e 's/^%%BoundingBox: *\(-*[0-9][0-9]* -*[0-9][0-9]* -*[0-9][0-9]* -*[0-9][0-9]*\) *$/\1/p')
    set -- $box
    if [ $# -ge 4 ] && [ "$3" -gt "$1" ] && [ "$4" -gt "$2" ]; then
      install="<< /PageSize [$(($3 - $1)) $(($4 - $2))] /Install [currentpagedevice /Install
        get /exec load $((0 - $1)) $((0 - $2)) /translate load] cvx >> setpagedevice"
    fi ;;
esac
set -- -q -dSAFER -dBATCH -dNOPAUSE -dNOPLATFONTS -dEPSCrop -sPAPERSIZE=a4 \
  -dTextAlphaBits=4 -dGraphicsAlphaBits=4 -r"$dpi" -sDEVICE="$device" -sOutputFile="$output"
[ -z "$install" ] || set -- "$@" -c "$install"

messages=$(mktemp) || exit 2
trap 'rm -f "$messages"' EXIT
gs "$@" -f "$document" > "$messages" 2>&1 < /dev/null
status=$?
cat "$messages" >&2
if [ "$status" -ne 0 ] || grep -q 'Error:' "$messages"; then
  echo "render.sh: $document does not render (gs status $status)" >&2
  rm -f "$output"
  exit 1
fi
