#!/bin/sh
# Fuzzes every target for the given number of seconds, starting from a scratch copy of its
# seed corpus. New crashes are written to fuzz/findings/ and fail the script.
# Usage: sh fuzz/run-fuzzers.sh BUILD_DIR SECONDS
# Long runs: sh fuzz/run-fuzzers.sh build-fuzz 1800  (30 minutes per target)
set -u
build=$1
seconds=$2
here=$(cd "$(dirname "$0")" && pwd)
mkdir -p "$here/findings"
failed=0
for target in template table run; do
  work=$(mktemp -d)
  cp -R "$here/corpus/$target/." "$work/"
  extra=""
  if [ "$target" = template ] && [ -d "$here/../../shared/corpus" ]; then
    extra="$here/../../shared/corpus"
  fi
  echo "== fuzz_$target for ${seconds}s"
  if ! "$build/fuzz/fuzz_$target" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 \
      -max_len=262144 -dict="$here/ormel.dict" -artifact_prefix="$here/findings/$target-" \
      -print_final_stats=1 "$work" $extra 2> "$work.log"; then
    failed=1
  fi
  grep -E '^(stat::number_of_executed_units|stat::peak_rss_mb|#[0-9]+ *DONE)|ERROR' "$work.log"
  tail -n 3 "$work.log" | grep -E 'cov:|corp:' || true
  rm -rf "$work" "$work.log"
done
exit $failed
