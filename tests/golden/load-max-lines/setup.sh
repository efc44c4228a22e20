# Exactly 1,048,576 lines: 7 structure lines and 1,048,569 filler lines between the prolog
# and the setup section, where they are not printed.
{
  printf '%s\r' '%!PS-Adobe-3.0' '%%EndProlog'
  awk -v ORS='\r' 'BEGIN { for (i = 0; i < 1048569; i++) print "x" }'
  printf '%s\r' '%%BeginSetup' '%%EndSetup' '%%PageTrailer' '%%Trailer' '%%EOF'
} > doc.ai
