#include "game.h"

#include <corvalta/platform/view_observer.h>

namespace corvalta::testing {
namespace {

using core::Module1;
using Log = std::vector<std::string>;

// Logs "text@ms" each time the countdown shows a new text.
struct CountdownRecorder : platform::ViewObserver {
  explicit CountdownRecorder(Game& g) : game(g) { game.app.setObserver(this); }
  ~CountdownRecorder() override { game.app.setObserver(nullptr); }
  void propertyChanged(platform::PaneChild& child, std::string_view property) override {
    if (child.key() != "Time" || property != "Text") return;
    log.push_back(std::get<std::string>(*child.property(property)) + "@" +
                  std::to_string(game.now()));
  }
  Game& game;
  Log log;
};

std::string idle(const std::string& points, bool banner) {
  return "timer 0 Start+* Enter- SubAnswer1-'' SubAnswer2-'' Answer-'' levels+ no problem time 0" +
         std::string(banner ? " banner" : "") + " points " + points + " focus none";
}

// A whole game: Idle at launch, Running after Start with the countdown from 90 to 0, right
// answers scored, the level locked. The last tick falls due while the last right answer waits
// for OK3 and comes after it, so the time-out counts that answer; it is measured once, with the
// name entry between Microwave's end and Applause, then Idle with the score on show; Stop
// clears it.
TEST(GameFlow, WholeGame) {
  Game game;
  EXPECT_EQ(game.view(), idle("0", false));
  CountdownRecorder countdown(game);
  game.run("queue 9 4 3 10 5\npress Start\n");
  const std::string running =
      "timer 2 Start- Enter- SubAnswer1+'' SubAnswer2+'' Answer+'' levels- problem";
  EXPECT_EQ(game.view(), running + " time 90 points 0 focus SubAnswer1");
  game.run("advance 3000\nqueue 9 4 3 10 5\ntype Answer 12\nkey Return\nadvance 2000\n"
           "type Answer 12\nkey Return\nqueue 9 4 3 10 5\ntype Answer 1\nkey Return\n"
           "press Hard\n");
  EXPECT_EQ(game.view(), running + " time 85 points 2 focus SubAnswer1");
  EXPECT_EQ(Module1.High, 10);
  // The name entry reads the lines after the answer, which the time-out interrupts.
  game.run("advance 84420\ntype Answer 12\nkey Return\ntype NameField Ann\n"
           "press Congratulations.Enter\n");
  EXPECT_EQ(
      Module1.Name + std::to_string(Module1.NewHighScoreFlag) + std::to_string(Module1.Seconds),
      "Ann00");
  EXPECT_EQ(game.view(), idle("3", true));

  Log expected;
  for (int s = 90; s > 0; --s)
    expected.push_back(std::to_string(s) + "@" + std::to_string(90000 - s * 1000));
  expected.push_back("0@90140");
  EXPECT_EQ(countdown.log, expected);
  // OK3 is 168 (240 ms), Microwave 170 (1200 ms), Applause 169 (2500 ms).
  Log sounds;
  for (const auto& p : game.services.sounds.played())
    sounds.push_back(std::to_string(p.number) + "@" + std::to_string(p.start.count()) + "-" +
                     std::to_string(p.end.count()));
  EXPECT_EQ(sounds, (Log{"168@3000-3240", "168@5240-5480", "168@89900-90140", "170@90140-91340",
                         "169@91340-93840"}));
  // Idle again while the applause still plays.
  EXPECT_LT(game.now(), game.services.sounds.played().back().end.count());

  for (int twice = 0; twice < 2; ++twice) {
    game.run("press Stop\n");
    EXPECT_EQ(game.view(), idle("0", false));
    EXPECT_EQ(Module1.Points, 0);
  }
}

}  // namespace
}  // namespace corvalta::testing
