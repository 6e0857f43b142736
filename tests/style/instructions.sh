#!/bin/bash
# What the compilers made of the library's sources.
#
#   tests/style/instructions.sh LIST
#
# LIST is a file of the library's objects, one a line. Two things are asked of them:
# - None holds a fused multiply-add. It rounds once where the rules round twice, so results would
#   depend on the processor.
# - The loops for newer processors define no weak symbol: the linker may take one for all objects, and
#   older processors would run it.
# Names what is found; exit code 1 when there is something.
set -euo pipefail
mapfile -t objects <"${1:?which list of objects?}"

objdump --disassemble --no-show-raw-insn "${objects[@]}" | awk -v expected="${#objects[@]}" '
    / file format / { object = $1; ++count }
    $2 ~ /^(v?fn?m(add|sub)|fml[as])/ { if (!fused[object]++) print object " " $2 }
    $2 ~ /^(v?mulpd|fmul)/ { products = 1 }
    END {
        for (object in fused) exit 1
        if (count < expected || !products) { print "not all objects were read"; exit 1 }
    }'

mapfile -t loops < <(printf '%s\n' "${objects[@]}" | grep '/ZetPixelLoops[^/]*$')
weak=$(nm --print-file-name --defined-only --demangle "${loops[@]}" | grep -E ' [uVW] ' || true)
if [ -n "$weak" ]; then
    printf 'weak symbols in the loops:\n%s\n' "$weak"
    exit 1
fi
