#include "game.h"

#include <corvalta/tools/problems.h>

#include <cmath>
#include <sstream>

namespace corvalta::testing {
namespace {

using core::Module1;

// With their draws queued, the worked problems come out as stated: restarts, the swap, the
// rejected third number, and the whole Very Hard quotient drawn again.
TEST(Problems, WorkedExamples) {
  const struct {
    const char* level;
    const char* draws;
    const char* shown;  // "First Op1 Second Op2 Third: X Y MyAnswer 'Hint'"
  } cases[] = {
      {"Easy", "9 4 3 1 6", "9 + 4 - 3: 13 1 14 ''"},
      {"Easy", "7 7 9 4 3 1 6", "9 + 4 - 3: 13 1 14 ''"},  // an equal pair is drawn again
      {"Easy", "6 9 3 1 6", "9 + 6 - 3: 15 3 18 ''"},      // swapped
      {"Easy", "9 4 4 9 3 10 5", "9 - 4 + 3: 5 7 12 ''"},  // a third not below the second
      {"Hard", "99 33 24 5 5", "99 + 33 + 24: 132 57 189 ''"},
      {"VeryHard", "12 8 4 1 6 10 7 4 6 1", "10 - 7 + 4: 3 11 0.27 '.27'"},  // a whole quotient
      {"VeryHard", "19 18 17 6 1", "19 - 18 + 17: 1 35 0.03 '.03'"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.draws);
    Game game;
    game.run(std::string("press ") + c.level + "\nqueue " + c.draws + "\npress Start\n");
    EXPECT_EQ(game.session.services().random->queuedCount(), 0u);
    const auto& m = Module1;
    std::ostringstream shown;
    shown << game.text("Afield") << ' ' << game.text("Op1") << ' ' << game.text("Bfield") << ' ' << game.text("Op2")
          << ' ' << game.text("Cfield") << ": " << m.X << ' ' << m.Y << ' ' << m.MyAnswer << " '" << game.text("Hint")
          << "'";
    EXPECT_EQ(shown.str(), c.shown);
  }
}

// Hint keeps the last Very Hard text when the level changes; a draw outside the level's bounds
// is a script fault, not a problem on show.
TEST(Problems, HintOutlivesTheLevelAndBadDrawsAreRefused) {
  Game game;
  game.run("press VeryHard\nqueue 10 7 4 6 1\npress Start\npress Stop\npress Easy\nqueue 9 4 3 1 6\npress Start\n");
  EXPECT_EQ(game.text("Hint") + " " + game.text("Op3") + " " + std::to_string(Module1.MyAnswer), ".27 + 14.000000");
  std::istringstream script("press Stop\nqueue 11\npress Start\n");
  EXPECT_EQ(game.session.run(script), 1);
  EXPECT_NE(game.err.str().find("queued draw 11 lies outside 5 to 10"), std::string::npos) << game.err.str();
}

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
  constexpr int kSamples = 20'000;
  for (const auto& range : ranges) {
    SCOPED_TRACE(range.level);
    Game game;
    tools::ProblemDrawer drawer(game.session, range.level);
    tools::ProblemRanges seen;
    for (int i = 0; i < kSamples; ++i) {
      const tools::Problem p = drawer.next();
      seen.observe(p);
      // A Very Hard quotient is never whole; the other levels add.
      const bool veryHard = std::string(range.level) == "VeryHard";
      ASSERT_TRUE(veryHard ? p.MyAnswer != std::floor(p.MyAnswer) : p.MyAnswer == p.X + p.Y);
    }
    EXPECT_EQ(seen.broken(), 0);
    for (std::size_t column = 0; column < 6; ++column) {
      EXPECT_GE(seen.min(column), range.low[column]) << tools::ProblemRanges::kColumns[column];
      EXPECT_LE(seen.max(column), range.high[column]) << tools::ProblemRanges::kColumns[column];
    }
  }
}

}  // namespace
}  // namespace corvalta::testing
