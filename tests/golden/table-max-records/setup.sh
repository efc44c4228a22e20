# 1,024 records, the last one ended by a line feed that starts no further record.
awk 'BEGIN { for (i = 1; i <= 1024; i++) print "row " i "\tcell" }' > tab.txt
