# 1,024 placed-art blocks in one layer, the most a layer may hold; each is written anew.
blocks() {  # the lines of each block, as printf arguments
  i=0
  while [ $i -lt 1024 ]; do printf '%s\r' "$@"; i=$((i + 1)); done
}
{
  printf '%s\r' '%!PS-Adobe-3.0' '%%EndProlog' '%%BeginSetup' '%%EndSetup' '%AI5_BeginLayer'
  blocks '%AI5_BeginPlace' '[1 0 0 1 5 6] 0 0 7 8 (a.eps) `' '%AI5_EndPlace'
  printf '%s\r' '%AI5_EndLayer--' '%%PageTrailer' '%%Trailer' '%%EOF'
} > doc.ai
{
  printf '%s\r' '%!PS-Adobe-3.0' '%%EndProlog' '%%BeginSetup' '%%EndSetup' '%AI5_BeginLayer'
  blocks '%AI5_BeginPlace' '%%FileType:0' \
    '[1.000000 0.000000 0.000000 1.000000 5.000000 6.000000] 0.000000 0.000000 7.000000 8.000000' \
    '(a.eps)`' '~' '%AI5_EndPlace'
  printf '%s\r' '%AI5_EndLayer--' '%%PageTrailer' '%%Trailer' '%%EOF'
} > expected.out
