#!/usr/bin/env bash
# Builds the game in release mode and starts it.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/deps.sh play

cmake -S . -B build/release -G Ninja -DCMAKE_BUILD_TYPE=Release -DCORVALTA_TESTS=OFF -DCORVALTA_BENCH=OFF
cmake --build build/release -j "$(nproc)" --target corvalta
exec build/release/app/corvalta "$@"
