#include "game.h"

#include <corvalta/tools/problems.h>

#include <gtest/gtest.h>

#include <iostream>

namespace corvalta::testing {
namespace {

using core::Module1;

// With their draws queued, the worked problems come out as stated: restarts, the swap, the
// rejected third number, and the whole Very Hard quotient drawn again.
TEST(Problems, WorkedExamples) {
  struct Case {
    const char* name;
    const char* level;
    const char* draws;
    std::int32_t first, second, third;
    const char *op1, *op2;
    std::int32_t x, y;
    double answer;
    const char* hint;
  };
  const Case cases[] = {
      {"easy", "Easy", "9 4 3 1 6", 9, 4, 3, "+", "-", 13, 1, 14, ""},
      {"equal pair drawn again", "Easy", "7 7 9 4 3 1 6", 9, 4, 3, "+", "-", 13, 1, 14, ""},
      {"swap", "Easy", "6 9 3 1 6", 9, 6, 3, "+", "-", 15, 3, 18, ""},
      {"third not below second", "Easy", "9 4 4 9 3 10 5", 9, 4, 3, "-", "+", 5, 7, 12, ""},
      {"hard", "Hard", "99 33 24 5 5", 99, 33, 24, "+", "+", 132, 57, 189, ""},
      {"whole quotient drawn again", "VeryHard", "12 8 4 1 6 10 7 4 6 1", 10, 7, 4, "-", "+", 3, 11, 0.27, ".27"},
      {"smallest quotient", "VeryHard", "19 18 17 6 1", 19, 18, 17, "-", "+", 1, 35, 0.03, ".03"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    Game game;
    game.run(std::string("press ") + c.level + "\nqueue " + c.draws + "\npress Start\n");
    EXPECT_EQ(game.session.services().random->queuedCount(), 0u);
    const auto& m = Module1;
    EXPECT_EQ(m.First, c.first);
    EXPECT_EQ(m.Second, c.second);
    EXPECT_EQ(m.Third, c.third);
    EXPECT_EQ(game.text("Afield"), std::to_string(c.first));
    EXPECT_EQ(game.text("Bfield"), std::to_string(c.second));
    EXPECT_EQ(game.text("Cfield"), std::to_string(c.third));
    EXPECT_EQ(game.text("Op1"), c.op1);
    EXPECT_EQ(game.text("Op2"), c.op2);
    EXPECT_EQ(m.X, c.x);
    EXPECT_EQ(m.Y, c.y);
    EXPECT_EQ(m.MyAnswer, c.answer);
    EXPECT_EQ(game.text("Hint"), c.hint);
  }
}

// Hint keeps the last Very Hard text when the level changes, and a draw that the bounds
// don't allow is a script fault, not a problem on show.
TEST(Problems, HintOutlivesTheLevelAndBadDrawsAreRefused) {
  {
    Game game;
    game.run("press VeryHard\nqueue 10 7 4 6 1\npress Start\npress Stop\npress Easy\nqueue 9 4 3 1 6\npress Start\n");
    EXPECT_EQ(game.text("Hint"), ".27");
    EXPECT_EQ(Module1.MyAnswer, 14);
    EXPECT_EQ(game.text("Op3"), "+");
  }

  Game bad;
  std::istringstream script("queue 11\npress Start\n");
  EXPECT_EQ(bad.session.run(script), 1);
  EXPECT_NE(bad.err.str().find("queued draw 11 lies outside 5 to 10"), std::string::npos);
}

// Sampled problems keep the invariants and stay inside each level's ranges.
TEST(Problems, SampledProblemsKeepInvariantsAndRanges) {
  struct Range {
    const char* level;
    double low[6];
    double high[6];
  };
  const Range ranges[] = {
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
      if (std::string(range.level) == "VeryHard") {
        ASSERT_NE(p.MyAnswer, static_cast<double>(static_cast<std::int32_t>(p.MyAnswer)));
      } else {
        ASSERT_EQ(p.MyAnswer, p.X + p.Y);
      }
    }
    EXPECT_EQ(seen.broken(), 0);
    for (std::size_t column = 0; column < 6; ++column) {
      EXPECT_GE(seen.min(column), range.low[column]) << tools::ProblemRanges::kColumns[column];
      EXPECT_LE(seen.max(column), range.high[column]) << tools::ProblemRanges::kColumns[column];
    }
    std::cout << range.level << ": ";
    seen.print(std::cout);
    std::cout << '\n';
  }
}

}  // namespace
}  // namespace corvalta::testing
