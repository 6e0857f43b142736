#!/bin/bash
# Installs what is missing, builds the benchmarks, and measures everything on one thread in one run: our
# times beside those of loops by hand, numpy, numexpr, muParser, muParserX, UDUNITS-2, Eigen and LAPACK.
# Prints one table with medians and ratios, and draws it.
#
#   scripts/bench.sh [--quick] [--picture FILE]
#
#   --quick          fewer rounds, and only the rows that have a goal: about a minute instead of five
#   --picture FILE   where the picture goes (SVG); build/bench/bench.svg by default
#   --help           this text
#
# Exit code 0 when the table was made, whatever it says; 1 when something failed; 2 for wrong arguments.
set -euo pipefail

usage()
{
    sed -n '2,/^set /{s/^# \{0,1\}//;/^set /!p}' "$1"
}

quick=0
picture=
while [ $# -gt 0 ]; do
    case $1 in
        --quick) quick=1 ;;
        --picture)
            if [ $# -lt 2 ]; then
                echo "scripts/bench.sh: --picture wants a file" >&2
                exit 2
            fi
            picture=$(realpath -m "$2")
            shift
            ;;
        --help | -h)
            usage "$0"
            exit 0
            ;;
        *)
            echo "scripts/bench.sh: what is '$1'? See scripts/bench.sh --help" >&2
            exit 2
            ;;
    esac
    shift
done

cd "$(dirname "$0")/.."

source scripts/packages.sh
zet_install "${zet_bench_packages[@]}"

cmake --preset bench
cmake --build --preset bench --parallel "$(nproc)" --target zet_bench zet_fresh

options=(--rounds 11)
if [ $quick -eq 1 ]; then
    options=(--rounds 5 --works-only)
fi
# Debian's own Python, which has Debian's numpy and numexpr.
/usr/bin/python3 -B bench/compare.py build/bench/bench "${options[@]}" --picture "${picture:-build/bench/bench.svg}"
