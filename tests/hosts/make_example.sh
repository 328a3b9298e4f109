# shellcheck shell=sh
# Builds the example in C by its own Makefile, with nothing but pkg-config to find the library, and runs it.
# Usage: make_example.sh PREFIX EXAMPLE WORK COMPILER
PKG_CONFIG_PATH=$(dirname "$(find "$1" -name pixvane.pc)")
export PKG_CONFIG_PATH
rm -rf "$3"
cp -r "$2" "$3"
make -s -C "$3" CC="$4" clean correct
"$3/correct" "$3/correct.png"
test -s "$3/correct.png"
