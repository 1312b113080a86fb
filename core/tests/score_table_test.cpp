#include <corvalta/core/congratulations.h>
#include <corvalta/platform/application.h>
#include <corvalta/testing/score_files.h>

#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "game.h"

namespace corvalta::testing {
namespace {

using core::Module1;

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
  Rows beyondAscii = {
      {"Ann Marie", " Very Hard", "250"},
      {"\xc3\x85sa \xc3\x96" "berg", "Hard", "120"},             // Åsa Öberg
      {"\xe6\x9d\x8e\xe5\xb0\x8f\xe9\xbe\x8d", "Medium", "60"},  // Han
      {" ", " ", "0"},
  };
  beyondAscii.resize(10, {"", "", ""});
  const std::string huge =
      tableText(entered(defaultRows(), 0, {std::string(1000000, 'x'), "Easy", "5"}));
  // saved: the rows as read
  const struct { const char* name; std::string bytes, saved; } cases[] = {
      {"empty file", "", empty(10)},
      {"names beyond ASCII, blank and empty cells", tableText(beyondAscii), tableText(beyondAscii)},
      {"no tab, one tab, four fields, no number",
       "a name\nAnn\tHard\nBo\tEasy\t7\textra\tmore\nCy\tMedium\tlots\n",
       "a name\t\t\nAnn\tHard\t\nBo\tEasy\t7\nCy\tMedium\tlots\n" + empty(6)},
      {"CR LF and CR line ends", "Ann\tHard\t5\r\nBo\tEasy\t4\rCy\tMedium\t3\r\n",
       "Ann\tHard\t5\nBo\tEasy\t4\nCy\tMedium\t3\n" + empty(7)},
      {"twelve lines", tableText(Rows(12, {"Zed", "Hard", "9"})),
       tableText(Rows(10, {"Zed", "Hard", "9"}))},
      {"a name of a million letters", huge, huge},
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

// At the time-out a game qualifies when its points are above 0 and, as numbers, strictly above
// the last row's score. The name entered then goes in below older equal scores, the table is
// sorted whole by score, the ten best are written at once and the eleventh is gone.
TEST(NameEntry, QualifyingScoreTakesItsPlace) {
  const Rows descending = named({"50", "40", "30", "20", "10", "5", "4", "3", "2", "1"});
  const auto last = [](const char* score) {
    return entered(defaultRows(), 9, {"J", "Hard", score});
  };
  const std::vector<std::string> newAtThree = {"New", "Hard", "3"};
  const struct { const char* what; Rows before; std::int32_t points; Rows after; } cases[] = {
      {"below the old equal score", descending, 30, entered(descending, 3, {"New", "Hard", "30"})},
      {"out of order, sorted whole", named({"10", "30", "x", "20", "", "40", "5", "5", "0", "7"}),
       25, {{"F", "Hard", "40"}, {"B", "Hard", "30"}, {"New", "Hard", "25"}, {"D", "Hard", "20"},
            {"A", "Hard", "10"}, {"J", "Hard", "7"}, {"G", "Hard", "5"}, {"H", "Hard", "5"},
            {"C", "Hard", "x"}, {"E", "Hard", ""}}},
      {"above a last score that is no number", last("abc"), 3, entered(last("abc"), 0, newAtThree)},
      {"equal to the last score", last("7"), 7, last("7")},
      {"equal to the last score as a number", last("3.0"), 3, last("3.0")},
      {"no points", last("-5"), 0, last("-5")},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    TemporaryFolder folder;
    writeBytes(folder / kScores, tableText(c.before));
    Game game(folder.path());
    game.run("menu SoundSoundOff\npress Hard\npress Start\nadvance 89000\n");
    Module1.Points = c.points;
    const bool qualifies = c.after != c.before;
    game.run(qualifies ? "advance 1000\ntype NameField New\npress Enter\n" : "advance 1000\n");
    const platform::Window* entry = game.app.liveWindow("Congratulations");
    EXPECT_EQ(std::string(!entry ? "none" : entry->Visible() ? "shown" : "hidden"),
              qualifies ? "hidden" : "none");
    EXPECT_EQ(game.rows(), c.after);
    EXPECT_EQ(fileBytes(folder / kScores), tableText(c.after));
  }
}

// The name field keeps letters and digits of every script with their combining marks, composed
// (NFC), at most ten as the player sees them: a mark takes no place, goes with the letter before
// it and is dropped with it; blanks, symbols, tabs and line ends never go in.
TEST(NameEntry, NameFieldKeepsLettersWithTheirMarksComposed) {
  const std::string e = "e\xcc\x81", eComposed = "\xc3\xa9";  // e and a combining acute; é
  const std::string namaste =
      "\xe0\xa4\xa8\xe0\xa4\xae\xe0\xa4\xb8\xe0\xa5\x8d\xe0\xa4\xa4\xe0\xa5\x87";
  std::string twelve, ten;
  for (int i = 0; i < 12; ++i) twelve += e;
  for (int i = 0; i < 10; ++i) ten += eComposed;
  const std::pair<std::string, std::string> cases[] = {  // typed, kept
      {"Zo" + e, "Zo" + eComposed},
      {namaste, namaste},  // a virama and a vowel sign stay
      {twelve, ten},
      {"Ang" + e + "lique12", "Ang" + eComposed + "lique1"},
      {"AnnMarieTq\xcc\x87x" + e, "AnnMarieTq\xcc\x87"},  // the tenth letter keeps its mark
      {"\xcc\x81" "Ann\tBo\rCy", "AnnBoCy"},               // a mark with no letter before it
      {"-\xcc\x81q\xcc\x87\xcc\xa3", "q\xcc\xa3\xcc\x87"},  // dropped with its letter; in order
      {"\u4e2d\u0663 \u2028\U0001F600\xc3", "\u4e2d\u0663"},  // no blank, symbol, bad byte
  };
  Game game;
  auto& entry = platform::implicitInstance<core::Congratulations>("Congratulations");
  for (const auto& [typed, kept] : cases) {
    SCOPED_TRACE(::testing::PrintToString(typed));
    game.run("type Congratulations.NameField " + typed + "\n");
    EXPECT_EQ(entry.control<platform::EditField>("NameField").Text(), kept);
  }
}

// The table through one run. With sound off nothing plays and nothing waits. The second game
// offers the name entered at the first. The close box adds nothing and writes nothing, keeps
// Name and the flag, and the applause comes all the same; the next name entry is a new window
// that offers Name again. "Clear Scores" asks first: Cancel changes nothing, OK empties every
// row to blank, blank, "0". An edited cell, like each change, is saved with the table at once.
TEST(ScoreTable, ThroughOneRun) {
  TemporaryFolder folder;
  Game game(folder.path());
  const std::string timeOut = std::string(kRightAnswerAtEasy) + "advance 90000\n";
  game.run("menu SoundSoundOff\n" + timeOut + "type NameField Ann\npress Enter\n" + timeOut +
           "press Enter\n");
  EXPECT_TRUE(game.services.sounds.played().empty());
  EXPECT_EQ(game.now(), 180000);
  Rows expected = entered(entered(defaultRows(), 0, {"Ann", "Easy", "1"}), 1, {"Ann", "Easy", "1"});
  EXPECT_EQ(fileBytes(folder / kScores), tableText(expected));

  const unsigned long inode = inodeOf(folder / kScores);
  game.run("menu SoundSoundOn\n" + timeOut + "type NameField Bo\nclose Congratulations\n" +
           "answer Cancel\npress ClearScores\n");
  std::string sounds;
  for (const auto& p : game.services.sounds.played()) sounds += std::to_string(p.number) + " ";
  EXPECT_EQ(sounds, "168 170 169 ");
  EXPECT_EQ(game.rows(), expected);
  EXPECT_EQ(inodeOf(folder / kScores), inode);
  EXPECT_EQ(Module1.Name + (Module1.NewHighScoreFlag ? " flag" : ""), "Ann flag");
  auto& entry = platform::implicitInstance<core::Congratulations>("Congratulations");
  EXPECT_EQ(entry.control<platform::EditField>("NameField").Text(), "Ann");

  game.run("edit HighScores 1 0 Cy\n");
  expected[1][0] = "Cy";
  EXPECT_EQ(fileBytes(folder / kScores), tableText(expected));
  game.run("answer OK\npress ClearScores\n");
  EXPECT_EQ(game.rows(), Rows(10, {"", "", "0"}));
  EXPECT_EQ(fileBytes(folder / kScores), tableText(Rows(10, {"", "", "0"})));
  for (const auto& shown : game.services.dialogs.shown()) {
    EXPECT_EQ(shown.title + "|" + shown.text, "|Last chance - I'm going to clear the scores!");
  }
  EXPECT_EQ(game.services.dialogs.shown().size(), 2u);
}

// Where something that is no regular file stands in each file's place, a whole game plays:
// start-up reads the defaults without waiting on a named pipe (a wait ends the tests with
// SIGALRM), the qualifying score enters the table in memory and stays there, what is on disk is
// left as it was, also at the quit, and a failed save is never shown.
TEST(UnwritableFolder, GamePlaysAndTheTableKeepsTheNewRow) {
  using Path = const std::filesystem::path&;
  const std::pair<const char*, void (*)(Path)> cases[] = {
      {"a folder", [](Path at) { std::filesystem::create_directory(at); }},
      {"a named pipe", [](Path at) { ASSERT_EQ(::mkfifo(at.c_str(), 0600), 0); }},
      {"a link to /dev/zero", [](Path at) { std::filesystem::create_symlink("/dev/zero", at); }},
  };
  for (const auto& [what, make] : cases) {
    SCOPED_TRACE(what);
    TemporaryFolder folder;
    make(folder / kSettings);
    make(folder / kScores);
    const auto entries = folderEntries(folder.path());
    const std::string settings = fileBytes(folder / kSettings);
    const std::string scores = fileBytes(folder / kScores);
    ::alarm(10);
    Game game(folder.path());
    ::alarm(0);
    game.run(std::string("menu SoundSoundOff\n") + kRightAnswerAtEasy +
             "advance 90000\npress Enter\n");
    EXPECT_EQ(game.rows(), entered(defaultRows(), 0, {"", "Easy", "1"}));
    game.run("close Window1\n");
    EXPECT_EQ(game.app.exitCode(), 0);
    EXPECT_TRUE(game.services.dialogs.shown().empty());
    EXPECT_EQ(fileBytes(folder / kSettings), settings);
    EXPECT_EQ(fileBytes(folder / kScores), scores);
    EXPECT_EQ(folderEntries(folder.path()), entries);
  }
}

}  // namespace
}  // namespace corvalta::testing
