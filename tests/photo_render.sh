#!/bin/sh
# Photos read back by Ghostscript: each test photo (tests/photos/, made from scene.ps) is
# merged with -keep into a linked frame, the document rendered, and its pixels compared with
# the scene's own (scene.ppm, 96 by 64; the gray and CMYK photos with the scene painted in
# grey or in process colours): the mean difference of the channels must stay under 3 %. The frame is the photo's size at its 96 dpi (72 by 48 points, rendered at 96
# dpi) or twice that (rendered at 48 dpi), so both pictures have the frame's pixels.
# Usage: photo_render.sh ORMEL PPM_TOOL. Skips (status 77) without Ghostscript.
set -u
ormel=$1 ppm_tool=$2
here=$(cd "$(dirname "$0")" && pwd)
command -v gs > /dev/null 2>&1 || { echo "no Ghostscript: skipped"; exit 77; }
work=$(mktemp -d) || exit 99
trap 'rm -rf "$work"' EXIT
failed=0

label() {  # WIDTH HEIGHT: a page that one linked frame fills
  printf '%s\r' '%!PS-Adobe-3.0' "%%BoundingBox: 0 0 $1 $2" '%%EndComments' '%%BeginProlog' \
    '/` { pop pop pop pop pop save exch concat /showpage { } def } def' '/~ { restore } def' \
    '%%EndProlog' '%%BeginSetup' '%%EndSetup' '%AI5_BeginLayer' '%AI5_BeginPlace' \
    '%%FileType: 0' "[1 0 0 1 0 0] 0 0 $1 $2" '(Art:PHOTO-1-1.eps)`' '~' '%AI5_EndPlace' \
    '%AI5_EndLayer--' '%%PageTrailer' 'showpage' '%%Trailer' '%%EOF'
}
label 72 48 > "$work/same.ai"
label 144 96 > "$work/twice.ai"

for photo in "$here"/photos/photo*.*; do
  name=$(basename "$photo")
  printf '%s\n' "$name" > "$work/cells.txt"
  for size in same:96 twice:48; do
    out=$work/${size%:*}-$name
    if ! "$ormel" -keep -home="$here/photos/" "$work/${size%:*}.ai" EPS-PHOTO="$work/cells.txt" \
      > "$out.ai"; then
      echo "$name: ormel failed"; failed=1; continue
    fi
    if ! sh "$here/render.sh" -r "${size#*:}" "$out.ai" "$out.ppm" 2> /dev/null; then
      echo "$name in the frame ${size%:*}: Ghostscript cannot render it"; failed=1; continue
    fi
    case $name in
      *gray*) scene=scene-gray.ppm ;;
      *cmyk*) scene=scene-cmyk.ppm ;;
      *) scene=scene.ppm ;;
    esac
    error=$("$ppm_tool" error "$here/photos/$scene" "$out.ppm")
    echo "$name, frame ${size%:*}: $error %"
    case $error in
      [0-2].*) ;;
      *) echo "$name: differs from the scene by $error %"; failed=1 ;;
    esac
  done
done
exit $failed
