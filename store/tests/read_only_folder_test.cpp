#include <fcntl.h>
#include <unistd.h>

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "mount.h"
#include "store_game.h"

namespace corvalta::testing {
namespace {

bool canCreateIn(const std::string& folder) {
  const std::string probe = folder + "/probe";
  const int fd = ::open(probe.c_str(), O_WRONLY | O_CREAT | O_EXCL, 0600);
  if (fd < 0) return false;
  ::close(fd);
  ::unlink(probe.c_str());
  return true;
}

// In a folder that takes no file, a whole game plays: the qualifying score enters the table in
// memory and stays there, while the files on disk, if any, keep every byte, and no file is
// left behind, also at the quit; a failed save is never shown.
TEST(UnwritableFolder, GamePlaysAndTheTableKeepsTheNewRow) {
  Rows onDisk;
  for (int score = 9; score >= 0; --score) {
    onDisk.push_back({"P" + std::to_string(score), "Easy", std::to_string(score)});
  }
  enum class Kind { ReadOnlyWithFiles, ReadOnlyEmpty, FoldersInPlaceOfFiles };
  const struct {
    const char* what;
    Kind kind;
    Rows before;  // the table at start
    std::ptrdiff_t newRow;
  } cases[] = {
      {"read-only folder with both files", Kind::ReadOnlyWithFiles, onDisk, 9},
      {"read-only empty folder", Kind::ReadOnlyEmpty, defaultRows(), 0},
      {"a folder where each file should be", Kind::FoldersInPlaceOfFiles, defaultRows(), 0},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    TemporaryFolder folder;
    if (c.kind == Kind::ReadOnlyWithFiles) {
      writeBytes(folder / kSettings, "False\nEasy\n");
      writeBytes(folder / kScores, tableText(onDisk));
    }
    if (c.kind == Kind::FoldersInPlaceOfFiles) {
      std::filesystem::create_directory(folder / kSettings);
      std::filesystem::create_directory(folder / kScores);
    }
    const std::vector<std::string> entries = folderEntries(folder.path());
    const std::string settings = fileBytes(folder / kSettings);
    const std::string scores = fileBytes(folder / kScores);
    std::optional<Mount> readOnly;
    if (c.kind != Kind::FoldersInPlaceOfFiles) {
      readOnly.emplace(folder.path());
      if (!readOnly->made()) GTEST_SKIP() << readOnly->why();
      ASSERT_FALSE(canCreateIn(folder.path()));
    }

    Game game(folder.path());
    EXPECT_EQ(game.rows(), c.before);
    game.run(std::string("menu SoundSoundOff\n") + kRightAnswerAtEasy +
             "advance 90000\ntype NameField Zed\npress Enter\n");
    EXPECT_EQ(game.rows(), entered(c.before, c.newRow, {"Zed", "Easy", "1"}));
    EXPECT_TRUE(game.enabled("Start"));
    game.run("quit\n");
    EXPECT_EQ(game.session.app().exitCode(), 0);
    EXPECT_TRUE(game.session.services().dialogs.shown().empty());
    EXPECT_EQ(fileBytes(folder / kSettings), settings);
    EXPECT_EQ(fileBytes(folder / kScores), scores);
    EXPECT_EQ(folderEntries(folder.path()), entries);
  }
}

}  // namespace
}  // namespace corvalta::testing
