#include <corvalta/platform/application.h>

#include <corvalta/core/congratulations.h>
#include <corvalta/testing/mount.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <filesystem>
#include <mutex>
#include <optional>
#include <thread>

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
  const std::string huge = tableText(entered(defaultRows(), 0, {std::string(1000000, 'x'), "Easy", "5"}));
  const struct { const char* name; std::string bytes, saved; } cases[] = {  // saved: the rows as read
      {"empty file", "", empty(10)},
      {"names beyond ASCII, blank and empty cells", tableText(beyondAscii), tableText(beyondAscii)},
      {"no tab, one tab, four fields, no number", "a name\nAnn\tHard\nBo\tEasy\t7\textra\tmore\nCy\tMedium\tlots\n",
       "a name\t\t\nAnn\tHard\t\nBo\tEasy\t7\nCy\tMedium\tlots\n" + empty(6)},
      {"CR LF and CR line ends", "Ann\tHard\t5\r\nBo\tEasy\t4\rCy\tMedium\t3\r\n",
       "Ann\tHard\t5\nBo\tEasy\t4\nCy\tMedium\t3\n" + empty(7)},
      {"twelve lines", tableText(Rows(12, {"Zed", "Hard", "9"})), tableText(Rows(10, {"Zed", "Hard", "9"}))},
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

// The name field keeps letters and digits with their combining marks, composed (NFC), at most
// ten as the player sees them: a mark takes no place, goes with the letter before it and is
// dropped with it; tabs and line ends never go in.
TEST(NameEntry, NameFieldKeepsLettersWithTheirMarksComposed) {
  const std::string e = "e\xcc\x81", eComposed = "\xc3\xa9";  // e and a combining acute; é
  const std::string namaste = "\xe0\xa4\xa8\xe0\xa4\xae\xe0\xa4\xb8\xe0\xa5\x8d\xe0\xa4\xa4\xe0\xa5\x87";
  std::string twelve, ten;
  for (int i = 0; i < 12; ++i) twelve += e;
  for (int i = 0; i < 10; ++i) ten += eComposed;
  const std::pair<std::string, std::string> cases[] = {  // typed, kept
      {"Zo" + e, "Zo" + eComposed},
      {namaste, namaste},  // a virama and a vowel sign stay
      {twelve, ten},
      {"Ang" + e + "lique12", "Ang" + eComposed + "lique1"},
      {"AnnMarieTq\xcc\x87x" + e, "AnnMarieTq\xcc\x87"},  // the tenth letter keeps its mark
      {"\xcc\x81" "Ann\tBo\rCy", "AnnBoCy"},  // a mark with no letter before it
      {"-\xcc\x81q\xcc\x87\xcc\xa3", "q\xcc\xa3\xcc\x87"},  // dropped with its letter; in canonical order
  };
  for (const auto& [typed, kept] : cases) {
    SCOPED_TRACE(::testing::PrintToString(typed));
    TemporaryFolder folder;
    Game game(folder.path());
    auto& entry = platform::implicitInstance<core::Congratulations>("Congratulations");
    game.run("type Congratulations.NameField " + typed + "\n");
    EXPECT_EQ(entry.control<platform::EditField>("NameField").Text(), kept);
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

// Opens each named pipe of `paths` for writing, again and again, once the test has run a few
// seconds, so that a reader blocked in its open goes on and the test fails instead of hanging.
class UnblockPipesLater {
 public:
  explicit UnblockPipesLater(std::vector<std::string> paths)
      : watchdog_([this, paths = std::move(paths)] {
          std::unique_lock lock(mutex_);
          auto wait = std::chrono::milliseconds(5000);
          while (!ended_.wait_for(lock, wait, [this] { return done_; })) {
            blocked_ = true;
            for (const auto& path : paths) ::close(::open(path.c_str(), O_WRONLY | O_NONBLOCK));
            wait = std::chrono::milliseconds(50);
          }
        }) {}
  // Whether the pipes had to be opened.
  bool end() {
    {
      const std::lock_guard lock(mutex_);
      done_ = true;
    }
    ended_.notify_one();
    watchdog_.join();
    return blocked_;
  }

 private:
  std::mutex mutex_;
  std::condition_variable ended_;
  bool done_ = false;
  std::atomic<bool> blocked_ = false;
  std::thread watchdog_;
};

// In a folder that takes no file, or where something that is no regular file stands in each
// file's place, a whole game plays: start-up reads what it can without waiting, the qualifying
// score enters the table in memory and stays there, while what is on disk keeps every byte,
// and no file is left behind, also at the quit; a failed save is never shown.
TEST(UnwritableFolder, GamePlaysAndTheTableKeepsTheNewRow) {
  Rows onDisk;
  for (const char* score : {"9", "8", "7", "6", "5", "4", "3", "2", "1", "0"}) onDisk.push_back({"P", "Easy", score});
  enum class Kind { ReadOnlyWithFiles, FoldersInPlaceOfFiles, NamedPipes, LinksToDevZero };
  // before: the table at start.
  const struct { const char* what; Kind kind; Rows before; std::ptrdiff_t newRow; } cases[] = {
      {"a folder where each file should be", Kind::FoldersInPlaceOfFiles, defaultRows(), 0},
      {"a named pipe where each file should be", Kind::NamedPipes, defaultRows(), 0},
      {"a link to /dev/zero where each file should be", Kind::LinksToDevZero, defaultRows(), 0},
      {"read-only with both files (last: it may skip)", Kind::ReadOnlyWithFiles, onDisk, 9}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    TemporaryFolder folder;
    const std::pair<std::string, std::string> files[] = {{kSettings, "False\nEasy\n"}, {kScores, tableText(onDisk)}};
    for (const auto& [name, bytes] : files) {
      if (c.kind == Kind::ReadOnlyWithFiles) writeBytes(folder / name, bytes);
      if (c.kind == Kind::FoldersInPlaceOfFiles) std::filesystem::create_directory(folder / name);
      if (c.kind == Kind::NamedPipes) {
        ASSERT_EQ(::mkfifo((folder / name).c_str(), 0600), 0);
      }
      if (c.kind == Kind::LinksToDevZero) std::filesystem::create_symlink("/dev/zero", folder / name);
    }
    const Names entries = folderEntries(folder.path());
    const std::string settings = fileBytes(folder / kSettings), scores = fileBytes(folder / kScores);
    std::optional<Mount> readOnly;
    if (c.kind == Kind::ReadOnlyWithFiles) {
      readOnly.emplace(folder.path());
      if (!readOnly->made()) GTEST_SKIP() << readOnly->why();
      const int probe = ::open((folder / "probe").c_str(), O_WRONLY | O_CREAT | O_EXCL, 0600);
      ASSERT_LT(probe, 0) << "the folder still takes files";
    }

    UnblockPipesLater watchdog({folder / kSettings, folder / kScores});
    Game game(folder.path());
    EXPECT_FALSE(watchdog.end()) << "start-up waited on a pipe";
    EXPECT_EQ(game.rows(), c.before);
    game.run(std::string("menu SoundSoundOff\n") + kRightAnswerAtEasy + "advance 90000\npress Enter\n");
    EXPECT_EQ(game.rows(), entered(c.before, c.newRow, {"", "Easy", "1"}));
    EXPECT_TRUE(game.enabled("Start"));
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
