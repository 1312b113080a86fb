// Problems drawn per second at each level, a million each, with the range of every column
// and the count of problems that broke an invariant.
#include <corvalta/tools/problems.h>
#include <corvalta/tools/session.h>

#include <chrono>
#include <iostream>
#include <sstream>

int main(int argc, char** argv) {
  const std::int64_t count = argc > 1 ? std::stoll(argv[1]) : 1'000'000;
  int broken = 0;
  for (const char* level : {"Easy", "Medium", "Hard", "VeryHard"}) {
    std::ostringstream quiet;
    corvalta::tools::Session session(20240601, quiet, std::cerr);
    corvalta::tools::ProblemDrawer drawer(session, level);
    corvalta::tools::ProblemRanges ranges;
    const auto start = std::chrono::steady_clock::now();
    for (std::int64_t i = 0; i < count; ++i) ranges.observe(drawer.next());
    const std::chrono::duration<double> spent = std::chrono::steady_clock::now() - start;
    std::cout << level << ": " << static_cast<std::int64_t>(static_cast<double>(count) / spent.count())
              << " problems/s, " << ranges.count() << " drawn, " << ranges.broken() << " broken; ";
    ranges.print(std::cout);
    std::cout << '\n';
    broken += ranges.broken() > 0 ? 1 : 0;
  }
  return broken == 0 ? 0 : 1;
}
