#include <fcntl.h>

#include <cerrno>

#include "corvalta/store/whole_file.h"

namespace corvalta::store {

FileContents readWholeFile(SystemCalls& calls, const std::string& path) {
  const int fd = calls.open(path, O_RDONLY | O_CLOEXEC, 0);
  if (fd < 0) {
    return {errno == ENOENT ? ReadStatus::Missing : ReadStatus::Unreadable, {}};
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
