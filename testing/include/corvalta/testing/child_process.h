#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <vector>

namespace corvalta::testing {

// A program run to its end in a fresh process, as a user starts it, with the kernel's account of
// it: what the benchmarks time the shipped programs and their peers by.
struct ChildRun {
  std::chrono::steady_clock::time_point started;  // just before the process was made
  double wallSeconds = 0;
  double cpuMilliseconds = 0;  // user and system
  long peakKilobytes = 0;
  bool exitedZero = false;
  std::string output;  // its standard output, unless it went to a file
};

// Runs `arguments` (the program looked up on PATH) with `input` on its standard input, then
// its end, and its standard output written to `outputFile`, or kept in `output` without one.
// A program that can't be started ends the benchmark.
ChildRun runChild(const std::vector<std::string>& arguments, const std::string& input = {},
                  const std::optional<std::string>& outputFile = std::nullopt);

}  // namespace corvalta::testing
