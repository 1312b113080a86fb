#include <corvalta/platform/application.h>

#include <corvalta/core/congratulations.h>

#include <filesystem>

#include <corvalta/testing/score_files.h>

#include "game.h"

namespace corvalta::testing {
namespace {

using core::Module1;
using Names = std::vector<std::string>;

Rows named(const std::vector<std::string>& scores) {
  Rows rows;
  char name = 'A';
  for (const auto& score : scores) rows.push_back({std::string(1, name++), "Hard", score});
  return rows;
}

// Whatever the file holds, the table has exactly ten rows of its first ten lines' first three
// fields, names beyond ASCII and blanks included; a save writes those cells back as they stand,
// so empty fields stay empty.
TEST(HighScoreFile, ReadsAnyFileIntoTenRowsAndSavesTheCellsBack) {
  const auto empty = [](std::size_t rows) { return tableText(Rows(rows, {"", "", ""})); };
  const Rows beyondAscii = {
      {"Ann Marie", " Very Hard", "250"},
      {"\xc3\x85sa \xc3\x96" "berg", "Hard", "120"},             // Åsa Öberg
      {"\xe6\x9d\x8e\xe5\xb0\x8f\xe9\xbe\x8d", "Medium", "60"},  // Han
      {" ", " ", "0"}, {"", "", "0"}, {" ", " ", "0"}, {"", "", "0"}, {" ", " ", "0"}, {"", "", "0"}, {"", "", ""},
  };
  const struct { const char* name; std::string bytes, saved; } cases[] = {  // saved: the rows as read
      {"empty file", "", empty(10)},
      {"names beyond ASCII, blank and empty cells", tableText(beyondAscii), tableText(beyondAscii)},
      {"no tab, one tab, four fields, no number", "a name\nAnn\tHard\nBo\tEasy\t7\textra\tmore\nCy\tMedium\tlots\n",
       "a name\t\t\nAnn\tHard\t\nBo\tEasy\t7\nCy\tMedium\tlots\n" + empty(6)},
      {"CR LF and CR line ends", "Ann\tHard\t5\r\nBo\tEasy\t4\rCy\tMedium\t3\r\n",
       "Ann\tHard\t5\nBo\tEasy\t4\nCy\tMedium\t3\n" + empty(7)},
      {"twelve lines", tableText(Rows(12, {"Zed", "Hard", "9"})), tableText(Rows(10, {"Zed", "Hard", "9"}))},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    TemporaryFolder folder;
    writeBytes(folder / kScores, c.bytes);
    Game game(folder.path());
    EXPECT_EQ(tableText(game.rows()), c.saved);
    EXPECT_EQ(fileBytes(folder / kScores), c.bytes);
    game.run("close Window1\n");
    EXPECT_EQ(fileBytes(folder / kScores), c.saved);
  }
}

// A cell the user edits is saved with the whole table at once. "Clear Scores" asks first; OK
// empties every row to blank, blank, "0" and writes the file at once; Cancel changes neither
// the table nor the file.
TEST(ScoreTable, EditedCellsAndClearScoresAreSavedAtOnce) {
  const Rows before = entered(defaultRows(), 0, {"Ann", "Hard", "120"});
  for (const char* answer : {"Cancel", "OK"}) {
    SCOPED_TRACE(answer);
    const Rows after = std::string(answer) == "OK" ? Rows(10, {"", "", "0"}) : before;
    TemporaryFolder folder;
    Game game(folder.path());
    game.run("edit HighScores 0 0 Ann\nedit HighScores 0 1 Hard\nedit HighScores 0 2 120\n");
    EXPECT_EQ(fileBytes(folder / kScores), tableText(before));
    const unsigned long inode = inodeOf(folder / kScores);
    game.run(std::string("answer ") + answer + "\npress ClearScores\n");
    EXPECT_EQ(inodeOf(folder / kScores) == inode, after == before) << "rewritten only when cleared";
    const auto& shown = game.services.dialogs.shown();
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_EQ(shown[0].title + "|" + shown[0].text, "|Last chance - I'm going to clear the scores!");
    EXPECT_EQ(game.rows(), after);
    EXPECT_EQ(fileBytes(folder / kScores), tableText(after));
  }
}

// A game qualifies when its points are above 0 and, as numbers, strictly above row 9's score.
TEST(ScoreTable, QualifyingRule) {
  const struct { std::int32_t points; const char* row9; bool qualifies; } cases[] = {
      {0, "", false}, {0, "-5", false}, {1, "", true},      {7, "7", false}, {10, "9", true},
      {9, "10", false}, {3, "abc", true}, {3, "3.0", false}, {-2, "-5", false},
  };
  TemporaryFolder folder;
  Game game(folder.path());
  for (const auto& c : cases) {
    SCOPED_TRACE(::testing::Message() << c.points << " against " << c.row9);
    Module1.NewHighScoreFlag = !c.qualifies;
    Module1.Points = c.points;
    game.control<platform::Listbox>("HighScores").setCell(9, 2, c.row9);
    game.window().CheckScore();
    EXPECT_EQ(Module1.NewHighScoreFlag, c.qualifies);
  }
}

// Enter adds the score under the typed name, sorts the table by score (a new row goes below
// older equal ones), writes the ten best to the file, drops the eleventh, clears the answer
// fields, puts the focus in SubAnswer1 and hides the window.
TEST(NameEntry, EnterPutsTheScoreInItsPlace) {
  const Rows descending = named({"50", "40", "30", "20", "10", "5", "4", "3", "2", "1"});
  const struct { const char* what; std::string file; std::int32_t points; Rows after; } cases[] = {
      {"below the old equal score", tableText(descending), 30, entered(descending, 3, {"New", "Hard", "30"})},
      {"out of order, sorted whole", tableText(named({"10", "30", "x", "20", "", "40", "5", "5", "0", "7"})), 25,
       {{"F", "Hard", "40"}, {"B", "Hard", "30"}, {"New", "Hard", "25"}, {"D", "Hard", "20"}, {"A", "Hard", "10"},
        {"J", "Hard", "7"}, {"G", "Hard", "5"}, {"H", "Hard", "5"}, {"C", "Hard", "x"}, {"E", "Hard", ""}}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    TemporaryFolder folder;
    writeBytes(folder / kScores, c.file);
    Game game(folder.path());
    game.run("press Hard\n");
    Module1.Points = c.points;
    Module1.NewHighScoreFlag = true;
    game.control<platform::EditField>("Answer").setText("12");
    auto& entry = platform::implicitInstance<core::Congratulations>("Congratulations");
    entry.control<platform::EditField>("NameField").setText("New");
    entry.Enter_Action();

    EXPECT_EQ(game.rows(), c.after);
    EXPECT_EQ(fileBytes(folder / kScores), tableText(c.after));
    EXPECT_EQ(Module1.Name + (Module1.NewHighScoreFlag ? " flag" : "") + (entry.Visible() ? " shown" : ""), "New");
    EXPECT_NE(game.view().find("SubAnswer1-'' SubAnswer2-'' Answer-''"), std::string::npos) << game.view();
    EXPECT_EQ(game.window().focus(), &game.control<platform::EditField>("SubAnswer1"));
  }
}

// Through whole games: the field keeps what its mask lets in, ten at most; the second
// qualifying game of a run offers the name entered at the first; the close box adds nothing
// and keeps the file, and the next name entry is a new window that offers Name again.
TEST(NameEntry, QualifyingGamesInOneRun) {
  TemporaryFolder folder;
  Game game(folder.path());
  game.run(std::string("menu SoundSoundOff\n") + kRightAnswerAtEasy + "advance 90000\n" +
           "type NameField Ann Marie\ttwelve chars\npress Enter\n");
  EXPECT_EQ(Module1.Name, "AnnMarietw");
  // Hidden, the window keeps the name, and offers it at the next qualifying game.
  game.run(std::string(kRightAnswerAtEasy) + "type Answer 99\nkey Return\nadvance 90000\npress Enter\n");
  const std::vector<std::string> row = {"AnnMarietw", "Easy", "1"};
  const Rows expected = entered(entered(defaultRows(), 0, row), 1, row);
  EXPECT_EQ(game.rows(), expected);
  EXPECT_EQ(fileBytes(folder / kScores), tableText(expected));

  const unsigned long inode = inodeOf(folder / kScores);
  game.run(std::string(kRightAnswerAtEasy) + "advance 90000\ntype NameField Bo\nclose Congratulations\n");
  EXPECT_EQ(game.rows(), expected);
  EXPECT_EQ(inodeOf(folder / kScores), inode);
  EXPECT_EQ(Module1.Name + (Module1.NewHighScoreFlag ? " flag" : ""), "AnnMarietw flag");
  EXPECT_EQ(game.app.liveWindow("Congratulations"), nullptr);
  auto& entry = platform::implicitInstance<core::Congratulations>("Congratulations");
  EXPECT_EQ(entry.control<platform::EditField>("NameField").Text(), "AnnMarietw");
}

// Where a folder stands in place of each file, a whole game plays: the qualifying score enters
// the table in memory and stays there, nothing is written, also at the quit, and a failed save
// is never shown.
TEST(UnwritableFolder, GamePlaysAndTheTableKeepsTheNewRow) {
  TemporaryFolder folder;
  for (const auto& name : {kSettings, kScores}) std::filesystem::create_directory(folder / name);
  Game game(folder.path());
  EXPECT_EQ(game.rows(), defaultRows());
  game.run(std::string("menu SoundSoundOff\n") + kRightAnswerAtEasy + "advance 90000\npress Enter\n");
  EXPECT_EQ(game.rows(), entered(defaultRows(), 0, {"", "Easy", "1"}));
  EXPECT_TRUE(game.enabled("Start"));
  game.run("close Window1\n");
  EXPECT_EQ(game.app.exitCode(), 0);
  EXPECT_TRUE(game.services.dialogs.shown().empty());
  for (const auto& name : {kSettings, kScores}) EXPECT_TRUE(std::filesystem::is_empty(folder / name)) << name;
  EXPECT_EQ(folderEntries(folder.path()), (Names{kScores, kSettings}));
}

}  // namespace
}  // namespace corvalta::testing
