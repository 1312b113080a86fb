#include <fcntl.h>
#include <unistd.h>

#include <corvalta/testing/temporary_folder.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "corvalta/store/whole_file.h"
#include "mount.h"

namespace corvalta::testing {
namespace {

using namespace store;

const std::string kName = "corvalta-highscores.plist";
const std::string kOldText = std::string(9, ' ') + "\t \t0\n";

// Fills the file system at `folder` up, then gives back about `freeBytes`.
void fillLeaving(const std::string& folder, off_t freeBytes) {
  const std::string filler = folder + "/filler";
  const int fd = ::open(filler.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
  ASSERT_GE(fd, 0);
  const std::string chunk(4096, 'f');
  off_t written = 0;
  for (ssize_t n; (n = ::write(fd, chunk.data(), chunk.size())) > 0;) {
    written += n;
  }
  ASSERT_EQ(::ftruncate(fd, std::max<off_t>(0, written - freeBytes)), 0);
  ::close(fd);
}

// Uses up every inode but the ones taken, so that creating a file fails.
void takeEveryInode(const std::string& folder) {
  for (int i = 0;; ++i) {
    const int fd = ::open((folder + "/i" + std::to_string(i)).c_str(), O_WRONLY | O_CREAT, 0600);
    if (fd < 0) {
      return;
    }
    ::close(fd);
  }
}

// On a disk that fills up, each save ends either saved with the new file or not saved with
// the old file as it was and no other file left behind.
TEST(FullDisk, EverySaveEndsSavedOrWithTheOldFileIntact) {
  TemporaryFolder mountPoint;
  const Mount disk(mountPoint.path(), "size=64k,nr_inodes=32");
  if (!disk.made()) GTEST_SKIP() << disk.why();
  struct Case {
    off_t freeBytes;   // -1: space left, but no inode
    std::size_t newSize;
  };
  std::vector<Case> cases;
  for (const off_t freeBytes : {-1, 0, 100, 4096, 8192, 16384}) {
    for (const std::size_t newSize : {std::size_t{50}, std::size_t{5000}, std::size_t{12000}}) {
      cases.push_back({freeBytes, newSize});
    }
  }
  int saved = 0;
  int intact = 0;
  for (const Case& c : cases) {
    SCOPED_TRACE(::testing::Message() << "free " << c.freeBytes << ", new size " << c.newSize);
    const std::string folder = mountPoint / "prefs";
    for (const auto& entry : std::filesystem::directory_iterator(mountPoint.path())) {
      std::filesystem::remove_all(entry.path());
    }
    std::filesystem::create_directory(folder);
    writeBytes(folder + "/" + kName, kOldText);
    if (c.freeBytes < 0) {
      takeEveryInode(mountPoint.path());
    } else {
      fillLeaving(mountPoint.path(), c.freeBytes);
    }
    const std::string newText(c.newSize, 'n');
    if (replaceWholeFile(posixSystemCalls(), folder + "/" + kName, newText)) {
      ++saved;
      EXPECT_EQ(fileBytes(folder + "/" + kName), newText);
    } else {
      ++intact;
      EXPECT_EQ(fileBytes(folder + "/" + kName), kOldText);
    }
    EXPECT_EQ(folderEntries(folder), std::vector<std::string>{kName});
  }
  EXPECT_GT(saved, 0);
  EXPECT_GT(intact, 0);
}

}  // namespace
}  // namespace corvalta::testing
