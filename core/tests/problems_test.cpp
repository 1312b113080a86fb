#include "game.h"

#include <sstream>

namespace corvalta::testing {
namespace {

using core::Module1;

// With their draws queued, the worked problems come out as stated: restarts, the swap, the
// rejected third number, and the whole Very Hard quotient drawn again.
TEST(Problems, WorkedExamples) {
  // shown: "First Op1 Second Op2 Third: X Y MyAnswer 'Hint'"
  const struct { const char *level, *draws, *shown; } cases[] = {
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
    EXPECT_EQ(game.services.random->queuedCount(), 0u);
    std::ostringstream shown;
    for (const char* label : {"Afield", "Op1", "Bfield", "Op2"}) shown << game.text(label) << ' ';
    shown << game.text("Cfield") << ": " << Module1.X << ' ' << Module1.Y << ' '
          << Module1.MyAnswer << " '" << game.text("Hint") << "'";
    EXPECT_EQ(shown.str(), c.shown);
  }
}

// A level chosen between games sets the operator shown and the kind of answer, and Hint keeps
// the last Very Hard text; a draw outside the level's bounds is a script fault, not a problem on
// show.
TEST(Problems, LevelChangesBetweenGamesAndBadDrawsAreRefused) {
  Game game;
  game.run("press VeryHard\nqueue 10 7 4 6 1\npress Start\npress Stop\n"
           "press Easy\nqueue 9 4 3 1 6\npress Start\n");
  EXPECT_EQ(game.text("Hint") + " " + game.text("Op3") + " " + std::to_string(Module1.MyAnswer),
            ".27 + 14.000000");
  std::istringstream script("press Stop\nqueue 11\npress Start\n");
  EXPECT_EQ(game.script.run(script), 1);
  EXPECT_NE(game.err.str().find("queued draw 11 lies outside 5 to 10"), std::string::npos)
      << game.err.str();
}

}  // namespace
}  // namespace corvalta::testing
