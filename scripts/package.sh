#!/usr/bin/env bash
# Builds what the Debian package holds, in release mode with Debian's hardening flags, and
# makes the package: BUILD_FOLDER/corvalta_*.deb (build/release unless given).
#   scripts/package.sh [--no-deps] [BUILD_FOLDER]
# --no-deps leaves the machine's packages alone (the package tests build this way).
set -euo pipefail
cd "$(dirname "$0")/.."

[[ ${1:-} == --no-deps ]] && shift || scripts/deps.sh package
build=${1:-build/release}

# Debian's flags as dpkg-buildflags gives them, with every hardening feature (bindnow too).
# CMake reads no CPPFLAGS, so the preprocessor's part (_FORTIFY_SOURCE) goes with the
# compiler's; passed on the command line, they also reach a tree configured before.
flag() { DEB_BUILD_MAINT_OPTIONS=hardening=+all dpkg-buildflags --get "$1"; }
cxxflags="$(flag CPPFLAGS) $(flag CXXFLAGS)" ldflags=$(flag LDFLAGS)
# The program goes where Debian puts games; its data stays in share/corvalta beside that
# folder, where the program looks for it.
cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX=/usr \
  -DCMAKE_CXX_FLAGS="$cxxflags" -DCMAKE_EXE_LINKER_FLAGS="$ldflags" \
  -DCMAKE_SHARED_LINKER_FLAGS="$ldflags" -DCMAKE_MODULE_LINKER_FLAGS="$ldflags" \
  -DCMAKE_INSTALL_BINDIR=games -DCORVALTA_TESTS=OFF -DCORVALTA_BENCH=OFF \
  -DCMAKE_SKIP_INSTALL_ALL_DEPENDENCY=ON
# The program (which brings its sounds), the icons and the documents; not the
# driver, the HTTP tool or the benchmarks.
cmake --build "$build" -j "$(nproc)" --target corvalta corvalta_icons corvalta_docs
cd "$build"
cpack
