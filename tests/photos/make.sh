#!/bin/sh
# Makes the test photos from scene.ps with Ghostscript (96 by 64 pixels at 96 dpi), in every
# form the photo readers take, and the scene's own pixels to compare renders with
# (scene.ppm; scene-gray.ppm and scene-cmyk.ppm for the gray and CMYK photos, painted so). The CMYK files lose the colour profile Ghostscript gives them (180 KB), the TIFFs
# are LZW-compressed (libtiff-tools and jpegtran, of libjpeg-turbo-progs, do that), and the
# palette forms are written by palette.py. The files are committed: run this only to make
# them anew.
set -eu
cd "$(dirname "$0")"
gs_to() {  # DEVICE FILE [options]
  device=$1 file=$2; shift 2
  gs -q -dSAFER -dBATCH -dNOPAUSE -g96x64 -r96 -sDEVICE="$device" "$@" \
    -sOutputFile="$file" scene.ps
}
gs_to ppmraw scene.ppm
gs_to ppmraw scene-gray.ppm -sMODE=gray
gs_to ppmraw scene-cmyk.ppm -sMODE=cmyk
gs_to jpeg photo.jpg -dJPEGQ=95
gs_to jpeggray photo-gray.jpg -dJPEGQ=95 -sMODE=gray
gs_to jpegcmyk cmyk-icc.jpg -dJPEGQ=95 -sMODE=cmyk
jpegtran -copy none cmyk-icc.jpg > photo-cmyk.jpg
gs_to png16m photo.png
gs_to png48 photo-16bit.png
gs_to pnggray photo-gray.png -sMODE=gray
gs_to pngalpha photo-alpha.png
for form in tiff24nc:rgb: tiffgray:gray:-gray tiff32nc:cmyk:-cmyk tiff48nc:rgb:-16bit; do
  mode=${form#*:}
  gs_to "${form%%:*}" plain.tif -sMODE="${mode%%:*}"
  tiffset -u 34675 plain.tif 2> /dev/null || true  # the ICC profile, where there is one
  tiffcp -c lzw plain.tif "photo${mode#*:}.tif"
done
python3 palette.py
rm -f plain.tif cmyk-icc.jpg
