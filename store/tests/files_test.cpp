#include <fcntl.h>
#include <signal.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <chrono>
#include <condition_variable>
#include <cstring>
#include <filesystem>
#include <optional>
#include <mutex>
#include <random>
#include <thread>

#include "corvalta/store/preferences_folder.h"
#include "corvalta/store/stored_file.h"
#include "corvalta/store/whole_file.h"
#include "faulty_system_calls.h"
#include "store_game.h"

namespace corvalta::testing {
namespace {

using namespace store;
using Names = std::vector<std::string>;

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
  // before nullptr: no file; failingCall -1: none, else counted after the look for leftovers
  // (one lstat): 1 the open for reading, 2 its fstat, 3 the first read.
  const std::string big(kMaxStoredFileSize + 5000, 'x');
  const struct { const char *what, *before; int failingCall; std::string firstLine; bool replaced; } cases[] = {
      {"missing", nullptr, -1, "True", true},
      {"longer than any stored file", big.c_str(), -1, big.substr(0, kMaxStoredFileSize), true},
      {"open fails", "False\nHard\n", 1, "True", false},
      {"fstat fails", "False\nHard\n", 2, "True", false},
      {"read fails", "False\nHard\n", 3, "True", false},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    TemporaryFolder folder;
    if (c.before != nullptr) writeBytes(folder / kSettings, c.before);
    FaultySystemCalls calls;
    if (c.failingCall >= 0) calls.failCall(static_cast<std::size_t>(c.failingCall), EIO);
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

// A folder made into another file system for the length of a test: with tmpfs options
// ("size=64k,nr_inodes=32") a tiny tmpfs, without them the folder itself read-only. Root
// ignores mode bits, so as root the folder is bind-mounted read-only over itself; anyone else
// loses the write bit. Mounting needs CAP_SYS_ADMIN: without it, made() is false.
class Mount {
 public:
  explicit Mount(std::string folder, const char* tmpfsOptions = nullptr) : folder_(std::move(folder)) {
    const char* at = folder_.c_str();
    if (tmpfsOptions != nullptr) {
      made_ = mounted_ = ::mount("tmpfs", at, "tmpfs", 0, tmpfsOptions) == 0;
    } else if (::geteuid() != 0) {
      made_ = ::chmod(at, 0555) == 0;
    } else if ((mounted_ = ::mount(at, at, nullptr, MS_BIND, nullptr) == 0)) {
      made_ = ::mount(nullptr, at, nullptr, MS_REMOUNT | MS_BIND | MS_RDONLY, nullptr) == 0;
    }
    why_ = made_ ? "" : std::string("mounting needs CAP_SYS_ADMIN (") + std::strerror(errno) + "): skipped";
  }
  ~Mount() {
    if (mounted_) ::umount2(folder_.c_str(), MNT_DETACH);
  }
  Mount(const Mount&) = delete;
  Mount& operator=(const Mount&) = delete;

  [[nodiscard]] bool made() const { return made_; }
  [[nodiscard]] const std::string& why() const { return why_; }

 private:
  std::string folder_;
  bool mounted_ = false;
  bool made_ = false;
  std::string why_;
};

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
