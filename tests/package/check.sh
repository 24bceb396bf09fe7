#!/bin/sh
# Installs the built library into a scratch prefix, then builds and runs a
# program against it twice: through find_package and through pkg-config.
set -e
build="$1"; src="$2"; work="$3"
rm -rf "$work"; mkdir -p "$work"
cmake --install "$build" --prefix "$work/prefix" >/dev/null
cmake -S "$src" -B "$work/consumer" -DCMAKE_PREFIX_PATH="$work/prefix" >/dev/null
cmake --build "$work/consumer" >/dev/null
LD_LIBRARY_PATH="$work/prefix/lib:$work/prefix/lib64" "$work/consumer/consumer"
readelf -d "$work/prefix"/lib*/libvelmarin.so | grep -q 'SONAME.*libvelmarin.so.1'
pc=$(PKG_CONFIG_PATH="$work/prefix/lib/pkgconfig:$work/prefix/lib64/pkgconfig" \
  pkg-config --define-variable=prefix="$work/prefix" --cflags --libs velmarin)
c++ -std=c++17 "$src/consumer.cpp" -o "$work/consumer-pc" $pc
LD_LIBRARY_PATH="$work/prefix/lib:$work/prefix/lib64" "$work/consumer-pc"
# The installed C header is whole: a C99 program includes it alone.
printf '#include "velmarin.h"\nint main(void) { return velmarin_version() == 0; }\n' >"$work/host.c"
cc -std=c99 -Wall -Wextra -Werror -pedantic "$work/host.c" -o "$work/host-c" -I"$work/prefix/include/velmarin" \
  -L"$work/prefix/lib" -L"$work/prefix/lib64" -lvelmarin
LD_LIBRARY_PATH="$work/prefix/lib:$work/prefix/lib64" "$work/host-c"
