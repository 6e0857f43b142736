#!/bin/bash
# Every oddity that is kept on purpose says KEPT where it lives and names the tests that hold it:
# "Test: Suite.name." or "Test: Suite.name, Suite.other.". Lists the notes that name no test, and the
# names that no test has; exit code 1 when there is one.
set -euo pipefail
cd "$(dirname "$0")/../.."

# A line "file:line Suite.name" for each name, and "file:line -" for a note that lacks one.
notes()
{
    find src inc -type f -print0 | LC_ALL=C sort -z | xargs -0 awk '
        function flush(    rest, named) {
            rest = block
            block = ""
            for (named = 0; match(rest, /Test: [A-Za-z0-9_]+\.[A-Za-z0-9_]+(, [A-Za-z0-9_]+\.[A-Za-z0-9_]+)*/); ++named) {
                names = substr(rest, RSTART + 6, RLENGTH - 6)
                rest = substr(rest, RSTART + RLENGTH)
                gsub(/, /, "\n" place " ", names)
                print place " " names
            }
            for (; named < kept; ++named)
                print place " -"
            kept = 0
        }
        FNR == 1 { flush() }
        /^[ \t]*\/\// {
            if (/KEPT/) { ++kept; place = FILENAME ":" FNR }
            if (block == "") place = FILENAME ":" FNR
            sub(/^[ \t]*\/\/\/?[ \t]*/, "")
            block = block " " $0
            next
        }
        { flush() }
        /KEPT/ { print FILENAME ":" FNR " -" }
        END { flush() }'
}

tests=$(find tests -name '*Test.cpp' -print0 | xargs -0 cat | tr '\n' ' ' |
        grep -oE '\b(TYPED_)?TEST(_[FP])?\( *[A-Za-z0-9_]+, *[A-Za-z0-9_]+ *\)' | sed -E 's/^[^(]*\( *//; s/, */./; s/ *\)$//')

notes | awk -v tests="$tests" '
    BEGIN { split(tests, all, "\n"); for (i in all) known[all[i]] = 1 }
    { ++count }
    $2 == "-" { print $1 ": KEPT, but no test is named"; bad = 1; next }
    !($2 in known) { print $1 ": there is no test " $2; bad = 1 }
    END {
        if (count == 0) { print "no KEPT note was found"; bad = 1 }
        exit bad
    }'
