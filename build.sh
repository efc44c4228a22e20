#!/bin/sh
# Builds ormel and runs its jobs; installs the build tools on a machine that lacks them.
#   ./build.sh demo      build ormel, then run the bundled example (examples/) into build/demo/
#   ./build.sh test      build, then run every test: plain build, then sanitizer build
#   ./build.sh build     build only (build/ormel)
#   ./build.sh fuzz [S]  build the libFuzzer targets with clang, fuzz each for S seconds
#   ./build.sh bench     build, then run the benchmarks (bench/)
#   ./build.sh format    check that the sources are formatted as .clang-format says
set -eu
cd "$(dirname "$0")"
jobs=$(nproc 2>/dev/null || echo 2)

as_root() { if [ "$(id -u)" = 0 ]; then "$@"; else sudo "$@"; fi; }

need_packages() {
  missing=""
  for pkg in "$@"; do
    dpkg-query -W -f='${Status}' "$pkg" 2>/dev/null | grep -q "install ok installed" ||
      missing="$missing $pkg"
  done
  if [ -n "$missing" ]; then
    echo "Installing:$missing"
    as_root apt-get update -qq
    as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq $missing > /dev/null
  fi
}

# The libraries of placed art: barcodes (libzint), photos (libjpeg, libpng, libtiff, zlib).
tools="cmake g++ make libgtest-dev libzint-dev libjpeg-dev libpng-dev libtiff-dev zlib1g-dev"

configure() {  # build-dir, extra cmake options...
  dir=$1; shift
  need_packages $tools
  cmake -S . -B "$dir" -DORMEL_WERROR=ON "$@" > /dev/null
}

configure_and_build() {  # build-dir, extra cmake options...
  configure "$@"
  cmake --build "$1" -j "$jobs"
}

case "${1:-build}" in
  build)
    configure_and_build build ;;
  demo)
    tools="$tools ghostscript"  # draws the PNG proofs
    configure build
    cmake --build build -j "$jobs" --target ormel
    sh examples/run-example.sh build/ormel build/demo ;;
  test)
    # Ghostscript reads ormel's output and renders its PDFs and proofs, which poppler-utils
    # and qpdf read in turn; scanner software reads its barcodes back (zbarimg; dmtxread for
    # Data Matrix).
    tools="$tools ghostscript poppler-utils qpdf zbar-tools dmtx-utils"
    configure_and_build build
    (cd build && ctest --output-on-failure -j "$jobs")
    configure_and_build build-sanitize -DORMEL_SANITIZE=ON -DCMAKE_BUILD_TYPE=Debug
    (cd build-sanitize && ctest --output-on-failure -j "$jobs") ;;
  fuzz)
    need_packages clang libclang-rt-dev
    configure_and_build build-fuzz -DORMEL_FUZZ=ON -DORMEL_SANITIZE=ON -DCMAKE_CXX_COMPILER=clang++ -DORMEL_TESTS=OFF
    sh fuzz/run-fuzzers.sh build-fuzz "${2:-60}" ;;
  format)
    need_packages clang-format
    clang-format --dry-run --Werror src/*/*.cpp src/*/*.h fuzz/*.cpp bench/*.cpp bench/*.h tests/*.cpp ;;
  bench)
    configure_and_build build-release -DCMAKE_BUILD_TYPE=Release -DORMEL_TESTS=OFF
    sh bench/run.sh build-release/ormel --expect bench/checksums.txt
    build-release/bench/ormel_batch_bench build-release/ormel
    build-release/bench/ormel_pages_bench build-release/ormel
    build-release/bench/ormel_art_bench build-release/ormel ;;
  *)
    echo "usage: ./build.sh [build|demo|test|fuzz [seconds]|bench|format]" >&2
    exit 1 ;;
esac
