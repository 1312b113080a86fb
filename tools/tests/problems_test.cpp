#include <corvalta/tools/problems.h>
#include <corvalta/tools/session.h>

#include <gtest/gtest.h>

#include <sstream>

namespace corvalta::tools {
namespace {

// Sampled problems keep the invariants and stay inside each level's ranges.
TEST(Problems, SampledProblemsKeepInvariantsAndRanges) {
  const struct {
    const char* level;
    double low[6], high[6];
  } ranges[] = {
      {"Easy", {5, 3, 2, 1, 1, 2}, {10, 9, 8, 19, 17, 36}},
      {"Medium", {12, 8, 6, 1, 1, 2}, {25, 24, 23, 49, 47, 96}},
      {"Hard", {49, 33, 24, 1, 1, 2}, {99, 98, 97, 197, 195, 392}},
      {"VeryHard", {9, 6, 4, 1, 1, 0.03}, {19, 18, 17, 37, 35, 18.5}},
  };
  for (const auto& range : ranges) {
    SCOPED_TRACE(range.level);
    std::ostringstream quiet;
    Session session(7, quiet, quiet);
    ProblemDrawer drawer(session, range.level);
    ProblemRanges seen;
    for (int i = 0; i < 20'000; ++i) seen.observe(drawer.next());
    EXPECT_EQ(seen.broken(), 0);
    for (std::size_t column = 0; column < 6; ++column) {
      EXPECT_GE(seen.min(column), range.low[column]) << ProblemRanges::kColumns[column];
      EXPECT_LE(seen.max(column), range.high[column]) << ProblemRanges::kColumns[column];
    }
  }
}

}  // namespace
}  // namespace corvalta::tools
