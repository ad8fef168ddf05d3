#!/usr/bin/env bash
# Builds the consumer with what pkg-config says, and runs it.
#
# Usage: pkg-config.sh SOURCE DIRECTORY PREFIX LIBDIR COMPILER [FLAG...]
set -euo pipefail

source=$1 directory=$2 prefix=$3 libdir=$4 compiler=$5
flags=("${@:6}")

mkdir -p "$directory"
cd "$directory"
export PKG_CONFIG_PATH=$prefix/$libdir/pkgconfig
pkg-config --exists --print-errors 'Board-1.0 >= 1.0'
read -ra cflags < <(pkg-config --cflags Board-1.0)
read -ra libs < <(pkg-config --libs Board-1.0)
"$compiler" -std=c++17 "${flags[@]}" "${cflags[@]}" "$source" -o consumer "${libs[@]}"
LD_LIBRARY_PATH=$prefix/$libdir ./consumer
