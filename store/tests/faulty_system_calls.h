#pragma once

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
  void failCall(std::size_t index, int error);

  // The names of the calls made so far ("open", "write", ...), in order.
  [[nodiscard]] const std::vector<std::string>& log() const { return log_; }

  int open(const std::string& path, int flags, mode_t mode) override;
  ssize_t read(int fd, void* buffer, std::size_t size) override;
  ssize_t write(int fd, const void* data, std::size_t size) override;
  int fsync(int fd) override;
  int close(int fd) override;
  int rename(const std::string& from, const std::string& to) override;
  int unlink(const std::string& path) override;
  int mkdir(const std::string& path, mode_t mode) override;

 private:
  bool failsNow(const char* name);

  std::vector<std::string> log_;
  std::optional<std::size_t> failingIndex_;
  int error_ = 0;
};

}  // namespace corvalta::store
