#pragma once

#include <cerrno>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "corvalta/store/system_calls.h"

namespace corvalta::store {

// The operating system's calls, with a log of the calls made and one of them made to fail.
class FaultySystemCalls final : public SystemCalls {
 public:
  // The call with this index, counted from 0 over every call made, fails with `error`
  // without reaching the system.
  void failCall(std::size_t index, int error) {
    failingIndex_ = index;
    error_ = error;
  }

  // The names of the calls made so far ("open", "write", ...), in order.
  [[nodiscard]] const std::vector<std::string>& log() const { return log_; }

  int open(const std::string& path, int flags, mode_t mode) override {
    return failsNow("open") ? -1 : real().open(path, flags, mode);
  }
  ssize_t read(int fd, void* buffer, std::size_t size) override {
    return failsNow("read") ? -1 : real().read(fd, buffer, size);
  }
  ssize_t write(int fd, const void* data, std::size_t size) override {
    return failsNow("write") ? -1 : real().write(fd, data, size);
  }
  int fsync(int fd) override { return failsNow("fsync") ? -1 : real().fsync(fd); }
  // A failing close still releases the descriptor, as the system's does.
  int close(int fd) override {
    const bool fails = failsNow("close");
    const int result = real().close(fd);
    if (fails) errno = error_;
    return fails ? -1 : result;
  }
  int rename(const std::string& from, const std::string& to) override {
    return failsNow("rename") ? -1 : real().rename(from, to);
  }
  int unlink(const std::string& path) override { return failsNow("unlink") ? -1 : real().unlink(path); }
  int mkdir(const std::string& path, mode_t mode) override {
    return failsNow("mkdir") ? -1 : real().mkdir(path, mode);
  }

 private:
  static SystemCalls& real() { return posixSystemCalls(); }
  bool failsNow(const char* name) {
    log_.emplace_back(name);
    if (failingIndex_ != log_.size() - 1) return false;
    errno = error_;
    return true;
  }

  std::vector<std::string> log_;
  std::optional<std::size_t> failingIndex_;
  int error_ = 0;
};

}  // namespace corvalta::store
