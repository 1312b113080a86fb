#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>

#include "corvalta/store/whole_file.h"

namespace corvalta::store {

FileContents readWholeFile(SystemCalls& calls, const std::string& path) {
  // O_NONBLOCK: a named pipe in the file's place would otherwise hold the open until some
  // writer comes, and the game would never start. A regular file ignores the flag.
  const int fd = calls.open(path, O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY, 0);
  if (fd < 0) {
    return {errno == ENOENT ? ReadStatus::Missing : ReadStatus::Unreadable, {}};
  }
  // Only a regular file holds stored text: a pipe, a device such as /dev/zero or a folder
  // reads as a file that cannot be read.
  struct stat status {};
  if (calls.fstat(fd, status) != 0 || !S_ISREG(status.st_mode)) {
    calls.close(fd);
    return {ReadStatus::Unreadable, {}};
  }
  FileContents contents{ReadStatus::Read, {}};
  char buffer[4096];
  while (contents.bytes.size() < kMaxStoredFileSize) {
    const ssize_t got = calls.read(fd, buffer, sizeof buffer);
    if (got == 0) {
      break;
    }
    if (got < 0) {
      if (errno == EINTR) {
        continue;
      }
      contents = {ReadStatus::Unreadable, {}};
      break;
    }
    contents.bytes.append(buffer, static_cast<std::size_t>(got));
  }
  if (contents.bytes.size() > kMaxStoredFileSize) {
    contents.bytes.resize(kMaxStoredFileSize);
  }
  calls.close(fd);
  return contents;
}

}  // namespace corvalta::store
