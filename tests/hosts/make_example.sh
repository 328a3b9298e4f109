# shellcheck shell=sh
# Builds an example by its own Makefile, with nothing but pkg-config to find the library, and runs it if it is
# given arguments.
# Usage: make_example.sh PREFIX EXAMPLE WORK COMPILER PROGRAM [ARGUMENT...]
PKG_CONFIG_PATH=$(dirname "$(find "$1" -name pixvane.pc)")
export PKG_CONFIG_PATH
example=$2 work=$3 compiler=$4 program=$5
shift 5
rm -rf "$work"
cp -r "$example" "$work"
make -s -C "$work" CC="$compiler" clean "$program"
[ $# -eq 0 ] || "$work/$program" "$@"
