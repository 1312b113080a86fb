#!/usr/bin/env bash
# Builds the game in release mode and starts it. Until the desktop window exists, it plays a
# short scripted game on the headless driver and says so.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/deps.sh play

cmake -S . -B build/release -G Ninja -DCMAKE_BUILD_TYPE=Release -DCORVALTA_TESTS=OFF -DCORVALTA_BENCH=OFF
cmake --build build/release -j "$(nproc)" --target corvalta-driver
echo "The desktop window is not built yet: playing a short scripted game on the headless driver"
echo "(tools/scripts/demo_game.txt; virtual time, so the 90 seconds pass at once)."
exec build/release/tools/corvalta-driver --seed 1 < tools/scripts/demo_game.txt
