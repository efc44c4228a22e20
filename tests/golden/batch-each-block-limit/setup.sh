# A raw table of 2,000 rows: more than one document may merge, fewer than -each=1024 each.
i=1
while [ $i -le 2000 ]; do printf 'row %d\n' $i; i=$((i + 1)); done > tab.txt
