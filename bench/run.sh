#!/bin/sh
# Runs the benchmarks against an ormel binary with the ormel_bench built in the same build
# folder (build/bench/ormel_bench beside build/ormel). Builds nothing; see bench/README.md.
#   sh bench/run.sh build/ormel [--runs N] [--only NAME,...] [--checksums FILE] [--expect FILE] ...
set -eu
if [ $# -lt 1 ]; then
  echo "usage: sh bench/run.sh path/to/ormel [ormel_bench options]" >&2
  exit 2
fi
ormel=$1
shift
bench=$(dirname "$ormel")/bench/ormel_bench
if [ ! -x "$bench" ]; then
  echo "run.sh: $bench not found: build the ormel_bench target in $(dirname "$ormel")" >&2
  exit 2
fi
exec "$bench" "$ormel" "$@"
