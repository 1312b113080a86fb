#include <corvalta/platform/application.h>

#include "corvalta/store/congratulations.h"
#include "store_game.h"

namespace corvalta::testing {
namespace {

using core::Module1;

Rows named(const std::vector<std::string>& scores) {
  Rows rows;
  char name = 'A';
  for (const auto& score : scores) rows.push_back({std::string(1, name++), "Hard", score});
  return rows;
}

// A game qualifies when its points are above 0 and, as numbers, strictly above row 9's score.
TEST(ScoreTable, QualifyingRule) {
  const struct {
    std::int32_t points;
    const char* row9;
    bool qualifies;
  } cases[] = {
      {0, "0", false}, {0, "", false},  {0, "-5", false},  {1, "0", true},     {1, "", true},
      {7, "6", true},  {7, "7", false}, {10, "9", true},   {9, "10", false},   {3, "abc", true},
      {3, "2.5", true}, {3, "3.0", false}, {-2, "-5", false},
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
  struct Case {
    const char* what;
    std::string file;  // "" : none, a first run
    const char* level;
    std::int32_t points;
    const char* name;
    Rows after;
  };
  const Rows descending = named({"50", "40", "30", "20", "10", "5", "4", "3", "2", "1"});
  const Rows equal = named(std::vector<std::string>(10, "5"));
  const Case cases[] = {
      {"first run, 3 points", "", "Easy", 3, "Ann", entered(defaultRows(), 0, {"Ann", "Easy", "3"})},
      {"below the old equal score", tableText(descending), "Hard", 30, "New",
       entered(descending, 3, {"New", "Hard", "30"})},
      {"ten equal scores", tableText(equal), "Medium", 6, "Six", entered(equal, 0, {"Six", "Medium", "6"})},
      {"a file out of order is sorted whole",
       tableText(named({"10", "30", "x", "20", "", "40", "5", "5", "0", "7"})), "Hard", 25, "New",
       {{"F", "Hard", "40"}, {"B", "Hard", "30"}, {"New", "Hard", "25"}, {"D", "Hard", "20"},
        {"A", "Hard", "10"}, {"J", "Hard", "7"}, {"G", "Hard", "5"}, {"H", "Hard", "5"},
        {"C", "Hard", "x"}, {"E", "Hard", ""}}},
      {"Very Hard keeps its blank, an empty name is a name", "", "VeryHard", 20, "",
       entered(defaultRows(), 0, {"", " Very Hard", "20"})},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    TemporaryFolder folder;
    if (!c.file.empty()) writeBytes(folder / kScores, c.file);
    Game game(folder.path());
    game.run(std::string("press ") + c.level + "\n");
    Module1.Points = c.points;
    Module1.NewHighScoreFlag = true;
    game.control<platform::EditField>("Answer").setText("12");
    auto& entry = platform::implicitInstance<store::Congratulations>("Congratulations");
    entry.control<platform::EditField>("NameField").setText(c.name);
    entry.Enter_Action();

    EXPECT_EQ(game.rows(), c.after);
    EXPECT_EQ(fileBytes(folder / kScores), tableText(c.after));
    EXPECT_EQ(Module1.Name, c.name);
    EXPECT_FALSE(Module1.NewHighScoreFlag);
    for (const char* field : {"SubAnswer1", "SubAnswer2", "Answer"}) EXPECT_EQ(game.text(field), "") << field;
    EXPECT_EQ(game.window().focus(), &game.control<platform::EditField>("SubAnswer1"));
    EXPECT_FALSE(entry.Visible());
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
  EXPECT_EQ(Module1.Name, "AnnMarietw");
  EXPECT_TRUE(Module1.NewHighScoreFlag);
  EXPECT_EQ(game.session.app().liveWindow("Congratulations"), nullptr);
  EXPECT_EQ(platform::implicitInstance<store::Congratulations>("Congratulations")
                .control<platform::EditField>("NameField").Text(),
            "AnnMarietw");
}

}  // namespace
}  // namespace corvalta::testing
