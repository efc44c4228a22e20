#!/bin/sh
# -keep read back by Ghostscript, on a template that renders (tests/keep-render/label.ai: two
# point texts above a placed logo that the template embeds, green, with a procset of its
# own). A merge that changes nothing renders as the template; cells change the picture only
# where the texts stand; a swapped logo embeds the new EPS file, which shows red in the
# logo's frame. Usage: keep_render.sh ORMEL PPM_TOOL. Skips (status 77) without Ghostscript.
set -u
ormel=$1 ppm_tool=$2
here=$(cd "$(dirname "$0")" && pwd)
case_dir=$here/keep-render
render() { sh "$here/render.sh" -r 36 "$1" "$2" 2> /dev/null; }
command -v gs > /dev/null 2>&1 || { echo "no Ghostscript: skipped"; exit 77; }
work=$(mktemp -d) || exit 99
trap 'rm -rf "$work"' EXIT
: > "$work/empty.txt"
failed=0
fail() { echo "$1"; failed=1; }

merge() {  # OUT, then ormel's arguments after -keep
  out=$1; shift
  "$ormel" -keep -home="$case_dir/home/" "$case_dir/label.ai" "$@" > "$work/$out.ps" ||
    fail "ormel failed: $*"
  render "$work/$out.ps" "$work/$out.ppm" || fail "Ghostscript cannot render $out"
}

render "$case_dir/label.ai" "$work/template.ppm" || fail "Ghostscript cannot render the template"
merge none "$work/empty.txt"
merge texts "PR=$case_dir/cells.txt"
merge logo "EPS-LOGO=$case_dir/logos.txt"

[ "$("$ppm_tool" diff "$work/template.ppm" "$work/none.ppm")" = same ] ||
  fail "a merge that changes nothing renders differently"
# The page is 150 by 100 pixels; the texts stand above row 50, the logo's frame from row 60.
set -- $("$ppm_tool" diff "$work/template.ppm" "$work/texts.ppm")
[ $# = 4 ] && [ "$4" -lt 50 ] || fail "cells change the picture outside the texts: $*"
set -- $("$ppm_tool" diff "$work/template.ppm" "$work/logo.ppm")
[ $# = 4 ] && [ "$2" -ge 60 ] || fail "the new logo changes the picture outside its frame: $*"
[ "$("$ppm_tool" count 255 0 0 "$work/template.ppm")" = 0 ] || fail "red in the template"
[ "$("$ppm_tool" count 255 0 0 "$work/logo.ppm")" -ge 1000 ] || fail "the new logo does not show"
exit $failed
