# 102,401 text objects in one layer: one more than a layer may hold.
{
  printf '%s\r' '%!PS-Adobe-3.0' '%%EndProlog' '%%BeginSetup' '%%EndSetup' '%AI5_BeginLayer'
  awk -v ORS='\r' 'BEGIN { for (i = 0; i < 102401; i++) { print "0 To"; print "TO" } }'
  printf '%s\r' '%AI5_EndLayer--' '%%PageTrailer' '%%Trailer' '%%EOF'
} > doc.ai
