#include <sys/stat.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "corvalta/store/stored_file.h"
#include "corvalta/store/whole_file.h"
#include "temporary_folder.h"

namespace corvalta::store {
namespace {

std::string readAll(TextInputStream in) {
  std::string lines;
  for (std::string line = in.ReadLine(); !line.empty(); line = in.ReadLine()) {
    lines += line + "|";
  }
  return lines;
}

// A replace leaves exactly the new bytes under the name, whatever stood there before, and
// nothing else in the folder.
TEST(ReplaceWholeFile, LeavesExactlyTheNewBytesAndNoOtherFile) {
  struct Case {
    const char* before;  // nullptr: no file
    std::string after;
  };
  const std::vector<Case> cases = {
      {nullptr, "True\nEasy\n"},
      {"True\nVery Hard\nand a long tail that must not survive\n", "False\nHard\n"},
      {"x", ""},
      {"", std::string(100000, 'z')},
  };
  for (const Case& c : cases) {
    TemporaryFolder folder;
    if (c.before != nullptr) {
      writeBytes(folder / "corvalta.plist", c.before);
    }
    EXPECT_TRUE(replaceWholeFile(posixSystemCalls(), folder / "corvalta.plist", c.after));
    EXPECT_EQ(fileBytes(folder / "corvalta.plist"), c.after);
    EXPECT_EQ(folderEntries(folder.path()), std::vector<std::string>{"corvalta.plist"});
  }
}

// A missing file is created with the initial text and read as it; a file that is there is
// read as it stands; something unreadable in its place reads as the initial text and is
// never replaced.
TEST(StoredFile, MissingPresentAndUnreadableFiles) {
  const std::string initial = "True\nEasy\n";
  {
    TemporaryFolder folder;
    StoredFile file(posixSystemCalls(), folder / "corvalta.plist");
    EXPECT_EQ(readAll(file.OpenCreatingWith(initial)), "True|Easy|");
    EXPECT_EQ(fileBytes(folder / "corvalta.plist"), initial);
  }
  {
    TemporaryFolder folder;
    writeBytes(folder / "corvalta.plist", "False\r\nMedium\r\nextra\r\n");
    StoredFile file(posixSystemCalls(), folder / "corvalta.plist");
    EXPECT_EQ(readAll(file.OpenCreatingWith(initial)), "False|Medium|extra|");
    EXPECT_EQ(fileBytes(folder / "corvalta.plist"), "False\r\nMedium\r\nextra\r\n");
    EXPECT_TRUE(file.Replace("True\nHard\n"));
    EXPECT_EQ(fileBytes(folder / "corvalta.plist"), "True\nHard\n");
  }
  {
    TemporaryFolder folder;
    std::filesystem::create_directory(folder / "corvalta.plist");
    writeBytes(folder / "corvalta.plist/inside", "kept");
    StoredFile file(posixSystemCalls(), folder / "corvalta.plist");
    EXPECT_EQ(readAll(file.OpenCreatingWith(initial)), "True|Easy|");
    EXPECT_FALSE(file.Replace("False\nHard\n"));
    EXPECT_EQ(fileBytes(folder / "corvalta.plist/inside"), "kept");
    EXPECT_EQ(folderEntries(folder.path()), std::vector<std::string>{"corvalta.plist"});
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
}  // namespace corvalta::store
