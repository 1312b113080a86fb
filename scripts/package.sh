#!/usr/bin/env bash
# Builds the game in release mode and makes its Debian package, build/release/corvalta_*.deb.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/deps.sh package

cmake -S . -B build/release -G Ninja -DCMAKE_BUILD_TYPE=Release -DCORVALTA_TESTS=OFF -DCORVALTA_BENCH=OFF
cmake --build build/release -j "$(nproc)"
cd build/release
cpack
