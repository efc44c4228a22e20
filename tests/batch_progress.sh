#!/bin/sh
# The progress line of a batch on a terminal: run under script(1), which gives the run a
# pseudo-terminal, a batch draws "ormel: 1/N documents, ..." on standard error at its first
# document and erases it at the end ("\r" and the erase-line sequence), and its files are
# complete. Skipped (77) without script(1). Without a terminal nothing is drawn: the golden
# cases of batches compare standard error byte for byte.
#   sh tests/batch_progress.sh path/to/ormel
set -u
ormel=$1
case $ormel in /*) ;; *) ormel=$PWD/$ormel ;; esac
command -v script > /dev/null 2>&1 || { echo "script(1) not installed: skipped"; exit 77; }
work=$(mktemp -d) || exit 99
trap 'rm -rf "$work"' EXIT
cd "$work" || exit 99

printf '%s\r' '%!PS-Adobe-3.0' '%%EndProlog' '%%BeginSetup' '%%EndSetup' '%AI5_BeginLayer' \
  '0 To' '(PR-1-1) Tx' 'TO' '%AI5_EndLayer--' '%%PageTrailer' '%%Trailer' '%%EOF' > doc.ai
i=1
while [ $i -le 40 ]; do echo "label $i"; i=$((i + 1)); done > tab.txt

script -qec "'$ormel' -each=1 -out=label-#.ai doc.ai PR=tab.txt" /dev/null > terminal.txt
status=$?
failed=0
[ "$status" = 0 ] || { echo "exit status $status"; failed=1; }
[ -f label-40.ai ] || { echo "label-40.ai not written"; failed=1; }
esc=$(printf '\033')
cr=$(printf '\r')
grep -q "^${cr}ormel: 1/40 documents, [0-9]*/s, [0-9]* s left${esc}\\[K" terminal.txt ||
  { echo "no progress line for the first document"; failed=1; }
[ "$(tail -c 4 terminal.txt | od -An -c | tr -d ' ')" = '\r033[K' ] ||
  { echo "the line is not erased at the end"; failed=1; }
if [ $failed != 0 ]; then od -c terminal.txt | head -20; fi
exit $failed
