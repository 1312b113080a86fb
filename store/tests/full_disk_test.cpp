#include <fcntl.h>
#include <sys/mount.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

#include "corvalta/store/whole_file.h"
#include "temporary_folder.h"

namespace corvalta::store {
namespace {

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

// A tiny tmpfs mounted over a folder for the length of a test.
class TinyTmpfs {
 public:
  explicit TinyTmpfs(const std::string& at)
      : at_(at), mounted_(::mount("tmpfs", at.c_str(), "tmpfs", 0, "size=64k,nr_inodes=32") == 0),
        error_(errno) {}
  ~TinyTmpfs() {
    if (mounted_) {
      ::umount2(at_.c_str(), MNT_DETACH);
    }
  }
  TinyTmpfs(const TinyTmpfs&) = delete;
  TinyTmpfs& operator=(const TinyTmpfs&) = delete;

  [[nodiscard]] bool mounted() const { return mounted_; }
  [[nodiscard]] int error() const { return error_; }

 private:
  std::string at_;
  bool mounted_;
  int error_;
};

// On a disk that fills up, each save ends either saved with the new file or not saved with
// the old file as it was and no other file left behind.
TEST(FullDisk, EverySaveEndsSavedOrWithTheOldFileIntact) {
  TemporaryFolder mountPoint;
  const TinyTmpfs disk(mountPoint.path());
  if (!disk.mounted()) {
    GTEST_SKIP() << "mounting a tmpfs needs CAP_SYS_ADMIN (" << std::strerror(disk.error())
                 << "): skipped";
  }
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
    SCOPED_TRACE(testing::Message() << "free " << c.freeBytes << ", new size " << c.newSize);
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
}  // namespace corvalta::store
