#include "game.h"

#include <corvalta/core/sounds.h>
#include <corvalta/platform/view_observer.h>
#include <corvalta/shell/sound_lengths.h>

#include <gtest/gtest.h>

#include <algorithm>

namespace corvalta::testing {
namespace {

using core::Module1;

// Logs "Control.Property=value@ms" for the properties a test follows.
class Recorder : public platform::ViewObserver {
 public:
  Recorder(Game& game, std::vector<std::string> followed) : game_(game), followed_(std::move(followed)) {
    game_.session.app().setObserver(this);
  }
  ~Recorder() override { game_.session.app().setObserver(nullptr); }

  void propertyChanged(platform::PaneChild& child, std::string_view property) override {
    const std::string key = child.key() + "." + std::string(property);
    if (std::find(followed_.begin(), followed_.end(), key) == followed_.end()) return;
    std::string value;
    const auto* v = child.property(property);
    if (const auto* s = std::get_if<std::string>(v)) value = *s;
    if (const auto* b = std::get_if<bool>(v)) value = *b ? "True" : "False";
    if (const auto* i = std::get_if<std::int32_t>(v)) value = std::to_string(*i);
    log.push_back(key + "=" + value + "@" + std::to_string(game_.now()));
  }

  std::vector<std::string> log;

 private:
  Game& game_;
  std::vector<std::string> followed_;
};

struct IdleState {
  bool banner;
  std::string points;
};

void expectIdle(Game& game, const IdleState& expected) {
  EXPECT_EQ(game.control<platform::Timer>("Timer1").Mode(), 0);
  EXPECT_TRUE(game.enabled("Start"));
  EXPECT_TRUE(game.isDefault("Start"));
  EXPECT_FALSE(game.enabled("Enter"));
  EXPECT_FALSE(game.isDefault("Enter"));
  for (const char* field : {"SubAnswer1", "SubAnswer2", "Answer"}) {
    EXPECT_EQ(game.text(field), "") << field;
    EXPECT_FALSE(game.enabled(field)) << field;
  }
  for (const char* field : {"Afield", "Bfield", "Cfield"}) EXPECT_EQ(game.text(field), "") << field;
  EXPECT_TRUE(game.enabled("GroupBox1"));
  EXPECT_EQ(game.text("Time"), "0");
  EXPECT_EQ(game.control<platform::StaticText>("Banner").Visible(), expected.banner);
  EXPECT_EQ(game.text("GamePoints"), expected.points);
  EXPECT_EQ(game.window().focus(), nullptr);
}

void expectRunning(Game& game) {
  EXPECT_EQ(game.control<platform::Timer>("Timer1").Mode(), 2);
  EXPECT_FALSE(game.enabled("Start"));
  EXPECT_FALSE(game.isDefault("Start"));
  for (const char* field : {"SubAnswer1", "SubAnswer2", "Answer"}) EXPECT_TRUE(game.enabled(field)) << field;
  EXPECT_FALSE(game.enabled("GroupBox1"));
  EXPECT_FALSE(game.control<platform::StaticText>("Banner").Visible());
  EXPECT_NE(game.text("Afield"), "");
}

// A whole game: Idle at launch, Running after Start with the countdown from 90 to 0, right
// answers scored, the time-out measured once with the name entry between Microwave's end and
// Applause, then Idle with the score on show; Stop clears it.
TEST(GameFlow, WholeGame) {
  Game game;
  expectIdle(game, {false, "0"});
  Recorder recorder(game, {"Time.Text"});
  game.run("queue 9 4 3 10 5\npress Start\n");
  expectRunning(game);
  EXPECT_EQ(game.text("Time"), "90");
  // Two right answers and a wrong one, a few seconds apart.
  game.run("advance 3000\nqueue 9 4 3 10 5\ntype Answer 12\nkey Return\nadvance 2000\n"
           "type Answer 12\nkey Return\ntype Answer 1\nkey Return\n");
  EXPECT_EQ(Module1.Points, 2);
  expectRunning(game);
  game.run("press Hard\n");  // the group is disabled in a game
  EXPECT_EQ(Module1.High, 10);
  // The time-out: the name entry reads the lines after the advance, which stops short of the
  // applause's end.
  game.run("advance 86000\ntype NameField Ann\npress Congratulations.Enter\n");
  EXPECT_EQ(Module1.Name, "Ann");
  EXPECT_FALSE(Module1.NewHighScoreFlag);
  expectIdle(game, {true, "2"});
  EXPECT_EQ(Module1.Seconds, 0);

  std::vector<std::string> expected;
  for (int s = 90; s >= 0; --s) expected.push_back("Time.Text=" + std::to_string(s));
  std::vector<std::string> countdown;
  for (const auto& entry : recorder.log) countdown.push_back(entry.substr(0, entry.find('@')));
  EXPECT_EQ(countdown, expected);
  EXPECT_EQ(recorder.log.back(), "Time.Text=0@90000");

  const auto& played = game.session.services().sounds.played();
  ASSERT_EQ(played.size(), 4u);
  EXPECT_EQ(played[0].number, core::kOK3Sound);
  EXPECT_EQ(played[1].number, core::kOK3Sound);
  EXPECT_EQ(played[2].number, core::kMicrowaveSound);
  EXPECT_EQ(played[2].start.count(), 90000);
  EXPECT_EQ(played[3].number, core::kApplauseSound);
  EXPECT_EQ(played[3].start, played[2].end);
  // Idle again while the applause still plays.
  EXPECT_LT(game.now(), played[3].end.count());

  for (int twice = 0; twice < 2; ++twice) {
    game.run("press Stop\n");
    expectIdle(game, {false, "0"});
    EXPECT_EQ(Module1.Points, 0);
  }
}

// A tick that falls due while Enter_Action waits for OK3 arrives after the handler has
// returned: the last tick of a game is measured with the points of that answer.
TEST(GameFlow, LastTickDuringTheWaitForOK3CountsThatAnswer) {
  Game game;
  Recorder recorder(game, {"GamePoints.Text", "Time.Text", "Banner.Visible"});
  game.run("queue 9 4 3 10 5\npress Start\nadvance 89900\ntype Answer 12\nkey Return\n"
           "type NameField Bo\npress Enter\n");
  const std::string chimeEnd = "@" + std::to_string(89900 + shell::kOK3Length.count());
  const std::vector<std::string> tail(recorder.log.end() - 4, recorder.log.end());
  EXPECT_EQ(tail, (std::vector<std::string>{"Time.Text=1@89000", "GamePoints.Text=1" + chimeEnd,
                                            "Time.Text=0" + chimeEnd, "Banner.Visible=True" + chimeEnd}));
  EXPECT_EQ(Module1.Points, 1);
  EXPECT_EQ(Module1.Name, "Bo");
  expectIdle(game, {true, "1"});
}

// Time-outs that skip parts: no points (no name entry), sound off (no waits, no applause),
// and the name entry shut with its close box (applause and Idle all the same).
TEST(GameFlow, TimeOutVariants) {
  struct Case {
    const char* name;
    const char* before;
    const char* after;  // lines for the name entry
    std::vector<std::int32_t> sounds;
    std::int64_t endsAt;  // after the time-out and ten more seconds
    std::string nameAfter;
    bool flagAfter;
  };
  const Case cases[] = {
      {"no points", "", "", {core::kMicrowaveSound}, 100000 + shell::kMicrowaveLength.count(), "", false},
      {"sound off", "menu SoundSoundOff\nqueue 9 4 3 10 5\n", "type NameField Cy\npress Enter\n", {}, 100000, "Cy", false},
      {"close box", "queue 9 4 3 10 5\n", "type NameField Di\nclose Congratulations\n",
       {core::kOK3Sound, core::kMicrowaveSound, core::kApplauseSound}, 100000 + shell::kMicrowaveLength.count(),
       "", true},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    Game game;
    std::string script = std::string(c.before) + "press Start\n";
    if (std::string(c.before).find("queue") != std::string::npos) script += "type Answer 12\nkey Return\n";
    game.run(script + "advance 90000\n" + c.after + "advance 10000\n");
    std::vector<std::int32_t> sounds;
    for (const auto& played : game.session.services().sounds.played()) sounds.push_back(played.number);
    EXPECT_EQ(sounds, c.sounds);
    EXPECT_EQ(Module1.Name, c.nameAfter);
    EXPECT_EQ(Module1.NewHighScoreFlag, c.flagAfter);
    EXPECT_EQ(game.now(), c.endsAt);
    expectIdle(game, {true, Module1.Points > 0 ? "1" : "0"});
  }
}

}  // namespace
}  // namespace corvalta::testing
