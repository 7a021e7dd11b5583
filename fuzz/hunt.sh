#!/bin/sh
# SPDX-License-Identifier: MIT
# Hunts with one fuzzer: fuzz/hunt.sh TARGET [RUNS]. Installs and builds what is missing, keeps inputs that reach new code
# in build/fuzz/corpus/TARGET, and those that fail in build/fuzz/failed/. docs/fuzzing.md tells of the targets.
set -eu
target=${1:?"usage: fuzz/hunt.sh TARGET [RUNS]"}
runs=${2:-1000000}
cd "$(dirname "$0")/.."
. packaging/packages.sh
# shellcheck disable=SC2086 # lists of names
require_packages $build_packages $fuzz_packages
case $target in
record | frame) seeds=capture ;;
*) seeds=$target ;;
esac
case $target in
profile | language | ttdll) length=1024 ;;
ymodem) length=512 ;; # each byte of it may make a block of 1024
*) length=4096 ;;
esac
[ -f build/fuzz/build.ninja ] || cmake --preset fuzz
cmake --build build/fuzz --target "fuzz_$target"
mkdir -p "build/fuzz/corpus/$target" build/fuzz/failed
set -- -runs="$runs" -max_len="$length" -timeout=10 -print_final_stats=1 "-artifact_prefix=build/fuzz/failed/$target-"
[ ! -f "fuzz/words/$seeds" ] || set -- "$@" "-dict=fuzz/words/$seeds"
exec nice -n 19 "build/fuzz/fuzz/fuzz_$target" "$@" \
    "build/fuzz/corpus/$target" "fuzz/corpus/$seeds"
