#include <corvalta/platform/menu_item.h>

#include <memory>

#include "store_game.h"
#include "temporary_folder.h"

namespace corvalta::store::testing {
namespace {

using core::Module1;

struct LevelState {
  const char* button;
  std::int32_t high;
  const char* difficulty;
  const char* op3;
};

constexpr LevelState kEasy{"Easy", 10, "Easy", "+"};
constexpr LevelState kMedium{"Medium", 25, "Medium", "+"};
constexpr LevelState kHard{"Hard", 99, "Hard", "+"};
constexpr LevelState kVeryHard{"VeryHard", 19, " Very Hard", "/"};

void expectLevel(StoreGame& game, const LevelState& level) {
  for (const char* button : {"Easy", "Medium", "Hard", "VeryHard"}) {
    EXPECT_EQ(game.selected(button), std::string(button) == level.button) << button;
  }
  EXPECT_EQ(Module1.High, level.high);
  EXPECT_EQ(Module1.Difficulty, level.difficulty);
  EXPECT_EQ(game.text("Op3"), level.op3);
}

// A first run writes "True" and "Easy" and comes up with sound on, both menu marks set to
// match, Easy selected through its handler.
TEST(SettingsFile, FirstRunWritesTheDefaults) {
  TemporaryFolder folder;
  StoreGame game(folder / "config");
  EXPECT_EQ(fileBytes(folder / "config/corvalta.plist"), "True\nEasy\n");
  EXPECT_TRUE(Module1.SoundFlag);
  expectLevel(game, kEasy);

  auto bar = std::make_shared<platform::MenuItem>("MenuBar1");
  auto sound = std::make_shared<platform::MenuItem>("SoundMenu");
  sound->Append(std::make_shared<platform::MenuItem>("SoundSoundOn"));
  sound->Append(std::make_shared<platform::MenuItem>("SoundSoundOff"));
  bar->Append(sound);
  game.session.app().setMenuBar(bar);
  bar->Lookup("SoundSoundOff")->Checked = true;
  game.window().getPlist();
  EXPECT_TRUE(bar->Lookup("SoundSoundOn")->Checked);
  EXPECT_FALSE(bar->Lookup("SoundSoundOff")->Checked);
}

// Each of the eight settings is written as its two lines when the program quits and is what
// the next run comes up with.
TEST(SettingsFile, EachSettingIsSavedAtQuitAndRestored) {
  struct Case {
    bool sound;
    const LevelState* level;
    const char* bytes;
  };
  const Case cases[] = {
      {true, &kEasy, "True\nEasy\n"},          {false, &kEasy, "False\nEasy\n"},
      {true, &kMedium, "True\nMedium\n"},      {false, &kMedium, "False\nMedium\n"},
      {true, &kHard, "True\nHard\n"},          {false, &kHard, "False\nHard\n"},
      {true, &kVeryHard, "True\nVery Hard\n"}, {false, &kVeryHard, "False\nVery Hard\n"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.bytes);
    TemporaryFolder folder;
    {
      StoreGame game(folder.path());
      game.run(std::string("press ") + c.level->button + "\nmenu " +
               (c.sound ? "SoundSoundOn" : "SoundSoundOff") + "\nquit\n");
    }
    EXPECT_EQ(fileBytes(folder / "corvalta.plist"), c.bytes);
    StoreGame again(folder.path());
    EXPECT_EQ(Module1.SoundFlag, c.sound);
    expectLevel(again, *c.level);
  }
}

// Whatever a damaged file holds goes through the comparisons: line 1 other than "True" is
// sound off, line 2 other than Easy, Medium or Hard is Very Hard. The next save writes a
// clean file.
TEST(SettingsFile, DamagedFilesReadThroughTheComparisons) {
  struct Case {
    std::string bytes;
    bool sound;
    const LevelState* level;
    const char* saved;
  };
  const Case cases[] = {
      {"True\nVeryHard\n", true, &kVeryHard, "True\nVery Hard\n"},
      {"True\n Very Hard\n", true, &kVeryHard, "True\nVery Hard\n"},
      {"False\nSimple\n", false, &kVeryHard, "False\nVery Hard\n"},
      {"True", true, &kVeryHard, "True\nVery Hard\n"},
      {"", false, &kVeryHard, "False\nVery Hard\n"},
      {"True \nEasy\n", false, &kEasy, "False\nEasy\n"},
      {"true\neasy\n", false, &kVeryHard, "False\nVery Hard\n"},
      {"True\r\nHard\r\n", true, &kHard, "True\nHard\n"},
      {"False\rMedium\r", false, &kMedium, "False\nMedium\n"},
      {"True\nMedium\nthird\nfourth\n", true, &kMedium, "True\nMedium\n"},
      {std::string("\xff\xfe\x00\x01\nHard", 9), false, &kHard, "False\nHard\n"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(::testing::PrintToString(c.bytes));
    TemporaryFolder folder;
    writeBytes(folder / "corvalta.plist", c.bytes);
    StoreGame game(folder.path());
    EXPECT_EQ(Module1.SoundFlag, c.sound);
    expectLevel(game, *c.level);
    EXPECT_EQ(fileBytes(folder / "corvalta.plist"), c.bytes);
    game.run("quit\n");
    EXPECT_EQ(fileBytes(folder / "corvalta.plist"), c.saved);
  }
}

}  // namespace
}  // namespace corvalta::store::testing
