# Builds and runs a program with nothing but what pkg-config says of the installed library.
# Usage: pkg_config.sh PREFIX COMPILER SOURCE PROGRAM
PKG_CONFIG_PATH=$(dirname "$(find "$1" -name pixvane.pc)")
export PKG_CONFIG_PATH
# shellcheck disable=SC2046 # the flags are words
"$2" -std=c11 "$3" -o "$4" $(pkg-config --cflags --libs pixvane)
LD_LIBRARY_PATH=$(pkg-config --variable=libdir pixvane) "$4"
