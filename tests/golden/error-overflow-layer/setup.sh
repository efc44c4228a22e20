# 1,025 layers: one more than a document may hold.
{
  printf '%s\r' '%!PS-Adobe-3.0' '%%EndProlog' '%%BeginSetup' '%%EndSetup'
  awk -v ORS='\r' 'BEGIN { for (i = 0; i < 1025; i++) { print "%AI5_BeginLayer"; print "%AI5_EndLayer--" } }'
  printf '%s\r' '%%PageTrailer' '%%Trailer' '%%EOF'
} > doc.ai
