#!/usr/bin/env bash
# Builds everything under AddressSanitizer and UndefinedBehaviorSanitizer and runs every test,
# then builds the fuzzers with clang and gives each a short smoke run.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/deps.sh test

jobs=$(nproc)
export ASAN_OPTIONS="detect_leaks=1:abort_on_error=1:strict_string_checks=1:detect_stack_use_after_return=1"
export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"
export LSAN_OPTIONS="suppressions=$PWD/scripts/lsan.supp:print_suppressions=0"
export QT_QPA_PLATFORM=offscreen

# The program under test asks a server on this machine for its updates, so that the end-to-end
# test can serve it; the port follows from the checkout's path, so that checkouts side by side
# don't meet, and lies below the ports the system hands out for outgoing connections.
update_port=$((20000 + $(printf '%s' "$PWD" | cksum | cut -d' ' -f1) % 12000))
cmake -S . -B build/test -G Ninja -DCMAKE_BUILD_TYPE=Debug -DCORVALTA_SANITIZE=ON -DCORVALTA_WERROR=ON \
  -DCORVALTA_UPDATE_HOST=127.0.0.1 -DCORVALTA_UPDATE_PORT="$update_port"
cmake --build build/test -j "$jobs"
ctest --test-dir build/test --output-on-failure -j "$jobs" --timeout 600

CXX=clang++ cmake -S . -B build/fuzz -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
  -DCORVALTA_FUZZ=ON -DCORVALTA_WERROR=ON -DCORVALTA_TESTS=OFF -DCORVALTA_BENCH=OFF
cmake --build build/fuzz -j "$jobs" --target fuzzers
ctest --test-dir build/fuzz --output-on-failure -j "$jobs"
