#include <corvalta/core/module1.h>
#include <corvalta/platform/errors.h>
#include <corvalta/platform/menu_item.h>
#include <corvalta/testing/score_files.h>

#include <map>

#include "program_run.h"

namespace corvalta::testing {
namespace {

using core::Module1;

// A whole life on the driver: the first start makes the folder and both files with their
// defaults; Very Hard, sound off and a top-ten game are on disk after the quit, and the next
// start comes up with them: the level cell with its leading blank, the name as typed, in its
// composed form.
TEST(WholeLife, SettingsAndScoreSurviveARestart) {
  TemporaryFolder home;
  const std::string folder = home / "config";
  const Rows table = entered(defaultRows(), 0, {"Zo\xc3\xab", " Very Hard", "10"});  // Zoë, typed e and a diaeresis
  {
    ProgramRun first(folder);
    EXPECT_EQ(fileBytes(folder + "/" + kSettings), "True\nEasy\n");
    EXPECT_EQ(fileBytes(folder + "/" + kScores), tableText(defaultRows()));
    // A right answer worth 10 points: (10 - 7) / (7 + 4) is 0.27.
    first.run("press VeryHard\nmenu SoundSoundOff\nqueue 10 7 4 6 1\npress Start\ntype Answer 0.27\nkey Return\n"
              "advance 90000\ntype NameField Zoe\xcc\x88\npress Enter\n");
    EXPECT_EQ(fileBytes(folder + "/" + kScores), tableText(table)) << "on disk at once";
    EXPECT_EQ(fileBytes(folder + "/" + kSettings), "True\nEasy\n") << "settings wait for the quit";
    first.run("menu FileQuit\n");
  }
  EXPECT_EQ(fileBytes(folder + "/" + kSettings), "False\nVery Hard\n");
  EXPECT_EQ(folderEntries(folder), (std::vector<std::string>{kScores, kSettings}));

  ProgramRun second(folder);
  EXPECT_TRUE(second.selected("VeryHard"));
  EXPECT_FALSE(Module1.SoundFlag);
  EXPECT_EQ(Module1.Difficulty, " Very Hard");
  EXPECT_EQ(second.window().control<platform::Listbox>("HighScores").rows(), table);
}

// Whatever the file holds goes through the comparisons: line 1 other than "True" is sound off,
// line 2 other than Easy, Medium or Hard is Very Hard, selected through its handler; the menu
// marks follow the sound. The file is left as it is until the quit writes it clean.
TEST(SettingsFile, ReadThroughTheComparisonsAndWrittenCleanAtTheQuit) {
  const std::pair<std::string, std::string> cases[] = {  // the file, and as the quit writes it
      {"True\nEasy\n", "True\nEasy\n"},        {"False\nVery Hard\n", "False\nVery Hard\n"},
      {"True", "True\nVery Hard\n"},           {"", "False\nVery Hard\n"},
      {"True \nEasy\n", "False\nEasy\n"},      {"true\neasy\n", "False\nVery Hard\n"},
      {"True\r\nHard\r\n", "True\nHard\n"},    {"False\rMedium\r", "False\nMedium\n"},
      {"True\nMedium\nthird\n", "True\nMedium\n"}, {std::string("\xff\xfe\x00\x01\nHard", 9), "False\nHard\n"},
  };
  // The radio button, High, Difficulty and Op3 of each level.
  const std::map<std::string, std::string> levels = {
      {"Easy\n", "Easy 10 'Easy' +"}, {"Medium\n", "Medium 25 'Medium' +"},
      {"Hard\n", "Hard 99 'Hard' +"}, {"Very Hard\n", "VeryHard 19 ' Very Hard' /"}};
  for (const auto& [bytes, saved] : cases) {
    SCOPED_TRACE(::testing::PrintToString(bytes));
    TemporaryFolder folder;
    writeBytes(folder / kSettings, bytes);
    ProgramRun game(folder.path());
    const platform::MenuItem* bar = game.app.MenuBar();
    const bool on = bar->Lookup("SoundSoundOn")->Checked, off = bar->Lookup("SoundSoundOff")->Checked;
    std::string read = std::string(Module1.SoundFlag ? "True" : "False") + (on ? " on" : "") + (off ? " off\n" : "\n");
    for (const char* button : {"Easy", "Medium", "Hard", "VeryHard"}) read += game.selected(button) ? button : "";
    const std::string op3 = game.window().control<platform::StaticText>("Op3").Text();
    read += " " + std::to_string(Module1.High) + " '" + Module1.Difficulty + "' " + op3;
    const std::string sound = saved.substr(0, saved.find('\n')), level = saved.substr(sound.size() + 1);
    EXPECT_EQ(read, sound + (sound == "True" ? " on\n" : " off\n") + levels.at(level));
    EXPECT_EQ(fileBytes(folder / kSettings), bytes);
    game.run("menu FileQuit\n");
    EXPECT_EQ(fileBytes(folder / kSettings), saved);
  }
}

// Start-up makes R and the main window. The quit command during a game, like the main window's
// close box, saves the settings and the table as they are, without the game's points, quits
// with 0 and ends the run.
TEST(Program, StartsAndQuitsInOrder) {
  for (const char* quit : {"menu FileQuit\n", "close Window1\n"}) {
    SCOPED_TRACE(quit);
    TemporaryFolder folder;
    ProgramRun game(folder.path());
    EXPECT_NE(Module1.R, nullptr);
    game.run(std::string("menu SoundSoundOff\n") + kRightAnswerAtEasy + quit + "press Stop\npress Hard\n");
    EXPECT_EQ(Module1.Points, 1);
    EXPECT_EQ(game.app.exitCode(), 0);
    EXPECT_TRUE(game.app.quitRequested());
    EXPECT_TRUE(game.selected("Easy")) << "nothing runs after the quit";
    EXPECT_EQ(fileBytes(folder / kSettings), "False\nEasy\n");
    EXPECT_EQ(fileBytes(folder / kScores), tableText(defaultRows()));
  }
}

// An exception that escapes a handler is reported with its class, without namespaces, and its
// message if it has one; the program quits with 1 and ends without saving: nothing after it runs.
TEST(Program, UnhandledExceptionIsReportedAndEndsTheRun) {
  TemporaryFolder folder;
  ProgramRun game(folder.path());
  game.app.addMenuHandler("Broken", []() -> bool { throw platform::NilObjectException("no control Gone"); });
  game.run("menu SoundSoundOff\n");
  std::istringstream script("menu Broken\npress Hard\n");
  EXPECT_EQ(game.script.run(script), 1);
  EXPECT_NE(game.err.str().find("An exception of class NilObjectException was not handled: no control Gone. The "
                                "application must shut down."),
            std::string::npos)
      << game.err.str();
  EXPECT_EQ(game.app.exitCode(), 1);
  EXPECT_FALSE(game.selected("Hard"));
  EXPECT_EQ(fileBytes(folder / kSettings), "True\nEasy\n");
  EXPECT_EQ(app::unhandledExceptionReport(std::make_exception_ptr(42)),
            "An exception of class int was not handled. The application must shut down.");
}

}  // namespace
}  // namespace corvalta::testing
