#pragma once

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "corvalta/store/system_calls.h"

namespace corvalta::store {

// The operating system's calls, with a log of their names in order ("open", "write", ...) and
// the call with one index, counted from 0 over every call made, failing with one error without
// reaching the system.
class FaultySystemCalls final : public SystemCalls {
 public:
  void failCall(std::size_t index, int error) {
    failingIndex_ = index;
    error_ = error;
  }
  [[nodiscard]] const std::vector<std::string>& log() const { return log_; }

  int open(const std::string& path, int flags, mode_t mode) override {
    return fails("open") ? -1 : real().open(path, flags, mode);
  }
  ssize_t read(int fd, void* buffer, std::size_t size) override {
    return fails("read") ? -1 : real().read(fd, buffer, size);
  }
  // Writes at most 4 KiB a call, as the system may when a disk fills up or a signal comes.
  ssize_t write(int fd, const void* data, std::size_t size) override {
    return fails("write") ? -1 : real().write(fd, data, std::min<std::size_t>(size, 4096));
  }
  int fsync(int fd) override { return fails("fsync") ? -1 : real().fsync(fd); }
  // A failing close still releases the descriptor, as the system's does.
  int close(int fd) override {
    const bool failing = fails("close");
    const int result = real().close(fd);
    if (failing) errno = error_;
    return failing ? -1 : result;
  }
  int rename(const std::string& from, const std::string& to) override {
    return fails("rename") ? -1 : real().rename(from, to);
  }
  int unlink(const std::string& path) override {
    return fails("unlink") ? -1 : real().unlink(path);
  }
  int mkdir(const std::string& path, mode_t mode) override {
    return fails("mkdir") ? -1 : real().mkdir(path, mode);
  }
  int fstat(int fd, struct stat& status) override {
    return fails("fstat") ? -1 : real().fstat(fd, status);
  }
  int fchmod(int fd, mode_t mode) override {
    return fails("fchmod") ? -1 : real().fchmod(fd, mode);
  }
  int lstat(const std::string& path, struct stat& status) override {
    return fails("lstat") ? -1 : real().lstat(path, status);
  }
  ssize_t readlink(const std::string& path, char* buffer, std::size_t size) override {
    return fails("readlink") ? -1 : real().readlink(path, buffer, size);
  }
  int listFolder(const std::string& path, std::vector<std::string>& names) override {
    return fails("listFolder") ? -1 : real().listFolder(path, names);
  }

 private:
  static SystemCalls& real() { return posixSystemCalls(); }
  bool fails(const char* name) {
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
