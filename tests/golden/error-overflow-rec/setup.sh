# 1,025 records, the last one without a line feed.
awk 'BEGIN { for (i = 1; i <= 1024; i++) print "row " i "\tcell"; printf "last" }' > tab.txt
