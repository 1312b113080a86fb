#include <sys/stat.h>
#include <unistd.h>

#include <corvalta/testing/temporary_folder.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <string>
#include <vector>

#include "corvalta/store/preferences_folder.h"
#include "corvalta/store/stored_file.h"
#include "corvalta/store/whole_file.h"
#include "faulty_system_calls.h"

namespace corvalta::testing {
namespace {

using namespace store;
using Names = std::vector<std::string>;

const std::string kName = "corvalta.plist";

// The folder is $XDG_CONFIG_HOME when that is an absolute path, else ~/.config; taking it makes
// it and its missing parents, private to the user.
TEST(PreferencesFolder, FollowsTheDesktopRuleAndIsMadeWithItsParents) {
  const std::pair<UserEnvironment, const char*> cases[] = {
      {{"/srv/cfg", "/home/ann"}, "/srv/cfg"},
      {{"", "/home/ann"}, "/home/ann/.config"},
      {{"cfg/relative", "/home/ann"}, "/home/ann/.config"},
  };
  for (const auto& [environment, folder] : cases) {
    EXPECT_EQ(configurationFolderPath(environment), folder) << environment.xdgConfigHome;
  }
  TemporaryFolder root;
  const PreferencesFolder folder(posixSystemCalls(), root / "a/b/c");
  struct stat status {};
  ASSERT_EQ(::stat((root / "a/b/c").c_str(), &status), 0);
  EXPECT_TRUE(S_ISDIR(status.st_mode));
  EXPECT_EQ(status.st_mode & 0777, 0700U);
  EXPECT_EQ(folder.Child(kName).path(), root / "a/b/c/corvalta.plist");
}

// A replace leaves exactly the new bytes under the name, whatever stood there before, also
// where a save killed earlier by this process id left its longer temporary file, and nothing
// else in the folder.
TEST(ReplaceWholeFile, LeavesExactlyTheNewBytesAndNoOtherFile) {
  const std::string leftover = "." + kName + "." + std::to_string(::getpid()) + ".new";
  struct Case {
    const char* before;  // nullptr: no file
    std::string after;
    bool killedSaveBefore;
  };
  const Case cases[] = {
      {nullptr, "True\nEasy\n", false},
      {"True\nVery Hard\nand a long tail that must not survive\n", "False\nHard\n", false},
      {"x", "", false},
      {"", std::string(100000, 'z'), false},
      {"True\nEasy\n", "False\nHard\n", true},
  };
  for (const Case& c : cases) {
    TemporaryFolder folder;
    if (c.before != nullptr) writeBytes(folder / kName, c.before);
    if (c.killedSaveBefore) writeBytes(folder / leftover, std::string(500, 'k'));
    EXPECT_TRUE(replaceWholeFile(posixSystemCalls(), folder / kName, c.after));
    EXPECT_EQ(fileBytes(folder / kName), c.after);
    EXPECT_EQ(folderEntries(folder.path()), Names{kName});
  }
}

// A missing file is made with the initial text; a file that is there is read as it stands; one
// that is there but can't be read reads as the initial text and is never replaced, because
// what it holds may be the user's data that a passing fault hid.
TEST(StoredFile, ReadsWhatItCanAndNeverReplacesWhatItCouldNotRead) {
  struct Case {
    const char* what;
    const char* before;  // nullptr: no file
    int failingCall;     // -1: none; 0: the open for reading, 1: the first read
    const char* firstLine;
    bool replaced;
  };
  const Case cases[] = {
      {"missing", nullptr, -1, "True", true},
      {"present, CR LF", "False\r\nMedium\r\n", -1, "False", true},
      {"open fails", "False\nHard\n", 0, "True", false},
      {"read fails", "False\nHard\n", 1, "True", false},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    TemporaryFolder folder;
    if (c.before != nullptr) writeBytes(folder / kName, c.before);
    FaultySystemCalls calls;
    if (c.failingCall >= 0) calls.failCall(static_cast<std::size_t>(c.failingCall), EIO);
    StoredFile file(calls, folder / kName);
    TextInputStream in = file.OpenCreatingWith("True\nEasy\n");
    EXPECT_EQ(in.ReadLine(), c.firstLine);
    EXPECT_EQ(file.Replace("New\n"), c.replaced);
    EXPECT_EQ(fileBytes(folder / kName), c.replaced ? "New\n" : c.before);
  }
}

// A file longer than any stored file could be is read only up to the limit.
TEST(ReadWholeFile, StopsAtTheSizeLimit) {
  TemporaryFolder folder;
  writeBytes(folder / "big", std::string(kMaxStoredFileSize + 5000, 'x'));
  const FileContents contents = readWholeFile(posixSystemCalls(), folder / "big");
  EXPECT_EQ(contents.status, ReadStatus::Read);
  EXPECT_EQ(contents.bytes.size(), kMaxStoredFileSize);
}

}  // namespace
}  // namespace corvalta::testing
