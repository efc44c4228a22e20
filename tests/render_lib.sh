# Rendering with Ghostscript for the tests: sourced by the scripts that render.
# render FILE OUT.ppm: a picture of FILE's first page at 36 dpi; status 0 when Ghostscript
# read it without an error. A file with a %%BoundingBox gets a page of that box, as an EPS
# with -dEPSCrop would, also when its header does not say EPSF (art below the page's
# origin would not show otherwise).
render() {
  box=$(tr '\r' '\n' < "$1" | LC_ALL=C grep -a -m1 '^%%BoundingBox: *-*[0-9]' |
        sed 's/^%%BoundingBox: *//')
  set -- "$1" "$2" $box
  page=""
  if [ $# -ge 6 ] && [ "$5" -gt "$3" ] && [ "$6" -gt "$4" ]; then
    page="<< /PageSize [$(($5 - $3)) $(($6 - $4))] /BeginPage { pop $((-$3)) $((-$4)) translate } >> setpagedevice"
  fi
  gs -q -dSAFER -dNOPAUSE -dBATCH -sDEVICE=ppmraw -r36 -sOutputFile="$2" \
    -c "$page" -f "$1" > /dev/null 2>&1
}

# has_ghostscript: whether gs can be run.
has_ghostscript() {
  command -v gs > /dev/null 2>&1
}
