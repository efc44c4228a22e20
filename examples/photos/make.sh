#!/bin/sh
# Makes the example's product photos from products.ps with Ghostscript: 150 pixels a side,
# the drawing's 100 points at 108 dpi, as a print shop would get them in JPEG, PNG and
# LZW-compressed TIFF. The files in
# examples/home/Photos/ are committed; run this only to make them anew.
set -eu
cd "$(dirname "$0")"
out=../home/Photos
mkdir -p "$out"
photo() {  # PRODUCT DEVICE FILE [options]
  product=$1 device=$2 file=$3; shift 3
  gs -q -dSAFER -dBATCH -dNOPAUSE -g150x150 -r108 -dGraphicsAlphaBits=4 -sDEVICE="$device" \
    -sPRODUCT="$product" "$@" -sOutputFile="$out/$file" products.ps
}
photo mango jpeg mango.jpg
photo kopi png16m kopi-gayo.png
photo salak jpeg salak.jpg
photo luwak png16m kopi-luwak.png
photo jeruk tiff24nc jeruk.tif -sCompression=lzw
