#include "store_game.h"

namespace corvalta::testing {
namespace {

// Whatever the file holds, the table has exactly ten rows of its first ten lines' first three
// fields, names beyond ASCII and blanks included; a save writes those cells back as they stand,
// so empty fields stay empty.
TEST(HighScoreFile, ReadsAnyFileIntoTenRowsAndSavesTheCellsBack) {
  struct Case {
    const char* name;
    std::string bytes;
    Rows firstRows;  // the rest are empty
    std::string saved;
  };
  const auto repeat = [](const std::string& line, int times) {
    std::string text;
    for (int i = 0; i < times; ++i) text += line;
    return text;
  };
  const std::string empty = "\t\t\n";
  const Rows beyondAscii = {
      {"Ann Marie", " Very Hard", "250"},
      {"\xc3\x85sa \xc3\x96" "berg", "Hard", "120"},                                  // Åsa Öberg
      {"\xe6\x9d\x8e\xe5\xb0\x8f\xe9\xbe\x8d", "Medium", "60"},                       // Han
      {"\xe0\xa4\x95\xe0\xa5\x83\xe0\xa4\xb7\xe0\xa5\x8d\xe0\xa4\xa3", "Easy", "30"},  // Devanagari
      {" ", " ", "0"}, {"", "", "0"}, {" ", " ", "0"}, {"", "", "0"}, {" ", " ", "0"}, {"", "", "0"},
  };
  const Case cases[] = {
      {"empty file", "", {}, repeat(empty, 10)},
      {"names beyond ASCII, blank and empty cells", tableText(beyondAscii), beyondAscii,
       tableText(beyondAscii)},
      {"no tab, one tab, four fields, no number",
       "just a name\nAnn\tHard\nBo\tEasy\t7\textra\tmore\nCy\tMedium\tlots\n",
       {{"just a name", "", ""}, {"Ann", "Hard", ""}, {"Bo", "Easy", "7"}, {"Cy", "Medium", "lots"}},
       "just a name\t\t\nAnn\tHard\t\nBo\tEasy\t7\nCy\tMedium\tlots\n" + repeat(empty, 6)},
      {"CR LF and CR line ends", "Ann\tHard\t5\r\nBo\tEasy\t4\rCy\tMedium\t3\r\n",
       {{"Ann", "Hard", "5"}, {"Bo", "Easy", "4"}, {"Cy", "Medium", "3"}},
       "Ann\tHard\t5\nBo\tEasy\t4\nCy\tMedium\t3\n" + repeat(empty, 7)},
      {"twelve lines", repeat("Zed\tHard\t9\n", 12), Rows(10, {"Zed", "Hard", "9"}),
       repeat("Zed\tHard\t9\n", 10)},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    TemporaryFolder folder;
    writeBytes(folder / kScores, c.bytes);
    Game game(folder.path());
    Rows expected = c.firstRows;
    expected.resize(10, {"", "", ""});
    EXPECT_EQ(game.rows(), expected);
    EXPECT_EQ(fileBytes(folder / kScores), c.bytes);
    game.run("quit\n");
    EXPECT_EQ(fileBytes(folder / kScores), c.saved);
  }
}

// "Clear Scores" asks first; OK empties every row to blank, blank, "0" and writes the file at
// once; Cancel changes neither the table nor the file.
TEST(ScoreTable, ClearScoresAsksAndThenEmptiesEveryRow) {
  const Rows before = entered(defaultRows(), 0, {"Ann", "Hard", "120"});
  for (const char* answer : {"Cancel", "OK"}) {
    SCOPED_TRACE(answer);
    const Rows after = std::string(answer) == "OK" ? Rows(10, {"", "", "0"}) : before;
    TemporaryFolder folder;
    writeBytes(folder / kScores, tableText(before));
    const unsigned long inode = inodeOf(folder / kScores);
    Game game(folder.path());
    game.run(std::string("answer ") + answer + "\npress ClearScores\n");
    EXPECT_EQ(inodeOf(folder / kScores) == inode, after == before) << "rewritten only when cleared";
    const auto& shown = game.session.services().dialogs.shown();
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_EQ(shown[0].text, "Last chance - I'm going to clear the scores!");
    EXPECT_EQ(shown[0].title, "");
    EXPECT_EQ(game.rows(), after);
    EXPECT_EQ(fileBytes(folder / kScores), tableText(after));
  }
}

// A cell the user edits is saved with the whole table at once; the columns are centred.
TEST(ScoreTable, EditedCellIsSavedAtOnceAndColumnsAreCentred) {
  TemporaryFolder folder;
  Game game(folder.path());
  for (std::int32_t column = 0; column < 3; ++column) {
    EXPECT_EQ(game.control<platform::Listbox>("HighScores").ColumnAlignment(column), 2);
  }
  game.run("edit HighScores 2 0 Cy Young\n");
  Rows expected = defaultRows();
  expected[2][0] = "Cy Young";
  EXPECT_EQ(fileBytes(folder / kScores), tableText(expected));
}

}  // namespace
}  // namespace corvalta::testing
