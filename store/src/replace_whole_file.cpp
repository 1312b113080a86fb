#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>

#include "corvalta/store/whole_file.h"

namespace corvalta::store {
namespace {

// The new text is written under a hidden name that carries the process id, so that two
// running programs never write into one temporary file, and a file left by a process that
// was killed mid-save is reused, not piled up, by the next process of that id.
std::string temporaryPathFor(const std::filesystem::path& target) {
  return (target.parent_path() /
          ("." + target.filename().string() + "." + std::to_string(::getpid()) + ".new"))
      .string();
}

bool writeAll(SystemCalls& calls, int fd, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = calls.write(fd, bytes.data(), bytes.size());
    if (written < 0 && errno == EINTR) {
      continue;
    }
    if (written <= 0) {
      return false;
    }
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

bool writeTemporary(SystemCalls& calls, const std::string& path, std::string_view bytes) {
  const int fd = calls.open(path, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOFOLLOW, 0666);
  if (fd < 0) {
    return false;
  }
  const bool flushed = writeAll(calls, fd, bytes) && calls.fsync(fd) == 0;
  // close can report a write error that the file system deferred.
  const bool closed = calls.close(fd) == 0;
  if (!(flushed && closed)) {
    calls.unlink(path);
    return false;
  }
  return true;
}

// Makes the rename itself durable. Once the rename is done the new file is what the path
// names, so a failure here does not undo the save.
void flushFolder(SystemCalls& calls, const std::filesystem::path& folder) {
  const int fd = calls.open(folder.string(), O_RDONLY | O_DIRECTORY | O_CLOEXEC, 0);
  if (fd < 0) {
    return;
  }
  calls.fsync(fd);
  calls.close(fd);
}

}  // namespace

bool replaceWholeFile(SystemCalls& calls, const std::string& path, std::string_view bytes) {
  const std::filesystem::path target(path);
  const std::string temporary = temporaryPathFor(target);
  if (!writeTemporary(calls, temporary, bytes)) {
    return false;
  }
  if (calls.rename(temporary, path) != 0) {
    calls.unlink(temporary);
    return false;
  }
  flushFolder(calls, target.parent_path());
  return true;
}

}  // namespace corvalta::store
