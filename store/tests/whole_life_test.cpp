#include "store_game.h"

namespace corvalta::testing {
namespace {

using core::Module1;

// A whole life on the driver: the first start makes the folder and both files with their
// defaults; Very Hard, sound off and a top-ten game are on disk after the quit, and the next
// start comes up with them: the level cell with its leading blank, the name as typed.
TEST(WholeLife, SettingsAndScoreSurviveARestart) {
  TemporaryFolder home;
  const std::string folder = home / "config";
  const Rows table = entered(defaultRows(), 0, {"Zo\xc3\xab", " Very Hard", "10"});  // Zoë, typed
  {
    Game first(folder);
    EXPECT_EQ(fileBytes(folder + "/" + kSettings), "True\nEasy\n");
    EXPECT_EQ(fileBytes(folder + "/" + kScores), tableText(defaultRows()));
    first.run(std::string("press VeryHard\nmenu SoundSoundOff\n") + kRightAnswerAtVeryHard +
              "advance 90000\ntype NameField Zo\xc3\xab\npress Enter\n");
    EXPECT_EQ(fileBytes(folder + "/" + kScores), tableText(table)) << "on disk at once";
    EXPECT_EQ(fileBytes(folder + "/" + kSettings), "True\nEasy\n") << "settings wait for the quit";
    first.run("quit\n");
  }
  EXPECT_EQ(fileBytes(folder + "/" + kSettings), "False\nVery Hard\n");
  EXPECT_EQ(fileBytes(folder + "/" + kScores), tableText(table));
  EXPECT_EQ(folderEntries(folder), (std::vector<std::string>{kScores, kSettings}));

  Game second(folder);
  EXPECT_TRUE(second.selected("VeryHard"));
  EXPECT_FALSE(Module1.SoundFlag);
  EXPECT_EQ(Module1.Difficulty, " Very Hard");
  EXPECT_EQ(Module1.High, 19);
  EXPECT_EQ(second.text("Op3"), "/");
  EXPECT_EQ(second.rows(), table);
}

}  // namespace
}  // namespace corvalta::testing
