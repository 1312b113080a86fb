#include "game.h"

#include <corvalta/platform/user_input.h>

namespace corvalta::testing {
namespace {

using core::Module1;

// A typed answer is rounded to two decimals and compared exactly; only a positive number
// arms Enter; every submission scores or not, clears the fields and puts up a new problem.
TEST(Answers, TypedAnswersAreJudged) {
  // The problem on show: Easy 12, Medium 48, Hard 189, Very Hard 0.27; points after Return.
  const struct { const char *level, *draws, *typed; bool armed; std::int32_t points; } cases[] = {
      {"Easy", "9 4 3 10 5", "12", true, 1},         {"Easy", "9 4 3 10 5", "0", false, 0},
      {"Easy", "9 4 3 10 5", "-12", false, 0},       {"Medium", "20 10 8 1 1", "48", true, 3},
      {"Hard", "99 33 24 5 5", "189", true, 5},      {"VeryHard", "10 7 4 6 1", "0.27", true, 10},
      {"VeryHard", "10 7 4 6 1", "0.265", true, 10}, {"VeryHard", "10 7 4 6 1", "0.2649", true, 0},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.level) + " '" + c.typed + "'");
    Game game;
    game.run(std::string("press ") + c.level + "\nqueue " + c.draws + "\npress Start\n" +
             "type Answer " + c.typed + "\n");
    EXPECT_NE(game.view().find(c.armed ? " Enter+* " : " Enter- "), std::string::npos);
    game.run(std::string("queue ") + c.draws + "\nkey Return\n");
    EXPECT_EQ(Module1.Points, c.points);
    // Return with no default button puts up no new problem.
    EXPECT_EQ(game.services.random->queuedCount(), c.armed ? 0u : 5u);
  }
}

// An armed Enter stays armed when the field is emptied or turns non-positive, and that
// submission counts as wrong.
TEST(Answers, ArmedEnterStaysArmed) {
  Game game;
  game.run("queue 9 4 3 10 5\npress Start\ntype Answer 12\ntype Answer\n");
  const bool armedEmpty = game.enabled("Enter");
  game.run("type Answer -4\n");
  EXPECT_EQ(std::to_string(armedEmpty) + std::to_string(game.enabled("Enter")), "11");
  game.run("queue 9 4 3 10 5\npress Enter\n");
  EXPECT_EQ(std::to_string(Module1.Points) + " " + std::to_string(Module1.HisAnswer),
            "0 -4.000000");
}

// Nothing typed into Answer crashes the game or scores by accident.
TEST(Answers, AnyTextIsSafe) {
  const std::string hostile[] = {
      "1e400", "-1e400", "1e-400", "nan", "inf", "\xFF\xFE\xC3", std::string(400, '9'),
      "1" + std::string(300, '0') + ".5", "\t\r\n", "--12", "+.e5", ".", "0x1F", "1,5",
      "\xE2\x80\x8B" "12"};
  Game game;
  game.run("queue 9 4 3 10 5\npress Start\n");
  for (const auto& text : hostile) {
    SCOPED_TRACE(text.substr(0, 20));
    game.run("type Answer 5\nqueue 9 4 3 10 5\n");
    platform::typeText(game.app, "Window1", "Answer", text);
    game.run("press Enter\n");
    EXPECT_EQ(std::to_string(Module1.Points) + " '" + game.text("Answer") + "'", "0 ''");
  }
}

}  // namespace
}  // namespace corvalta::testing
