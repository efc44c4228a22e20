#!/bin/sh
# Runs ormel with its address space limited on small inputs (each under 200 KB) built to
# make it allocate as much as it can. Every case must end with its expected status (0, or 2
# with a message of ormel's own); death by a signal, a status of 1 or more than 2, or a
# message about memory fails the case. Usage: memory_bound.sh path/to/ormel
# ORMEL_MEMORY_LIMIT_KB sets the limit (300 MB unless set).
set -u
ormel=$1
limit_kb=${ORMEL_MEMORY_LIMIT_KB:-307200}
work=$(mktemp -d) || exit 99
trap 'rm -rf "$work"' EXIT
cd "$work" || exit 99

# A template whose one layer holds the lines that awk's program prints (ORS is "\r").
template() {
  printf '%s\r' '%!PS-Adobe-3.0' '%%EndProlog' '%%BeginSetup' '%%EndSetup' '%AI5_BeginLayer'
  awk -v ORS='\r' "BEGIN { $1 }"
  printf '%s\r' '%AI5_EndLayer--' '%%PageTrailer' '%%Trailer' '%%EOF'
}

failed=0
# check NAME STATUS ARGS...: runs ormel on ARGS and compares the outcome with STATUS.
check() {
  name=$1
  expected=$2
  shift 2
  (ulimit -v "$limit_kb" && exec "$ormel" "$@") > /dev/null 2> err
  status=$?
  message=$(head -c 160 err | tr '\n' ' ')
  if [ "$status" -ne "$expected" ] || grep -qiE 'memory|alloc' err; then
    echo "FAIL $name: status $status (expected $expected) $message"
    failed=1
  else
    echo "ok   $name: status $status $message"
  fi
}

printf 'cell\n' > cell.txt

# 1,024 empty layers, the most a document may hold (built whole: template() adds a layer).
{
  printf '%s\r' '%!PS-Adobe-3.0' '%%EndProlog' '%%BeginSetup' '%%EndSetup'
  awk -v ORS='\r' 'BEGIN { for (i = 0; i < 1024; i++) { print "%AI5_BeginLayer"; print "%AI5_EndLayer--" } }'
  printf '%s\r' '%%PageTrailer' '%%Trailer' '%%EOF'
} > layers.ai
check layers-1024 0 layers.ai cell.txt

template 'for (i = 0; i < 1024; i++) {
  print "%AI5_BeginPlace"; print "[1 0 0 1 0 0] 0 0 10 10 (PH-1-1.eps) `"; print "%AI5_EndPlace" }' \
  > placed.ai
check placed-art-1024 0 -home=./ placed.ai EPS-PH=cell.txt

template 'for (i = 0; i < 9000; i++) { print "0 To"; print "(TX-1-1) Tx"; print "TO" }' > texts.ai
check texts-9000 0 texts.ai TX=cell.txt

template 'printf "0 To\r"; for (i = 0; i < 60000; i++) printf "Tx "; print "(TX-1-1) Tx"; print "TO"' \
  > runs.ai
check runs-60000 0 runs.ai TX=cell.txt

awk 'BEGIN { for (i = 0; i < 99999; i++) printf "a\t"; print "last" }' > wide.txt
template 'print "0 To"; print "(TX-1-100000) Tx"; print "TO"' > wide.ai
check table-100000-columns 0 wide.ai TX=wide.txt

# Spreadsheet tables have no row limit: as many rows and columns as 190 KB can hold.
awk 'BEGIN { for (i = 0; i < 190000; i++) print "" }' > rows.csv
template 'print "0 To"; print "(TX-190000-1) Tx"; print "TO"' > last-row.ai
check csv-190000-rows 0 -table=csv last-row.ai TX=rows.csv
awk 'BEGIN { for (i = 0; i < 99999; i++) printf ","; print "last" }' > wide.csv
check csv-100000-columns 0 -table=csv wide.ai TX=wide.csv

template 'for (i = 0; i < 190000; i++) print ""' > lines.ai
check lines-190000 0 lines.ai cell.txt

# A cell that brings back its own placeholder twice doubles the text at each step.
printf 'TX-1-1 TX-1-1\n' > doubling.txt
template 'print "0 To"; print "(TX-1-1) Tx"; print "TO"' > one-text.ai
check expansion-doubling 2 one-text.ai TX=doubling.txt

# Each of 1,000 point texts expands, in two finite steps, to 10 MB: 1,000 copies of
# TX-1-2, whose cell holds 10,000 bytes.
awk 'BEGIN { for (i = 0; i < 1000; i++) printf "TX-1-2 "; printf "\t"
             for (i = 0; i < 1000; i++) printf "xxxxxxxxxx"; print "" }' > fanout.txt
template 'for (i = 0; i < 1000; i++) { print "0 To"; print "(TX-1-1) Tx"; print "TO" }' > texts-1000.ai
check expansion-in-1000-texts 2 texts-1000.ai TX=fanout.txt

exit $failed
