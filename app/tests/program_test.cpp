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
// defaults; Very Hard, sound off and a top-ten game are on disk after the main window's close
// box has quit with 0, and the next start shows the table (the settings test reads the rest):
// the level cell with its leading blank, the name as typed, in its composed form.
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
    first.run("close Window1\n");
    EXPECT_EQ(first.app.exitCode(), 0);
  }
  EXPECT_EQ(fileBytes(folder + "/" + kSettings), "False\nVery Hard\n");

  ProgramRun second(folder);
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
  // High, Difficulty and Op3 of each level as saved.
  const std::map<std::string, std::string> levels = {{"Easy\n", "10 Easy +"}, {"Medium\n", "25 Medium +"},
                                                     {"Hard\n", "99 Hard +"}, {"Very Hard\n", "19  Very Hard /"}};
  for (const auto& [bytes, saved] : cases) {
    SCOPED_TRACE(::testing::PrintToString(bytes));
    TemporaryFolder folder;
    writeBytes(folder / kSettings, bytes);
    ProgramRun game(folder.path());
    // What the save at the quit doesn't show: the marks follow the flag, the level's handler ran.
    const platform::MenuItem* bar = game.app.MenuBar();
    EXPECT_EQ(bar->Lookup("SoundSoundOn")->Checked, Module1.SoundFlag);
    EXPECT_EQ(bar->Lookup("SoundSoundOff")->Checked, !Module1.SoundFlag);
    const std::string op3 = game.window().control<platform::StaticText>("Op3").Text();
    EXPECT_EQ(std::to_string(Module1.High) + " " + Module1.Difficulty + " " + op3,
              levels.at(saved.substr(saved.find('\n') + 1)));
    EXPECT_EQ(fileBytes(folder / kSettings), bytes);
    game.run("menu FileQuit\n");
    EXPECT_EQ(fileBytes(folder / kSettings), saved);
  }
}

// An exception that escapes a handler is reported with its class, without namespaces, and its
// message if it has one; the program quits with 1 and ends without saving.
TEST(Program, UnhandledExceptionIsReportedAndEndsTheRun) {
  TemporaryFolder folder;
  ProgramRun game(folder.path());
  game.app.addMenuHandler("Broken", []() -> bool { throw platform::NilObjectException("no control Gone"); });
  game.run("menu SoundSoundOff\n");
  std::istringstream script("menu Broken\n");
  EXPECT_EQ(game.script.run(script), 1);
  EXPECT_NE(game.err.str().find("An exception of class NilObjectException was not handled: no control Gone. The "
                                "application must shut down."),
            std::string::npos)
      << game.err.str();
  EXPECT_EQ(game.app.exitCode(), 1);
  EXPECT_EQ(fileBytes(folder / kSettings), "True\nEasy\n");
  EXPECT_EQ(app::unhandledExceptionReport(std::make_exception_ptr(42)),
            "An exception of class int was not handled. The application must shut down.");
}

}  // namespace
}  // namespace corvalta::testing
