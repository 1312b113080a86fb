#include "faulty_system_calls.h"

#include <unistd.h>

#include <cerrno>

namespace corvalta::store {

void FaultySystemCalls::failCall(std::size_t index, int error) {
  failingIndex_ = index;
  error_ = error;
}

bool FaultySystemCalls::failsNow(const char* name) {
  log_.emplace_back(name);
  if (failingIndex_ != log_.size() - 1) {
    return false;
  }
  errno = error_;
  return true;
}

int FaultySystemCalls::open(const std::string& path, int flags, mode_t mode) {
  return failsNow("open") ? -1 : posixSystemCalls().open(path, flags, mode);
}

ssize_t FaultySystemCalls::read(int fd, void* buffer, std::size_t size) {
  return failsNow("read") ? -1 : posixSystemCalls().read(fd, buffer, size);
}

ssize_t FaultySystemCalls::write(int fd, const void* data, std::size_t size) {
  return failsNow("write") ? -1 : posixSystemCalls().write(fd, data, size);
}

int FaultySystemCalls::fsync(int fd) {
  return failsNow("fsync") ? -1 : posixSystemCalls().fsync(fd);
}

// A failing close still releases the descriptor, as the system's does.
int FaultySystemCalls::close(int fd) {
  const bool fails = failsNow("close");
  const int result = posixSystemCalls().close(fd);
  if (fails) {
    errno = error_;
    return -1;
  }
  return result;
}

int FaultySystemCalls::rename(const std::string& from, const std::string& to) {
  return failsNow("rename") ? -1 : posixSystemCalls().rename(from, to);
}

int FaultySystemCalls::unlink(const std::string& path) {
  return failsNow("unlink") ? -1 : posixSystemCalls().unlink(path);
}

int FaultySystemCalls::mkdir(const std::string& path, mode_t mode) {
  return failsNow("mkdir") ? -1 : posixSystemCalls().mkdir(path, mode);
}

}  // namespace corvalta::store
