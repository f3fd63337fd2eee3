#!/usr/bin/env bash
# list-sources.sh [pattern...]: the C++ files of the tree, one a line; without a pattern all headers and sources.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

patterns=("$@")
[ ${#patterns[@]} -gt 0 ] || patterns=('*.h' '*.cpp')
names=()
for pattern in "${patterns[@]}"; do
    names+=(-o -name "$pattern")
done

find apps benchmarks display examples features host laser openhost reader tests writers \
    -type f \( "${names[@]:1}" \) 2>/dev/null | sort
