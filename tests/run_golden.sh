#!/bin/sh
# Runs one golden case: tests/golden/<case>/ holds the inputs, "args" (one argument a line),
# and the expected results "expected.out" (stdout bytes), "expected.err" (stderr bytes) and
# "expected.status" (exit status); a missing expectation means empty output or status 0.
# The case runs in a scratch copy of its folder, after its optional "setup.sh" (for inputs
# git cannot hold, such as a named pipe). An optional "stdout-to" names where stdout goes
# instead of being captured (for example /dev/full). An optional "expected.strings" lists
# the strings that Ghostscript reads in the output (see ps_strings.sh).
# An optional folder "expected.files" holds the files the run must leave, at the same paths
# relative to the case: each must be there with exactly those bytes, and every other file
# (the case's own and those setup.sh made) must be as it was before the run, so a run that
# writes anything else, or leaves a temporary file, fails.
set -u
ormel=$1
case_dir=$2
here=$(cd "$(dirname "$0")" && pwd)
work=$(mktemp -d) || exit 99
trap 'rm -rf "$work"' EXIT
cp -R "$case_dir"/. "$work"/ || exit 99
cd "$work" || exit 99
if [ -f setup.sh ]; then sh ./setup.sh || { echo "setup.sh failed"; exit 99; }; fi

set --
if [ -f args ]; then
  while IFS= read -r a || [ -n "$a" ]; do set -- "$@" "$a"; done < args
fi

# Every file of the case but the expectations, with its checksum.
snapshot() {
  find . -type f ! -path './expected.files/*' ! -name 'expected.*' ! -name '.actual.*' | LC_ALL=C sort |
    while IFS= read -r f; do printf '%s %s\n' "$(cksum < "$f")" "$f"; done
}
[ -d expected.files ] && snapshot > .actual.before

out=$work/.actual.out
if [ -f stdout-to ]; then out=$(cat stdout-to); fi
"$ormel" "$@" > "$out" 2> .actual.err < /dev/null
status=$?

expected_status=0
[ -f expected.status ] && expected_status=$(cat expected.status)
[ -f expected.out ] || : > expected.out
[ -f expected.err ] || : > expected.err

failed=0
if [ "$status" != "$expected_status" ]; then
  echo "exit status $status, expected $expected_status"; failed=1
fi
if [ ! -f stdout-to ] && ! cmp -s .actual.out expected.out; then
  echo "stdout differs from expected.out:"; cmp .actual.out expected.out
  od -c .actual.out | head -40; failed=1
fi
# expected.strings: what a PostScript reader finds in the output's strings (ps_strings.sh).
if [ -f expected.strings ] && ! sh "$here/ps_strings.sh" .actual.out expected.strings; then
  failed=1
fi
if ! cmp -s .actual.err expected.err; then
  echo "stderr differs from expected.err:"; echo "--- actual"; cat .actual.err
  echo "--- expected"; cat expected.err; failed=1
fi
if [ -d expected.files ]; then
  (cd expected.files && find . -type f | LC_ALL=C sort | sed 's|^\./||') > .actual.expected
  while IFS= read -r f; do
    if ! cmp -s "expected.files/$f" "$f"; then echo "file $f differs from expected.files/$f"; failed=1; fi
  done < .actual.expected
  snapshot | while IFS= read -r line; do
    f=${line#*./}
    grep -qxF "$f" .actual.expected || grep -qxF "$line" .actual.before ||
      echo "file $f is new or changed, and not in expected.files"
  done > .actual.files
  if [ -s .actual.files ]; then cat .actual.files; failed=1; fi
fi
exit $failed
