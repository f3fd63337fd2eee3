#!/usr/bin/env bash
# fuzz.sh BUILD_FOLDER [TARGET]...
#
# Runs the fuzzers of a build with the preset fuzz, one after the other, FUZZ_SECONDS (60) each; all of them, or those that
# are named. Each begins with the inputs in tests/fuzz and with what earlier runs found in BUILD_FOLDER/fuzz/corpus. An
# input that breaks something is left in BUILD_FOLDER/fuzz/findings, and makes the run fail at its end.
set -euo pipefail

source_dir=$(cd "$(dirname "$0")/.." && pwd)
build_dir=$(cd "$1" && pwd)
shift
seconds=${FUZZ_SECONDS:-60}
work_dir=$build_dir/fuzz
findings=$work_dir/findings
mkdir -p "$findings"

targets=("$@")
[ $# -gt 0 ] || mapfile -t targets < <(cd "$build_dir/tests/bin" && ls -d Fuzz*)

# Inputs are small and each run is short: what takes longer, or more room than a file of a few kilobytes can need, is a
# finding too. Seconds are those of the clock, so a machine that is busy with other things needs more of them.
limits=(-max_total_time="$seconds" -timeout="${FUZZ_TIMEOUT:-10}" -rss_limit_mb=2048 -malloc_limit_mb=1024)
export ASAN_OPTIONS=detect_stack_use_after_return=1:strict_string_checks=1
export LSAN_OPTIONS=suppressions=$source_dir/tests/support/leak-suppressions.txt:print_suppressions=0
export UBSAN_OPTIONS=print_stacktrace=1
export QT_QPA_PLATFORM=offscreen

failed=()
for target in "${targets[@]}"; do
    echo "== $target"
    corpus=$work_dir/corpus/$target
    run=$work_dir/run/$target # some write files where they are
    inputs=()
    for folder in "$source_dir/tests/fuzz/corpus/$target" "$source_dir/tests/fuzz/findings/$target"; do
        [ ! -d "$folder" ] || inputs+=("$folder")
    done
    mkdir -p "$corpus" "$run"
    longest=8192
    more=()
    if [ "$target" = FuzzModelStream ]; then
        longest=24576 # the kernel's geometry takes room
        more=(-use_cmp=0) # a fuzzer that sees what is compared writes the right digest over the kernel's bytes
    fi
    (cd "$run" && "$build_dir/tests/bin/$target" "${limits[@]}" "${more[@]}" -max_len=$longest -dict="$source_dir/tests/fuzz/words.dict" -close_fd_mask=1 \
        -print_final_stats=1 -artifact_prefix="$findings/$target-" "$corpus" "${inputs[@]}" >"$work_dir/$target.log" 2>&1) ||
        failed+=("$target")
    grep -E "^stat::(number_of_executed|average_exec|peak_rss)|^broken:|^found:|ERROR:|runtime error|Test unit written" \
        "$work_dir/$target.log" || true
    grep -E "cov: [0-9]+" "$work_dir/$target.log" | tail -n 1 || true
done

[ ${#failed[@]} -eq 0 ] || { echo "findings of ${failed[*]}: logs in $work_dir, inputs in $findings"; exit 1; }
