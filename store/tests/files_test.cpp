#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>

#include <corvalta/testing/score_files.h>
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
namespace fs = std::filesystem;

// The hidden name under which the process `pid` writes the new text of `name`.
std::string temporaryName(const std::string& name, pid_t pid) {
  return "." + name + "." + std::to_string(pid) + ".new";
}

// The folder is $XDG_CONFIG_HOME when that is an absolute path, else ~/.config; taking it makes
// it and its missing parents, private to the user.
TEST(PreferencesFolder, FollowsTheDesktopRuleAndIsMadeWithItsParents) {
  const std::pair<UserEnvironment, const char*> cases[] = {
      {{"/srv/cfg", "/home/ann"}, "/srv/cfg"},
      {{"", "/home/ann"}, "/home/ann/.config"},
      {{"cfg/relative", "/home/ann"}, "/home/ann/.config"},
  };
  for (const auto& [environment, folder] : cases) {
    EXPECT_EQ(configurationFolderPath(environment), folder);
  }
  TemporaryFolder root;
  const PreferencesFolder folder(posixSystemCalls(), root / "a/b/c");
  EXPECT_EQ(fs::status(root / "a/b/c").permissions(), fs::perms::owner_all);
}

// A save leaves exactly the new bytes in the file that the name's links end in, in that file's
// folder, and no other file: the links stay as they are, the file keeps its permission bits (a
// file yet to be made gets the umask's), and a longer temporary file that a killed save under
// this process id left beside it is overwritten, not written into.
TEST(ReplaceWholeFile, KeepsLinksAndPermissionBits) {
  // link: the link's text at the stored name, "" for none; target: the file behind, in the
  // folder "dotfiles" beside the configuration folder; mode: before the save, 0 for no file.
  const struct { const char *what, *link, *target; mode_t mode, modeAfter; } cases[] = {
      {"group-readable file", "", "config/corvalta.plist", 0640, 0640},
      {"relative link", "../dotfiles/corvalta.plist", "dotfiles/corvalta.plist", 0600, 0600},
      {"absolute link, read-only file", "<root>/dotfiles/synced.plist", "dotfiles/synced.plist",
       0444, 0444},
      {"link to a file yet to be made", "../dotfiles/corvalta.plist", "dotfiles/corvalta.plist",
       0, 0644},
  };
  const mode_t umask = ::umask(022);
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    TemporaryFolder root;
    fs::create_directory(root / "config");
    fs::create_directory(root / "dotfiles");
    const fs::path stored = root / "config/corvalta.plist", target = root / c.target;
    if (c.mode != 0) {
      writeBytes(target, "True\nEasy\n");
      ::chmod(target.c_str(), c.mode);
      const std::string leftover = temporaryName(target.filename(), ::getpid());
      writeBytes(target.parent_path() / leftover, std::string(500, 'k'));
    }
    std::string link = c.link;
    if (link.starts_with("<root>")) link = root.path().string() + link.substr(6);
    if (!link.empty()) fs::create_symlink(link, stored);

    EXPECT_TRUE(replaceWholeFile(posixSystemCalls(), stored, "False\nHard\n"));
    EXPECT_EQ(fileBytes(target), "False\nHard\n");
    EXPECT_EQ(fs::status(target).permissions(), static_cast<fs::perms>(c.modeAfter));
    EXPECT_EQ(link.empty() ? "" : fs::read_symlink(stored).string(), link);
    EXPECT_EQ(folderEntries(root / "config"), Names{"corvalta.plist"});
    const bool linked = target.parent_path() != stored.parent_path();
    EXPECT_EQ(folderEntries(root / "dotfiles"), linked ? Names{target.filename()} : Names{});
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
  TemporaryFolder root;
  const fs::path config = root / "config", dotfiles = root / "dotfiles";
  fs::create_directory(config);
  fs::create_directory(dotfiles);
  fs::create_symlink("../dotfiles/scores", config / kScores);
  writeBytes(dotfiles / "scores", "Ann\tHard\t5\n");
  const Names removed = {temporaryName(kScores, dead), temporaryName(kScores, ::getpid())};
  Names kept = {temporaryName(kScores, ::getppid()), temporaryName(kSettings, dead),
                "." + kScores + ".12x.new", "." + kScores + "..new",
                kScores + "." + std::to_string(dead) + ".new",
                "." + kScores + "." + std::to_string(dead) + ".old"};
  for (const auto& name : removed) writeBytes(config / name, "x");
  for (const auto& name : kept) writeBytes(config / name, "x");
  writeBytes(dotfiles / temporaryName("scores", dead), "x");
  writeBytes(dotfiles / temporaryName(kScores, dead), "x");

  StoredFile file(posixSystemCalls(), config / kScores);
  EXPECT_EQ(file.OpenCreatingWith("").ReadLine(), "Ann\tHard\t5");
  kept.push_back(kScores);
  std::sort(kept.begin(), kept.end());
  EXPECT_EQ(folderEntries(config), kept);
  EXPECT_EQ(folderEntries(dotfiles), (Names{temporaryName(kScores, dead), "scores"}));
}

// A file is read as it stands, up to the size limit. Whichever call of a start fails, the file
// is either read as it stands and replaced by the next save, or read as the initial text and
// never replaced, because what it holds may be the user's data that a passing fault hid.
TEST(StoredFile, ReadsWhatItCanAndNeverReplacesWhatItCouldNotRead) {
  const std::string big(kMaxStoredFileSize + 5000, 'x'), old = "False\nHard\n";
  TemporaryFolder scratch;
  writeBytes(scratch / kSettings, big);
  StoredFile bigFile(posixSystemCalls(), scratch / kSettings);
  EXPECT_EQ(bigFile.OpenCreatingWith("").ReadLine(), big.substr(0, kMaxStoredFileSize));
  FaultySystemCalls clean;
  writeBytes(scratch / kSettings, old);
  StoredFile(clean, scratch / kSettings).OpenCreatingWith("");
  for (std::size_t index = 0; index < clean.log().size(); ++index) {
    SCOPED_TRACE(::testing::Message() << "call " << index << " (" << clean.log()[index] << ")");
    TemporaryFolder folder;
    writeBytes(folder / kSettings, old);
    FaultySystemCalls calls;
    calls.failCall(index, EIO);
    StoredFile file(calls, folder / kSettings);
    std::string outcome = file.OpenCreatingWith("True\nEasy\n").ReadLine();
    outcome += file.Replace("New\n") ? ", replaced: " : ", kept: ";
    outcome += fileBytes(folder / kSettings);
    EXPECT_TRUE(outcome == "False, replaced: New\n" || outcome == "True, kept: " + old) << outcome;
  }
}

// A save writes the new text in full beside the old file, flushes it, closes it, renames it
// over the old one and flushes the folder, in that order. Whichever of those calls fails, and
// however, the save ends either saved with the new file or not saved with the old file (or no
// file) as it was and nothing else in the folder.
TEST(InjectedFault, EachCallOfASaveFailingInTurn) {
  const std::string oldText = "Ann\tHard\t120\n" + std::string(300, 'o') + "\n";
  const std::string newText = "Bo\t Very Hard\t130\n" + std::string(5000, 'n') + "\n";
  FaultySystemCalls clean;
  TemporaryFolder cleanFolder;
  writeBytes(cleanFolder / kScores, oldText);
  EXPECT_TRUE(replaceWholeFile(clean, cleanFolder / kScores, newText));
  const Names log = clean.log();
  EXPECT_EQ(log, (Names{"lstat", "open", "fchmod", "write", "write", "fsync", "close", "rename",
                        "open", "fsync", "close"}));
  for (const bool oldFileThere : {true, false}) {
    for (const int error : {EIO, ENOSPC, EACCES, EINTR}) {
      for (std::size_t index = 0; index < log.size(); ++index) {
        SCOPED_TRACE(::testing::Message()
                     << "call " << index << " (" << log[index] << ") fails with " << error
                     << (oldFileThere ? "" : ", no old file"));
        TemporaryFolder folder;
        if (oldFileThere) writeBytes(folder / kScores, oldText);
        FaultySystemCalls calls;
        calls.failCall(index, error);
        const bool saved = replaceWholeFile(calls, folder / kScores, newText);
        EXPECT_EQ(fileBytes(folder / kScores),
                  saved ? newText : oldFileThere ? oldText : "<missing>");
        EXPECT_EQ(folderEntries(folder.path()), saved || oldFileThere ? Names{kScores} : Names{});
      }
    }
  }
}

}  // namespace
}  // namespace corvalta::testing
