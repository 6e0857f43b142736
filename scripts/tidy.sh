#!/bin/bash
# Runs clang-tidy over the library's units; its checks stand in .clang-tidy.
#
#   scripts/tidy.sh [file...]     the files are all of src/ by default
set -euo pipefail
cd "$(dirname "$0")/.."

source scripts/packages.sh
zet_install "${zet_style_packages[@]}" clang

cmake --preset dev -DZET_BUILD_TESTS=OFF -DZET_BUILD_EXAMPLES=OFF -B build/tidy
# The scanner and the grammar are sources only after they were generated.
cmake --build build/tidy --parallel "$(nproc)" --target zet_generated
if [ $# -eq 0 ]; then
    mapfile -t files < <(find src -name '*.cpp' | sort)
    set -- "${files[@]}"
fi
printf '%s\0' "$@" | xargs -0 -n 1 -P "$(nproc)" clang-tidy -p build/tidy --quiet --warnings-as-errors='*'
