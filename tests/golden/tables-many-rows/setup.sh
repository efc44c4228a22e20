# 1,500 rows: more than a raw table may hold.
i=1
while [ $i -le 1500 ]; do printf '%d,value %d\r\n' $i $i; i=$((i + 1)); done > rows.csv
