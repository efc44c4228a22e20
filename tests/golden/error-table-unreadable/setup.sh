# A folder where the table should be: it opens, but cannot be read.
mkdir tab.txt
