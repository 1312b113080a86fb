#include <corvalta/platform/menu_item.h>
#include <corvalta/shell/menus.h>

#include "store_game.h"

namespace corvalta::testing {
namespace {

using core::Module1;

struct Level {
  const char* button;
  std::int32_t high;
  const char* difficulty;
  const char* op3;
};

constexpr Level kEasy{"Easy", 10, "Easy", "+"};
constexpr Level kMedium{"Medium", 25, "Medium", "+"};
constexpr Level kHard{"Hard", 99, "Hard", "+"};
constexpr Level kVeryHard{"VeryHard", 19, " Very Hard", "/"};

// Whatever the file holds goes through the comparisons: line 1 other than "True" is sound off,
// line 2 other than Easy, Medium or Hard is Very Hard, selected through its handler; the menu
// marks follow the sound. The file is left as it is until the quit writes it clean.
TEST(SettingsFile, ReadThroughTheComparisonsAndWrittenCleanAtTheQuit) {
  struct Case {
    std::string bytes;
    bool sound;
    const Level* level;
    const char* saved;
  };
  const Case cases[] = {
      {"True\nEasy\n", true, &kEasy, "True\nEasy\n"},
      {"False\nMedium\n", false, &kMedium, "False\nMedium\n"},
      {"True\nHard\n", true, &kHard, "True\nHard\n"},
      {"False\nVery Hard\n", false, &kVeryHard, "False\nVery Hard\n"},
      {"True\nVeryHard\n", true, &kVeryHard, "True\nVery Hard\n"},
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
    writeBytes(folder / kSettings, c.bytes);
    Game game(folder.path());
    game.session.app().setMenuBar(shell::makeMenuBar1());
    game.window().getPlist();
    EXPECT_EQ(Module1.SoundFlag, c.sound);
    const platform::MenuItem* bar = game.session.app().MenuBar();
    EXPECT_EQ(bar->Lookup("SoundSoundOn")->Checked, c.sound);
    EXPECT_EQ(bar->Lookup("SoundSoundOff")->Checked, !c.sound);
    for (const char* button : {"Easy", "Medium", "Hard", "VeryHard"}) {
      EXPECT_EQ(game.selected(button), std::string(button) == c.level->button) << button;
    }
    EXPECT_EQ(Module1.High, c.level->high);
    EXPECT_EQ(Module1.Difficulty, c.level->difficulty);
    EXPECT_EQ(game.text("Op3"), c.level->op3);
    EXPECT_EQ(fileBytes(folder / kSettings), c.bytes);
    game.run("quit\n");
    EXPECT_EQ(fileBytes(folder / kSettings), c.saved);
  }
}

}  // namespace
}  // namespace corvalta::testing
