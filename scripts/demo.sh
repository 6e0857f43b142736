#!/bin/bash
# Installs what is missing, builds examples/bandmath, and draws how green the land of the Earth is
# from a real image, into out/.
set -euo pipefail
cd "$(dirname "$0")/.."

source scripts/packages.sh
zet_install "${zet_demo_packages[@]}"

cmake --preset release -B build/demo -DZET_BUILD_TESTS=OFF -DZET_BUILD_BENCHMARKS=OFF
cmake --build build/demo --parallel "$(nproc)" --target bandmath

earth=/usr/share/xplanet/images/earth.jpg
mkdir -p out
# The sea is where red falls short of blue; 0/0 there is no value, and so shows the background.
build/demo/examples/bandmath/bandmath \
    -e '(g-b)/(r+g+b) * land/land; land = clip(round(0.6 + (r-b)/(r+g+b)), 0, 1)' \
    -b r=$earth:1 -b g=$earth:2 -b b=$earth:3 \
    -o out/green-earth.tif -t Float \
    -p out/green-earth.png --ramp vegetation --stretch 0,0.6 --background 0c1c2e --legend

echo
echo "The picture: $PWD/out/green-earth.png"
