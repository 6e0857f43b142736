#!/bin/bash
# Compares every source file with the house format, and shows what differs.
#
#   scripts/format.sh             check; exit code 1 when a file differs
#   scripts/format.sh --fix       rewrite the files that differ
set -euo pipefail
cd "$(dirname "$0")/.."

source scripts/packages.sh
zet_install "${zet_style_packages[@]}"

# Headers have no extension, so the formatter is told what they are.
formatted()
{
    case $1 in
        *.cpp) clang-format --assume-filename="$1" <"$1" ;;
        *) clang-format --assume-filename="$1.h" <"$1" ;;
    esac
}

status=0
scratch=$(mktemp)
trap 'rm -f "$scratch"' EXIT
while IFS= read -r file; do
    formatted "$file" >"$scratch"
    if cmp -s "$file" "$scratch"; then
        continue
    fi
    if [ "${1:-}" = --fix ]; then
        cat "$scratch" >"$file"
        echo "formatted $file"
    else
        diff -u --label "$file" --label "$file (formatted)" "$file" "$scratch" || true
        status=1
    fi
done < <(git ls-files --cached --others --exclude-standard inc src tests bench fuzz examples |
         grep -E '(\.cpp|/[A-Za-z0-9_]+)$' | grep -v '^fuzz/corpus/')
exit $status
