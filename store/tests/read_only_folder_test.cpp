#include <fcntl.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

#include "store_game.h"
#include "temporary_folder.h"

namespace corvalta::store::testing {
namespace {

using core::Module1;

// Makes a folder unwritable for this process. Root ignores mode bits, so as root the folder
// is bind-mounted read-only over itself; anyone else loses the write bit.
class ReadOnly {
 public:
  explicit ReadOnly(std::string folder) : folder_(std::move(folder)) {
    if (::geteuid() != 0) {
      made_ = ::chmod(folder_.c_str(), 0555) == 0;
    } else if (::mount(folder_.c_str(), folder_.c_str(), nullptr, MS_BIND, nullptr) == 0) {
      mounted_ = true;
      made_ = ::mount(nullptr, folder_.c_str(), nullptr, MS_REMOUNT | MS_BIND | MS_RDONLY, nullptr) == 0;
    }
    error_ = made_ ? 0 : errno;
  }
  ~ReadOnly() {
    if (mounted_) ::umount2(folder_.c_str(), MNT_DETACH);
  }
  ReadOnly(const ReadOnly&) = delete;
  ReadOnly& operator=(const ReadOnly&) = delete;

  [[nodiscard]] bool made() const { return made_; }
  [[nodiscard]] int error() const { return error_; }

 private:
  std::string folder_;
  bool mounted_ = false;
  bool made_ = false;
  int error_ = 0;
};

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
// left behind, also at the quit.
TEST(UnwritableFolder, GamePlaysAndTheTableKeepsTheNewRow) {
  const Rows onDisk = {{"Ann", "Hard", "9"}, {"Bo", "Easy", "8"}, {"Cy", "Easy", "7"}, {"Di", "Easy", "6"},
                       {"Ed", "Easy", "5"},  {"Fy", "Easy", "4"}, {"Gu", "Easy", "3"}, {"Ho", "Easy", "2"},
                       {"Io", "Easy", "1"},  {"Jo", "Easy", "0"}};
  enum class Kind { ReadOnlyWithFiles, ReadOnlyEmpty, FoldersInPlaceOfFiles };
  struct Case {
    const char* what;
    Kind kind;
    Rows before;  // the table at start
    std::ptrdiff_t newRow;
  };
  const Case cases[] = {
      {"read-only folder with both files", Kind::ReadOnlyWithFiles, onDisk, 9},
      {"read-only empty folder", Kind::ReadOnlyEmpty, defaultRows(), 0},
      {"a folder where each file should be", Kind::FoldersInPlaceOfFiles, defaultRows(), 0},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    TemporaryFolder folder;
    if (c.kind == Kind::ReadOnlyWithFiles) {
      writeBytes(folder / "corvalta.plist", "False\nEasy\n");
      writeBytes(folder / "corvalta-highscores.plist", tableText(onDisk));
    }
    if (c.kind == Kind::FoldersInPlaceOfFiles) {
      std::filesystem::create_directory(folder / "corvalta.plist");
      std::filesystem::create_directory(folder / "corvalta-highscores.plist");
    }
    const std::vector<std::string> entries = folderEntries(folder.path());
    const std::string settings = fileBytes(folder / "corvalta.plist");
    const std::string scores = fileBytes(folder / "corvalta-highscores.plist");
    std::optional<ReadOnly> readOnly;
    if (c.kind != Kind::FoldersInPlaceOfFiles) {
      readOnly.emplace(folder.path());
      if (!readOnly->made()) {
        GTEST_SKIP() << "making a folder read-only as root needs a bind mount (CAP_SYS_ADMIN): "
                     << std::strerror(readOnly->error()) << ": skipped";
      }
      ASSERT_FALSE(canCreateIn(folder.path()));
    }

    StoreGame game(folder.path());
    EXPECT_EQ(game.rows(), c.before);
    game.run(std::string("menu SoundSoundOff\n") + kRightAnswerAtEasy +
             "advance 90000\ntype NameField Zed\npress Enter\n");
    Rows after = c.before;
    after.insert(after.begin() + c.newRow, {"Zed", "Easy", "1"});
    after.pop_back();
    EXPECT_EQ(game.rows(), after);
    EXPECT_EQ(game.text("GamePoints"), "1");
    EXPECT_TRUE(game.window().control<platform::PushButton>("Start").Enabled());
    game.run("quit\n");
    EXPECT_EQ(game.session.app().exitCode(), 0);
    EXPECT_TRUE(game.session.services().dialogs.shown().empty()) << "a failed save is never shown";
    EXPECT_EQ(fileBytes(folder / "corvalta.plist"), settings);
    EXPECT_EQ(fileBytes(folder / "corvalta-highscores.plist"), scores);
    EXPECT_EQ(folderEntries(folder.path()), entries);
  }
}

}  // namespace
}  // namespace corvalta::store::testing
