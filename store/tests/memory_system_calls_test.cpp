#include <corvalta/testing/temporary_folder.h>
#include <fcntl.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>

#include "corvalta/store/memory_system_calls.h"
#include "corvalta/store/preferences_folder.h"
#include "corvalta/store/whole_file.h"

namespace corvalta::store {
namespace {

// What the program does with its files, told as one line a step: made, read, replaced,
// and refused where POSIX refuses.
std::string story(SystemCalls& calls, const std::string& root) {
  std::string told;
  const auto tell = [&told](const std::string& step) { told += step + "\n"; };
  const auto status = [](ReadStatus s) -> std::string {
    return s == ReadStatus::Read ? "read" : s == ReadStatus::Missing ? "missing" : "unreadable";
  };
  const auto yes = [](bool done) { return std::string(done ? "yes" : "no"); };
  const auto error = [](int result) {
    return result == 0 ? std::string("0") : std::string(std::strerror(errno));
  };
  const PreferencesFolder folder(calls, root + "/config/corvalta");
  StoredFile settings = folder.Child("corvalta.plist");
  tell("first read: " + settings.OpenCreatingWith("True\nEasy\n").ReadLine());
  const FileContents made = readWholeFile(calls, settings.path());
  tell("made: " + status(made.status) + " '" + made.bytes + "'");
  tell("replaced: " + yes(settings.Replace("False\nHard\n")));
  tell("next read: " + StoredFile(calls, settings.path()).OpenCreatingWith("").ReadLine());
  tell("into a missing folder: " + yes(replaceWholeFile(calls, root + "/none/x", "a")));
  tell("a folder read as a file: " + status(readWholeFile(calls, folder.path()).status));
  tell("a folder replaced by a file: " + yes(replaceWholeFile(calls, folder.path(), "a")));
  tell("mkdir again: " + error(calls.mkdir(folder.path(), 0700)));
  tell("unlink a missing file: " + error(calls.unlink(root + "/gone")));
  tell("open a missing file: " + error(calls.open(root + "/gone", O_RDONLY, 0) < 0 ? -1 : 0));
  return told;
}

// Files in memory behave as the system's do for every call the program makes.
TEST(MemorySystemCalls, TellTheSameStoryAsTheSystem) {
  testing::TemporaryFolder root;
  MemorySystemCalls memory;
  const std::string expected =
      "first read: True\nmade: read 'True\nEasy\n'\nreplaced: yes\nnext read: False\n"
      "into a missing folder: no\na folder read as a file: unreadable\n"
      "a folder replaced by a file: no\n"
      "mkdir again: File exists\nunlink a missing file: No such file or directory\n"
      "open a missing file: No such file or directory\n";
  EXPECT_EQ(story(posixSystemCalls(), root.path().string()), expected);
  EXPECT_EQ(story(memory, root.path().string()), expected);
}

}  // namespace
}  // namespace corvalta::store
