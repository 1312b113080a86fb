#include <fcntl.h>
#include <signal.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <optional>
#include <random>

#include <corvalta/testing/mount.h>
#include <corvalta/testing/temporary_folder.h>
#include <gtest/gtest.h>

#include "corvalta/store/preferences_folder.h"
#include "corvalta/store/stored_file.h"
#include "corvalta/store/whole_file.h"
#include "faulty_system_calls.h"

namespace corvalta::testing {
namespace {

using namespace store;
using Names = std::vector<std::string>;
using Rows = std::vector<std::vector<std::string>>;

const std::string kSettings = "corvalta.plist";
const std::string kScores = "corvalta-highscores.plist";

// The score file of these rows, each line ending in LF.
std::string tableText(const Rows& rows) {
  std::string text;
  for (const auto& row : rows) text += row[0] + "\t" + row[1] + "\t" + row[2] + "\n";
  return text;
}

// The folder is $XDG_CONFIG_HOME when that is an absolute path, else ~/.config; taking it makes
// it and its missing parents, private to the user.
TEST(PreferencesFolder, FollowsTheDesktopRuleAndIsMadeWithItsParents) {
  const std::pair<UserEnvironment, const char*> cases[] = {
      {{"/srv/cfg", "/home/ann"}, "/srv/cfg"},
      {{"", "/home/ann"}, "/home/ann/.config"},
      {{"cfg/relative", "/home/ann"}, "/home/ann/.config"},
  };
  for (const auto& [environment, folder] : cases) EXPECT_EQ(configurationFolderPath(environment), folder);
  TemporaryFolder root;
  const PreferencesFolder folder(posixSystemCalls(), root / "a/b/c");
  struct stat status {};
  ASSERT_EQ(::stat((root / "a/b/c").c_str(), &status), 0);
  EXPECT_TRUE(S_ISDIR(status.st_mode));
  EXPECT_EQ(status.st_mode & 0777, 0700U);
  EXPECT_EQ(folder.Child(kSettings).path(), root / "a/b/c/corvalta.plist");
}

// A replace leaves exactly the new bytes under the name, whatever stood there before, also
// where a save killed earlier by this process id left its longer temporary file, and nothing
// else in the folder.
TEST(ReplaceWholeFile, LeavesExactlyTheNewBytesAndNoOtherFile) {
  const std::string leftover = "." + kSettings + "." + std::to_string(::getpid()) + ".new";
  const struct { const char* before; std::string after; bool killedSaveBefore; } cases[] = {
      {"True\nVery Hard\nand a long tail that must not survive\n", "", false},
      {"", std::string(100000, 'z'), false},
      {"True\nEasy\n", "False\nHard\n", true},
  };
  for (const auto& c : cases) {
    TemporaryFolder folder;
    writeBytes(folder / kSettings, c.before);
    if (c.killedSaveBefore) writeBytes(folder / leftover, std::string(500, 'k'));
    EXPECT_TRUE(replaceWholeFile(posixSystemCalls(), folder / kSettings, c.after));
    EXPECT_EQ(fileBytes(folder / kSettings), c.after);
    EXPECT_EQ(folderEntries(folder.path()), Names{kSettings});
  }
}

// A save replaces the file that the name's links end in, in that file's folder, keeping the
// links as they are and the file's permission bits; a file yet to be made gets the umask's.
TEST(ReplaceWholeFile, KeepsLinksAndPermissionBits) {
  // link: the link's text at the stored name, "" for none; target: the file behind, in the
  // folder "dotfiles" beside the configuration folder; mode: before the save, 0 for no file.
  const struct { const char *what, *link, *target; mode_t mode, modeAfter; } cases[] = {
      {"read-only file", "", "config/corvalta.plist", 0444, 0444},
      {"group-readable file", "", "config/corvalta.plist", 0640, 0640},
      {"relative link", "../dotfiles/corvalta.plist", "dotfiles/corvalta.plist", 0600, 0600},
      {"absolute link, read-only file", "<root>/dotfiles/synced.plist", "dotfiles/synced.plist", 0444, 0444},
      {"link to a file yet to be made", "../dotfiles/corvalta.plist", "dotfiles/corvalta.plist", 0, 0644},
  };
  const mode_t umask = ::umask(022);
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    TemporaryFolder root;
    std::filesystem::create_directory(root / "config");
    std::filesystem::create_directory(root / "dotfiles");
    const std::string stored = root / "config/corvalta.plist";
    if (c.mode != 0) {
      writeBytes(root / c.target, "True\nEasy\n");
      ::chmod((root / c.target).c_str(), c.mode);
    }
    std::string link = c.link;
    if (link.rfind("<root>", 0) == 0) link = root.path().string() + link.substr(6);
    if (!link.empty()) std::filesystem::create_symlink(link, stored);

    EXPECT_TRUE(replaceWholeFile(posixSystemCalls(), stored, "False\nHard\n"));
    EXPECT_EQ(fileBytes(root / c.target), "False\nHard\n");
    struct stat status {};
    ASSERT_EQ(::stat((root / c.target).c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, c.modeAfter);
    EXPECT_EQ(link.empty() ? "" : std::filesystem::read_symlink(stored).string(), link);
    EXPECT_EQ(folderEntries(root.path() / "config"), Names{"corvalta.plist"});
    EXPECT_EQ(folderEntries(root.path() / "dotfiles"),
              c.target == std::string("config/corvalta.plist") ? Names{} : Names{std::filesystem::path(c.target).filename()});
  }
  ::umask(umask);
}

// A start removes the temporary files of saves that were killed, beside the stored name and
// beside the file its link points to, and nothing else: not those of a save that another
// running process may have under way, not files that only look alike.
TEST(StoredFile, StartRemovesWhatKilledSavesLeftAndNothingElse) {
  const pid_t dead = ::fork();
  if (dead == 0) ::_exit(0);
  ::waitpid(dead, nullptr, 0);
  const auto temporary = [](const std::string& name, pid_t pid) { return "." + name + "." + std::to_string(pid) + ".new"; };
  TemporaryFolder root;
  const std::filesystem::path config = root.path() / "config", dotfiles = root.path() / "dotfiles";
  std::filesystem::create_directory(config);
  std::filesystem::create_directory(dotfiles);
  std::filesystem::create_symlink("../dotfiles/scores", config / kScores);
  writeBytes(root / "dotfiles/scores", "Ann\tHard\t5\n");
  const Names removed = {temporary(kScores, dead), temporary(kScores, ::getpid())};
  const Names kept = {kScores, temporary(kScores, ::getppid()), temporary(kSettings, dead), "." + kScores + ".12x.new",
                      "." + kScores + "..new", kScores + "." + std::to_string(dead) + ".new",
                      "." + kScores + "." + std::to_string(dead) + ".old"};
  for (const auto& name : removed) writeBytes(config / name, "x");
  for (const auto& name : kept) if (name != kScores) writeBytes(config / name, "x");
  writeBytes(dotfiles / temporary("scores", dead), "x");
  writeBytes(dotfiles / temporary(kScores, dead), "x");

  StoredFile file(posixSystemCalls(), config / kScores);
  EXPECT_EQ(file.OpenCreatingWith("").ReadLine(), "Ann\tHard\t5");
  Names expected = kept;
  std::sort(expected.begin(), expected.end());
  EXPECT_EQ(folderEntries(config), expected);
  EXPECT_EQ(folderEntries(dotfiles), (Names{temporary(kScores, dead), "scores"}));
}

// A missing file is made with the initial text; a file that is there is read as it stands, up
// to the size limit; one that is there but can't be read reads as the initial text and is never
// replaced, because what it holds may be the user's data that a passing fault hid.
TEST(StoredFile, ReadsWhatItCanAndNeverReplacesWhatItCouldNotRead) {
  // before nullptr: no file; failingCall nullptr: none, else the first call of that name.
  const std::string big(kMaxStoredFileSize + 5000, 'x');
  const struct { const char *what, *before, *failingCall; std::string firstLine; bool replaced; } cases[] = {
      {"missing", nullptr, nullptr, "True", true},
      {"longer than any stored file", big.c_str(), nullptr, big.substr(0, kMaxStoredFileSize), true},
      {"open fails", "False\nHard\n", "open", "True", false},
      {"fstat fails", "False\nHard\n", "fstat", "True", false},
      {"read fails", "False\nHard\n", "read", "True", false},
  };
  FaultySystemCalls clean;
  {
    TemporaryFolder folder;
    writeBytes(folder / kSettings, "True\n");
    StoredFile(clean, folder / kSettings).OpenCreatingWith("");
  }
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    TemporaryFolder folder;
    if (c.before != nullptr) writeBytes(folder / kSettings, c.before);
    FaultySystemCalls calls;
    if (c.failingCall != nullptr) {
      const auto at = std::find(clean.log().begin(), clean.log().end(), c.failingCall);
      ASSERT_NE(at, clean.log().end());
      calls.failCall(static_cast<std::size_t>(at - clean.log().begin()), EIO);
    }
    StoredFile file(calls, folder / kSettings);
    TextInputStream in = file.OpenCreatingWith("True\nEasy\n");
    EXPECT_EQ(in.ReadLine(), c.firstLine);
    EXPECT_EQ(file.Replace("New\n"), c.replaced);
    EXPECT_EQ(fileBytes(folder / kSettings), c.replaced ? "New\n" : c.before);
  }
}

const std::string kOldText = "Ann\tHard\t120\n" + std::string(300, 'o') + "\n";

// Whichever call of a save fails, and however, the save ends either saved with the new file
// or not saved with the old file (or no file) as it was and nothing else in the folder.
TEST(InjectedFault, EachCallOfASaveFailingInTurn) {
  const std::string newText = "Bo\t Very Hard\t130\n" + std::string(5000, 'n') + "\n";
  FaultySystemCalls clean;
  TemporaryFolder cleanFolder;
  writeBytes(cleanFolder / kScores, kOldText);
  EXPECT_TRUE(replaceWholeFile(clean, cleanFolder / kScores, newText));
  const Names log = clean.log();
  for (const char* needed : {"open", "write", "fsync", "close", "rename"})
    EXPECT_NE(std::find(log.begin(), log.end(), needed), log.end()) << needed;
  int outcomes[2] = {0, 0};  // not saved, saved
  for (const bool oldFileThere : {true, false}) {
    for (const int error : {EIO, ENOSPC, EACCES, EINTR}) {
      for (std::size_t index = 0; index < log.size(); ++index) {
        SCOPED_TRACE(::testing::Message() << "call " << index << " (" << log[index] << ") fails with " << error
                                          << (oldFileThere ? "" : ", no old file"));
        TemporaryFolder folder;
        if (oldFileThere) writeBytes(folder / kScores, kOldText);
        FaultySystemCalls calls;
        calls.failCall(index, error);
        const bool saved = replaceWholeFile(calls, folder / kScores, newText);
        ++outcomes[saved];
        EXPECT_EQ(fileBytes(folder / kScores), saved ? newText : oldFileThere ? kOldText : "<missing>");
        EXPECT_EQ(folderEntries(folder.path()), saved || oldFileThere ? Names{kScores} : Names{});
      }
    }
  }
  EXPECT_GT(outcomes[0], 0);
  EXPECT_GT(outcomes[1], 0);
}

// Fills the file system at `folder` up, then gives back about `freeBytes`; with -1, takes every
// inode instead, so that creating a file fails.
void fillLeaving(const std::string& folder, off_t freeBytes) {
  for (int i = 0; freeBytes < 0; ++i) {
    const int fd = ::open((folder + "/i" + std::to_string(i)).c_str(), O_WRONLY | O_CREAT, 0600);
    if (fd < 0) return;
    ::close(fd);
  }
  const int fd = ::open((folder + "/filler").c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
  ASSERT_GE(fd, 0);
  const std::string chunk(4096, 'f');
  off_t written = 0;
  for (ssize_t n; (n = ::write(fd, chunk.data(), chunk.size())) > 0;) written += n;
  ASSERT_EQ(::ftruncate(fd, std::max<off_t>(0, written - freeBytes)), 0);
  ::close(fd);
}

// On a disk that fills up, each save ends either saved with the new file or not saved with
// the old file as it was and no other file left behind.
TEST(FullDisk, EverySaveEndsSavedOrWithTheOldFileIntact) {
  TemporaryFolder mountPoint;
  const Mount disk(mountPoint.path(), "size=64k,nr_inodes=32");
  if (!disk.made()) GTEST_SKIP() << disk.why();
  int outcomes[2] = {0, 0};  // not saved, saved
  for (const off_t freeBytes : {-1, 0, 100, 4096, 8192, 16384}) {
    for (const std::size_t newSize : {50u, 5000u, 12000u}) {
      SCOPED_TRACE(::testing::Message() << "free " << freeBytes << ", new size " << newSize);
      for (const auto& entry : std::filesystem::directory_iterator(mountPoint.path()))
        std::filesystem::remove_all(entry.path());
      const std::string folder = mountPoint / "prefs";
      std::filesystem::create_directory(folder);
      writeBytes(folder + "/" + kScores, kOldText);
      fillLeaving(mountPoint.path(), freeBytes);
      const std::string newText(newSize, 'n');
      const bool saved = replaceWholeFile(posixSystemCalls(), folder + "/" + kScores, newText);
      ++outcomes[saved];
      EXPECT_EQ(fileBytes(folder + "/" + kScores), saved ? newText : kOldText);
      EXPECT_EQ(folderEntries(folder), Names{kScores});
    }
  }
  EXPECT_GT(outcomes[0], 0);
  EXPECT_GT(outcomes[1], 0);
}

// A process killed at random moments during 1,000 saves that alternate two tables leaves the
// file as one of the two whole tables: never a mixture, a truncated file or an empty one; the
// next start removes the temporary files that the killed saves left.
TEST(KilledSave, FileIsAlwaysOneOfTheTwoWholeTables) {
  TemporaryFolder folder;
  const std::string path = folder / kScores;
  const std::string texts[2] = {tableText(Rows(10, {"Ann Marie", "Hard", "500"})),
                                tableText(Rows(10, {"\xc3\x85sa", " Very Hard", "90"}))};
  writeBytes(path, texts[1]);
  const unsigned seed = std::random_device{}();
  SCOPED_TRACE(::testing::Message() << "seed " << seed);
  std::mt19937 random(seed);
  std::size_t completed = 0;
  for (int kills = 1; completed < 1000; ++kills) {
    int progress[2];
    ASSERT_EQ(::pipe(progress), 0);
    const pid_t child = ::fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
      // Saves forever from where the last child stopped, one byte on the pipe per save.
      ::close(progress[0]);
      for (std::size_t i = completed;; ++i) {
        replaceWholeFile(posixSystemCalls(), path, texts[i % 2]);
        if (::write(progress[1], "s", 1) != 1) ::_exit(1);
      }
    }
    ::close(progress[1]);
    // Let the child finish a few saves, then kill it at some moment inside the next ones.
    char done[64];
    for (auto wanted = std::uniform_int_distribution<std::size_t>(0, 30)(random); wanted > 0;) {
      const ssize_t got = ::read(progress[0], done, std::min(wanted, sizeof done));
      ASSERT_GT(got, 0);
      wanted -= static_cast<std::size_t>(got);
      completed += static_cast<std::size_t>(got);
    }
    ::usleep(std::uniform_int_distribution<useconds_t>(0, 3000)(random));
    ::kill(child, SIGKILL);
    ::waitpid(child, nullptr, 0);
    for (ssize_t got; (got = ::read(progress[0], done, sizeof done)) > 0;) completed += static_cast<std::size_t>(got);
    ::close(progress[0]);
    const std::string bytes = fileBytes(path);
    ASSERT_TRUE(bytes == texts[0] || bytes == texts[1])
        << "after kill " << kills << " and " << completed << " saves: " << ::testing::PrintToString(bytes);
  }
  StoredFile(posixSystemCalls(), path).OpenCreatingWith("");
  EXPECT_EQ(folderEntries(folder.path()), Names{kScores}) << "the next start leaves no temporary file";
}

}  // namespace
}  // namespace corvalta::testing
