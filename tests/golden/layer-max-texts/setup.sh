# 102,400 text objects in one layer, the most a layer may hold; none holds a placeholder,
# so each is written as read and the document comes out unchanged.
{
  printf '%s\r' '%!PS-Adobe-3.0' '%%EndProlog' '%%BeginSetup' '%%EndSetup' '%AI5_BeginLayer'
  awk -v ORS='\r' 'BEGIN { for (i = 0; i < 102400; i++) { print "0 To"; print "(t) Tx"; print "TO" } }'
  printf '%s\r' '%AI5_EndLayer--' '%%PageTrailer' '%%Trailer' '%%EOF'
} > doc.ai
cp doc.ai expected.out
