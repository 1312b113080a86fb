#include "store_game.h"
#include "temporary_folder.h"

namespace corvalta::store::testing {
namespace {

const std::string kScores = "corvalta-highscores.plist";

// A first run writes ten lines of blank, tab, blank, tab, "0" and shows them as ten rows.
TEST(HighScoreFile, FirstRunWritesTenDefaultRows) {
  TemporaryFolder folder;
  StoreGame game(folder.path());
  std::string expected;
  for (int row = 0; row < 10; ++row) expected += " \t \t0\n";
  EXPECT_EQ(fileBytes(folder / kScores), expected);
  EXPECT_EQ(game.rows(), defaultRows());
}

// Whatever the file holds, the table has exactly ten rows of its first ten lines' first three
// fields; a save writes those cells back as they stand, so empty fields stay empty.
TEST(HighScoreFile, ReadsAnyFileIntoTenRowsAndSavesTheCellsBack) {
  struct Case {
    const char* name;
    std::string bytes;
    Rows firstRows;  // the rest are empty
    std::string saved;
  };
  const std::string emptyLine = "\t\t\n";
  auto repeat = [](const std::string& line, int times) {
    std::string text;
    for (int i = 0; i < times; ++i) text += line;
    return text;
  };
  const Case cases[] = {
      {"empty file", "", {}, repeat(emptyLine, 10)},
      {"five valid lines",
       "Ann\tHard\t120\nBo\tEasy\t90\nCy\tMedium\t60\nDi\t Very Hard\t30\nEd\tEasy\t1\n",
       {{"Ann", "Hard", "120"}, {"Bo", "Easy", "90"}, {"Cy", "Medium", "60"}, {"Di", " Very Hard", "30"},
        {"Ed", "Easy", "1"}},
       "Ann\tHard\t120\nBo\tEasy\t90\nCy\tMedium\t60\nDi\t Very Hard\t30\nEd\tEasy\t1\n" + repeat(emptyLine, 5)},
      {"no tab, one tab, four fields, no number",
       "just a name\nAnn\tHard\nBo\tEasy\t7\textra\tmore\nCy\tMedium\tlots\n",
       {{"just a name", "", ""}, {"Ann", "Hard", ""}, {"Bo", "Easy", "7"}, {"Cy", "Medium", "lots"}},
       "just a name\t\t\nAnn\tHard\t\nBo\tEasy\t7\nCy\tMedium\tlots\n" + repeat(emptyLine, 6)},
      {"CR LF and CR line ends", "Ann\tHard\t5\r\nBo\tEasy\t4\rCy\tMedium\t3\r\n",
       {{"Ann", "Hard", "5"}, {"Bo", "Easy", "4"}, {"Cy", "Medium", "3"}},
       "Ann\tHard\t5\nBo\tEasy\t4\nCy\tMedium\t3\n" + repeat(emptyLine, 7)},
      {"twelve lines", repeat("Zed\tHard\t9\n", 12), Rows(10, {"Zed", "Hard", "9"}),
       repeat("Zed\tHard\t9\n", 10)},
      {"cleared rows stay apart", repeat("\t\t0\n", 10), Rows(10, {"", "", "0"}), repeat("\t\t0\n", 10)},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    TemporaryFolder folder;
    writeBytes(folder / kScores, c.bytes);
    StoreGame game(folder.path());
    Rows expected = c.firstRows;
    expected.resize(10, {"", "", ""});
    EXPECT_EQ(game.rows(), expected);
    EXPECT_EQ(fileBytes(folder / kScores), c.bytes);
    game.run("quit\n");
    EXPECT_EQ(fileBytes(folder / kScores), c.saved);
  }
}

// Names with blanks or letters beyond ASCII and the level " Very Hard" with its leading blank
// are written as their exact bytes and come back unchanged after a restart.
TEST(HighScoreFile, CellsSurviveARestartByteForByte) {
  const Rows rows = {
      {"Ann Marie", " Very Hard", "250"},
      {"\xc3\x85sa \xc3\x96" "berg", "Hard", "120"},                 // Åsa Öberg
      {"\xe6\x9d\x8e\xe5\xb0\x8f\xe9\xbe\x8d", "Medium", "60"},      // Han
      {"\xe0\xa4\x95\xe0\xa5\x83\xe0\xa4\xb7\xe0\xa5\x8d\xe0\xa4\xa3", "Easy", "30"},  // Devanagari
      {" ", " ", "0"}, {"", "", "0"}, {" ", " ", "0"}, {"", "", "0"}, {" ", " ", "0"}, {"", "", "0"},
  };
  TemporaryFolder folder;
  writeBytes(folder / kScores, tableText(rows));
  {
    StoreGame game(folder.path());
    EXPECT_EQ(game.rows(), rows);
    game.run("quit\n");
  }
  EXPECT_EQ(fileBytes(folder / kScores), tableText(rows));
  StoreGame again(folder.path());
  EXPECT_EQ(again.rows(), rows);
}

// "Clear Scores" asks first; OK empties every row to blank, blank, "0" and writes the file at
// once; Cancel changes neither the table nor the file.
TEST(ScoreTable, ClearScoresAsksAndThenEmptiesEveryRow) {
  const Rows before = {{"Ann", "Hard", "120"}, {"Bo", " Very Hard", "90"}, {" ", " ", "0"}, {" ", " ", "0"},
                       {" ", " ", "0"},        {" ", " ", "0"},            {" ", " ", "0"}, {" ", " ", "0"},
                       {" ", " ", "0"},        {" ", " ", "0"}};
  struct Case {
    const char* answer;
    Rows after;
  };
  const Case cases[] = {{"Cancel", before}, {"OK", Rows(10, {"", "", "0"})}};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.answer);
    TemporaryFolder folder;
    writeBytes(folder / kScores, tableText(before));
    const unsigned long inode = inodeOf(folder / kScores);
    StoreGame game(folder.path());
    game.run(std::string("answer ") + c.answer + "\npress ClearScores\n");
    EXPECT_EQ(inodeOf(folder / kScores) == inode, c.after == before) << "rewritten only when cleared";
    const auto& shown = game.session.services().dialogs.shown();
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_EQ(shown[0].text, "Last chance - I'm going to clear the scores!");
    EXPECT_EQ(shown[0].title, "");
    EXPECT_EQ(shown[0].answer, c.answer);
    EXPECT_EQ(game.rows(), c.after);
    EXPECT_EQ(fileBytes(folder / kScores), tableText(c.after));
  }
}

// A cell the user edits is saved with the whole table at once; the columns are centred.
TEST(ScoreTable, EditedCellIsSavedAtOnceAndColumnsAreCentred) {
  TemporaryFolder folder;
  StoreGame game(folder.path());
  for (std::int32_t column = 0; column < 3; ++column) EXPECT_EQ(game.table().ColumnAlignment(column), 2);
  game.run("edit HighScores 2 0 Cy Young\n");
  Rows expected = defaultRows();
  expected[2][0] = "Cy Young";
  EXPECT_EQ(fileBytes(folder / kScores), tableText(expected));
}

}  // namespace
}  // namespace corvalta::store::testing
