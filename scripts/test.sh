#!/bin/bash
# Installs what is missing, builds the library and runs every test.
#
#   scripts/test.sh [preset]      the preset is dev by default; sanitize, release and thread are others
set -euo pipefail
cd "$(dirname "$0")/.."
preset=${1:-dev}

source scripts/packages.sh
zet_install "${zet_test_packages[@]}" "${zet_demo_packages[@]}"
zet_install_locales

cmake --preset "$preset"
cmake --build --preset "$preset" --parallel "$(nproc)"
ctest --preset "$preset" --parallel "$(nproc)"
