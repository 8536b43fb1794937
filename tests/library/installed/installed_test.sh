#!/usr/bin/env bash
# Builds programs outside the tree against the installed library alone, and runs them.
#
#   installed_test.sh PREFIX SOURCE_DIRECTORY
#
# PREFIX is where bin, include, lib ... of the packages are.
set -euo pipefail
prefix=$(realpath "$1")
source_dir=$(realpath "$2")
place=$(mktemp -d)
trap 'rm -rf "$place"' EXIT
cp -r "$source_dir"/examples/embed/* "$source_dir"/tests/library/installed/eight_threads.cpp "$place"
cd "$place"
fan=$source_dir/examples/first/fan.a2l
export PKG_CONFIG_PATH=$prefix/lib/pkgconfig
libraries=$prefix/lib

fail() {
    echo "$*" >&2
    exit 1
}

# expect NAME COMMAND...: the list of signals is what COMMAND prints.
expect() {
    local found
    found=$("${@:2}" "$fan") || fail "$1: ends with status $?"
    [[ $found == "70001a40 nFan 1/min" ]] || fail "$1: prints $found"
}

cmake -S . -B build -DCMAKE_PREFIX_PATH="$prefix" >log 2>&1 && cmake --build build >>log 2>&1 ||
    fail "CMake: $(cat log)"
expect CMake build/list_signals

make >log 2>&1 || fail "make: $(cat log)"
expect pkg-config env LD_LIBRARY_PATH="$libraries" ./list_signals

sed -i 's/quillmark::quillmark)/quillmark::quillmark_static)/' CMakeLists.txt
cmake -S . -B static -DCMAKE_PREFIX_PATH="$prefix" >log 2>&1 && cmake --build static >>log 2>&1 ||
    fail "static: $(cat log)"
expect static static/list_signals
if ldd static/list_signals | grep libquillmark; then
    fail "static: needs the shared library"
fi

read -ra flags <<<"$(pkg-config --cflags --libs quillmark)"
"${CXX:-c++}" -std=c++20 -g -fsanitize=thread eight_threads.cpp "${flags[@]}" -o eight_threads \
    >log 2>&1 || fail "eight threads: $(cat log)"
found=$(LD_LIBRARY_PATH=$libraries TSAN_OPTIONS=halt_on_error=1 ./eight_threads "$fan" 2>&1) ||
    fail "eight threads: $found"
[[ $found == "1 1" ]] || fail "eight threads: $found"
echo "built with CMake and pkg-config, shared and static; eight threads at work"
