# 1,048,577 lines: one more than a document may hold.
{
  printf '%s\r' '%!PS-Adobe-3.0' '%%EndProlog'
  awk -v ORS='\r' 'BEGIN { for (i = 0; i < 1048570; i++) print "x" }'
  printf '%s\r' '%%BeginSetup' '%%EndSetup' '%%PageTrailer' '%%Trailer' '%%EOF'
} > doc.ai
