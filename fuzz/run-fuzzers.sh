#!/bin/sh
# Fuzzes every target for the given number of seconds, starting from a scratch copy of its
# seed corpus and of the golden cases' inputs: their templates for fuzz_template, their
# tables for fuzz_table and fuzz_delimited, and one whole run per case for fuzz_run. New
# crashes are written to fuzz/findings/ and fail the script.
# Usage: sh fuzz/run-fuzzers.sh BUILD_DIR SECONDS [TARGETS]
#   (default "template table delimited run image")
# Long runs: sh fuzz/run-fuzzers.sh build-fuzz 1800  (30 minutes per target); on several
# cores, one call per target in parallel: sh fuzz/run-fuzzers.sh build-fuzz 1800 run &
set -u
build=$1
seconds=$2
here=$(cd "$(dirname "$0")" && pwd)
golden=$here/../tests/golden

# Appends a file, if the case holds it, to standard output.
cat_if() { if [ -f "$1" ]; then cat "$1"; fi; }

# Writes one fuzz_run input for a golden case: its options, template, text table and
# placed-art table as the case's arguments give them, then its EPS files, each part after
# a line "%%--". A table given alone becomes the text table marked by a leading "*".
run_seed() {
  opts="" template="" text="" placed="" alone=""
  while IFS= read -r arg || [ -n "$arg" ]; do
    if [ -z "$template" ]; then
      case $arg in -*) opts="$opts $arg" ;; *) template=$arg ;; esac
      continue
    fi
    case $arg in
      *=*) case ${arg%%=*} in *-*) placed=${arg#*=} ;; *) text=${arg#*=} ;; esac ;;
      *) alone="*" text=$arg ;;
    esac
  done < "$1/args"
  [ -f "$1/$template" ] || return 0
  {
    printf '%s\n%%%%--\n' "$opts"
    cat "$1/$template"
    printf '\n%%%%--\n%s' "$alone"
    cat_if "$1/$text"
    printf '\n%%%%--\n'
    cat_if "$1/$placed"
    find "$1" -name '*.eps' -type f | while IFS= read -r eps; do
      printf '\n%%%%--\n'
      cat "$eps"
    done
  } > "$2"
}

# Adds the golden cases' inputs for a target to the scratch corpus in $2.
golden_seeds() {
  [ -d "$golden" ] || return 0
  for case_dir in "$golden"/*/; do
    case_dir=${case_dir%/}
    name=$(basename "$case_dir")
    case $1 in
      template) for f in "$case_dir"/*.ai; do [ -f "$f" ] && cp "$f" "$2/golden-$name-${f##*/}"; done ;;
      table) for f in "$case_dir"/*.txt; do [ -f "$f" ] && cp "$f" "$2/golden-$name-${f##*/}"; done ;;
      delimited) for f in "$case_dir"/*.csv "$case_dir"/*.txt; do
          [ -f "$f" ] || continue
          case $f in *.csv) form='\001' ;; *) form='\000' ;; esac  # comma or tab, Mac Roman
          { printf "$form"; cat "$f"; } > "$2/golden-$name-${f##*/}"
        done ;;
      run) [ -f "$case_dir/args" ] && run_seed "$case_dir" "$2/golden-$name.bin" ;;
    esac
  done
  return 0
}

mkdir -p "$here/findings"
failed=0
for target in ${3:-template table delimited run image}; do
  work=$(mktemp -d)
  cp -R "$here/corpus/$target/." "$work/"
  golden_seeds "$target" "$work"
  extra=""
  if [ "$target" = template ] && [ -d "$here/../../shared/corpus" ]; then
    extra="$here/../../shared/corpus"
  fi
  echo "== fuzz_$target for ${seconds}s from $(ls "$work" | wc -l) seeds"
  if ! "$build/fuzz/fuzz_$target" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 \
      -max_len=262144 -dict="$here/ormel.dict" -artifact_prefix="$here/findings/$target-" \
      -print_final_stats=1 "$work" $extra 2> "$work.log"; then
    failed=1
  fi
  grep -E '^stat::(number_of_executed_units|peak_rss_mb)|ERROR' "$work.log"
  grep -E 'cov:' "$work.log" | tail -n 1
  echo "corpus: $(ls "$work" | wc -l) files"
  rm -rf "$work" "$work.log"
done
exit $failed
