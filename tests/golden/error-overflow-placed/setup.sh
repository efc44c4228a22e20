# 1,025 placed-art blocks, each on one line, in one layer: one more than a layer may hold.
{
  printf '%s\r' '%!PS-Adobe-3.0' '%%EndProlog' '%%BeginSetup' '%%EndSetup' '%AI5_BeginLayer'
  awk -v ORS='\r' 'BEGIN { for (i = 0; i < 1025; i++) print "%AI5_BeginPlace %AI5_EndPlace" }'
  printf '%s\r' '%AI5_EndLayer--' '%%PageTrailer' '%%Trailer' '%%EOF'
} > doc.ai
