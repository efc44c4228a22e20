#!/bin/sh
# Barcodes read back by scanner software, as a shop's scanner would read the print: for each
# kind of -barcode=, a label with one linked placed-art frame is merged with -keep, rendered
# by Ghostscript at 300 dpi, and the PNG decoded by zbarimg (Debian zbar-tools; Data Matrix,
# which zbar does not read, by dmtxread from dmtx-utils). What they read must be the cell,
# with the check digit the symbology adds.
# Usage: barcode_scan.sh ORMEL. Skips (status 77) without Ghostscript or zbarimg.
set -u
ormel=$1
here=$(cd "$(dirname "$0")" && pwd)
for tool in gs zbarimg dmtxread; do
  command -v $tool > /dev/null 2>&1 || { echo "no $tool: skipped"; exit 77; }
done
work=$(mktemp -d) || exit 99
trap 'rm -rf "$work"' EXIT
failed=0

# A page of 400 by 300 points whose one placed-art frame (340 by 240) takes the barcode.
printf '%s\r' '%!PS-Adobe-3.0' '%%BoundingBox: 0 0 400 300' '%%EndComments' '%%BeginProlog' \
  '/` { pop pop pop pop pop save exch concat /showpage { } def } def' '/~ { restore } def' \
  '%%EndProlog' '%%BeginSetup' '%%EndSetup' '%AI5_BeginLayer' '%AI5_BeginPlace' \
  '%%FileType: 0' '[1 0 0 1 30 30] 0 0 340 240' '(Art:CODE-1-1.eps)`' '~' '%AI5_EndPlace' \
  '%AI5_EndLayer--' '%%PageTrailer' 'showpage' '%%Trailer' '%%EOF' > "$work/label.ai"

# KIND, the cell, what the scanner must read.
while IFS='|' read -r kind cell expected; do
  printf '%s\n' "$cell" > "$work/cells.txt"
  if ! "$ormel" -keep -barcode=CODE:"$kind" "$work/label.ai" EPS-CODE="$work/cells.txt" \
    > "$work/$kind.ai"; then
    echo "$kind: ormel failed"; failed=1; continue
  fi
  if ! sh "$here/render.sh" -r 300 "$work/$kind.ai" "$work/$kind.png" 2> /dev/null; then
    echo "$kind: Ghostscript cannot render it"; failed=1; continue
  fi
  if [ "$kind" = datamatrix ]; then
    read=$(dmtxread -n "$work/$kind.png" 2> /dev/null)
  else
    read=$(zbarimg -q --raw -Supca.enable -Supce.enable "$work/$kind.png" 2> /dev/null)
  fi
  [ "$read" = "$expected" ] || { echo "$kind: read '$read', expected '$expected'"; failed=1; }
done << 'CASES'
ean13|590123412345|5901234123457
ean13|4006381333931|4006381333931
ean8|9638507|96385074
ean8|96385074|96385074
upca|03600029145|036000291452
upce|0123456|01234565
code128|Hello-128 (ormel)|Hello-128 (ormel)
gs1-128|[01]09501101530003[10]AB12|010950110153000310AB12
itf14|1540014128876|15400141288763
itf14|15400141288763|15400141288763
qr|https://example.org/p/4006381333931|https://example.org/p/4006381333931
datamatrix|LOT 2024-117 ormel|LOT 2024-117 ormel
CASES
exit $failed
