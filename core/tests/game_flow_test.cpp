#include "game.h"

#include <corvalta/platform/view_observer.h>

#include <algorithm>

namespace corvalta::testing {
namespace {

using core::Module1;
using Log = std::vector<std::string>;

// Logs "Control.Property=value@ms" for the properties a test follows.
struct Recorder : platform::ViewObserver {
  Recorder(Game& g, Log f) : game(g), followed(std::move(f)) { game.app.setObserver(this); }
  ~Recorder() override { game.app.setObserver(nullptr); }
  void propertyChanged(platform::PaneChild& child, std::string_view property) override {
    const std::string key = child.key() + "." + std::string(property);
    if (std::find(followed.begin(), followed.end(), key) == followed.end()) return;
    const auto* v = child.property(property);
    const auto* b = std::get_if<bool>(v);
    const std::string value = b ? (*b ? "True" : "False") : std::get<std::string>(*v);
    log.push_back(key + "=" + value + "@" + std::to_string(game.now()));
  }
  Game& game;
  Log followed, log;
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
  Recorder recorder(game, {"Time.Text"});
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
    expected.push_back("Time.Text=" + std::to_string(s) + "@" + std::to_string(90000 - s * 1000));
  expected.push_back("Time.Text=0@90140");
  EXPECT_EQ(recorder.log, expected);
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
