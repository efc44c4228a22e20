# 1,024 layers, each followed by a line that belongs to no layer and is not printed.
layers() {  # the text after each layer
  awk -v ORS='\r' -v after="$1" 'BEGIN {
    for (i = 1; i <= 1024; i++) {
      print "%AI5_BeginLayer"; print "(Layer " i ") Ln"; print "%AI5_EndLayer--"
      if (after != "") print after
    }
  }'
}
{
  printf '%s\r' '%!PS-Adobe-3.0' '%%EndProlog' '%%BeginSetup' '%%EndSetup'
  layers gap
  printf '%s\r' '%%PageTrailer' '%%Trailer' '%%EOF'
} > doc.ai
{
  printf '%s\r' '%!PS-Adobe-3.0' '%%EndProlog' '%%BeginSetup' '%%EndSetup'
  layers ''
  printf '%s\r' '%%PageTrailer' '%%Trailer' '%%EOF'
} > expected.out
