#include "game_support.h"

#include <corvalta/core/sounds.h>
#include <corvalta/platform/view_observer.h>
#include <corvalta/shell/sound_lengths.h>

#include <gtest/gtest.h>

#include <algorithm>

namespace corvalta::core::testing {
namespace {

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
  EXPECT_EQ(game.timerMode(), 0);
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
  EXPECT_EQ(game.window().control<platform::StaticText>("Banner").Visible(), expected.banner);
  EXPECT_EQ(game.text("GamePoints"), expected.points);
  EXPECT_EQ(game.window().focus(), nullptr);
}

void expectRunning(Game& game) {
  EXPECT_EQ(game.timerMode(), 2);
  EXPECT_FALSE(game.enabled("Start"));
  EXPECT_FALSE(game.isDefault("Start"));
  for (const char* field : {"SubAnswer1", "SubAnswer2", "Answer"}) EXPECT_TRUE(game.enabled(field)) << field;
  EXPECT_FALSE(game.enabled("GroupBox1"));
  EXPECT_FALSE(game.window().control<platform::StaticText>("Banner").Visible());
  EXPECT_NE(game.text("Afield"), "");
}

// A whole game at each level: Idle at launch, Running after Start with the countdown from 90
// to 0, right answers scored by level, the time-out measured once with the name entry
// between Microwave's end and Applause, then Idle with the score on show; Stop clears it.
TEST(GameFlow, WholeGameAtEachLevel) {
  struct Case {
    const char* level;
    const char* draws;
    const char* answer;
    std::int32_t worth;
    std::int32_t high;
    const char* difficulty;
    const char* op3;
  };
  const Case cases[] = {
      {"Easy", "9 4 3 10 5", "12", 1, 10, "Easy", "+"},
      {"Medium", "20 10 8 1 1", "48", 3, 25, "Medium", "+"},
      {"Hard", "99 33 24 5 5", "189", 5, 99, "Hard", "+"},
      {"VeryHard", "10 7 4 6 1", "0.27", 10, 19, " Very Hard", "/"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.level);
    Game game;
    expectIdle(game, {false, "0"});
    Recorder recorder(game, {"Time.Text"});
    game.run(std::string("press ") + c.level + "\n");
    EXPECT_EQ(Module1.High, c.high);
    EXPECT_EQ(Module1.Difficulty, c.difficulty);
    EXPECT_EQ(game.text("Op3"), c.op3);
    game.run(std::string("queue ") + c.draws + "\npress Start\n");
    expectRunning(game);
    EXPECT_EQ(game.text("Time"), "90");
    // Two right answers and a wrong one, a few seconds apart.
    game.run(std::string("advance 3000\nqueue ") + c.draws + "\ntype Answer " + c.answer +
             "\nkey Return\nadvance 2000\ntype Answer " + c.answer + "\nkey Return\ntype Answer 1\nkey Return\n");
    EXPECT_EQ(Module1.Points, 2 * c.worth);
    expectRunning(game);
    game.run("press Easy\n");  // the group is disabled in a game
    EXPECT_EQ(Module1.High, c.high);
    // The time-out: the name entry reads the lines after the advance, which stops short of
    // the applause's end.
    game.run("advance 86000\ntype NameField Ann\npress Congratulations.Enter\n");
    EXPECT_EQ(Module1.Name, "Ann");
    EXPECT_FALSE(Module1.NewHighScoreFlag);
    expectIdle(game, {true, std::to_string(2 * c.worth)});
    EXPECT_EQ(Module1.Points, 2 * c.worth);
    EXPECT_EQ(Module1.Seconds, 0);

    std::vector<std::string> countdown;
    for (const auto& entry : recorder.log) countdown.push_back(entry.substr(0, entry.find('@')));
    std::vector<std::string> expected;
    for (int s = 90; s >= 0; --s) expected.push_back("Time.Text=" + std::to_string(s));
    EXPECT_EQ(countdown, expected);
    EXPECT_EQ(recorder.log.back(), "Time.Text=0@90000");

    const auto& played = game.session.services().sounds.played();
    ASSERT_EQ(played.size(), 4u);
    EXPECT_EQ(played[0].number, kOK3Sound);
    EXPECT_EQ(played[1].number, kOK3Sound);
    EXPECT_EQ(played[2].number, kMicrowaveSound);
    EXPECT_EQ(played[2].start.count(), 90000);
    EXPECT_EQ(played[3].number, kApplauseSound);
    EXPECT_EQ(played[3].start, played[2].end);
    // Idle again while the applause still plays.
    EXPECT_LT(game.now(), played[3].end.count());

    game.run("press Stop\n");
    expectIdle(game, {false, "0"});
    EXPECT_EQ(Module1.Points, 0);
    game.run("press Stop\n");
    expectIdle(game, {false, "0"});
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
      {"no points", "", "", {kMicrowaveSound}, 100000 + shell::kMicrowaveLength.count(), "", false},
      {"sound off", "menu SoundSoundOff\nqueue 9 4 3 10 5\n", "type NameField Cy\npress Enter\n", {}, 100000, "Cy", false},
      {"close box", "queue 9 4 3 10 5\n", "type NameField Di\nclose Congratulations\n",
       {kOK3Sound, kMicrowaveSound, kApplauseSound}, 100000 + shell::kMicrowaveLength.count(), "", true},
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
}  // namespace corvalta::core::testing
