#!/bin/bash
# Installs a built library to a staging folder, compares what it installs and exports with the two
# lists beside this script, and lets the consumer program find it, link it and run: through
# find_package and through pkg-config.
#
#   tests/package/package.sh [--update] BUILD
#
# BUILD is the build tree of the library; --update rewrites the two lists instead of comparing.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
update=no
if [ "${1:-}" = --update ]; then
    update=yes
    shift
fi
build=$(cd "${1:?which build tree?}" && pwd)
: "${CXX:=g++}" "${CXXFLAGS:=}" "${LIBDIR:=lib}" "${INCLUDEDIR:=include}"
export CXX CXXFLAGS

work=$build/package
stage=$work/stage
rm -rf "$work"
mkdir -p "$work"

# The installed files, under the names of the default layout.
installed_files()
{
    (cd "$stage" && find . -type f -o -type l) |
        sed -e 's|^\./||' -e "s|^$LIBDIR/|lib/|" -e "s|^$INCLUDEDIR/|include/|" -e 's|zetTargets-[a-z]*\.cmake|zetTargets-CONFIG.cmake|'
}

# The classes and functions of the library that its dynamic symbol table defines for sure: those in
# templates and inline functions are left to what each build makes of them.
exported_names()
{
    nm --dynamic --defined-only --demangle "$stage/$LIBDIR/libzetw_no_tbb.so" |
        sed -nE 's/^[0-9a-f]+ [TDRBi] //p' |
        sed -E 's/^(vtable|typeinfo|typeinfo name|VTT|non-virtual thunk|virtual thunk|guard variable) (for|to) //' |
        grep -oE '^zet::(internal::)?(operator[^A-Za-z0-9_(]+|[A-Za-z_0-9]+)' | sed -E 's/ $//'
}

compare()
{
    local list=$here/$1
    LC_ALL=C sort -u >"$work/$1"
    if [ "$update" = yes ]; then
        cp "$work/$1" "$list"
    elif ! diff -u --label "$1 (stored)" --label "$1 (of this build)" "$list" "$work/$1"; then
        echo "if the change is meant: tests/package/package.sh --update BUILD" >&2
        return 1
    fi
}

cmake --install "$build" --prefix "$stage" >/dev/null
installed_files | compare installed.txt
exported_names | compare exported.txt

foreign=$(nm --dynamic --defined-only --demangle "$stage/$LIBDIR/libzetw_no_tbb.so" |
    sed -nE 's/^[0-9a-f]+ [TDRB] //p' | grep -vE 'zet::|^(_init|_fini|__bss_start|_edata|_end)$' || true)
if [ -n "$foreign" ] && [ -z "$CXXFLAGS" ]; then
    echo "exported outside the namespace: $foreign" >&2
    exit 1
fi

echo "== find_package"
cmake -G Ninja -S "$here/consumer" -B "$work/consumer" -DCMAKE_PREFIX_PATH="$stage" -DCMAKE_BUILD_TYPE=Release >"$work/log" ||
    { cat "$work/log"; exit 1; }
cmake --build "$work/consumer" >"$work/log" || { cat "$work/log"; exit 1; }
"$work/consumer/consumer"

echo "== pkg-config"
export PKG_CONFIG_PATH=$stage/$LIBDIR/pkgconfig
[ "$(pkg-config --modversion zetw_no_tbb)" = 1.0.0 ]
# Flags are words by design here.
# shellcheck disable=SC2046,SC2086
"$CXX" -std=c++17 $CXXFLAGS "$here/consumer/consumer.cpp" -o "$work/consumer-pc" $(pkg-config --cflags --libs zetw_no_tbb)
LD_LIBRARY_PATH=$stage/$LIBDIR "$work/consumer-pc"
