#pragma once

#include <map>
#include <set>
#include <string>

#include "corvalta/store/system_calls.h"

namespace corvalta::store {

// A file system kept in memory behind the same calls, for a program that must leave the
// disk alone: the driver without a configuration folder, and tests. It knows plain files and
// folders under "/", which is there from the start, and no links; every file has the mode 0644
// and keeps it; errors are those of the POSIX calls.
class MemorySystemCalls final : public SystemCalls {
 public:
  MemorySystemCalls();

  int open(const std::string& path, int flags, mode_t mode) override;
  ssize_t read(int fd, void* buffer, std::size_t size) override;
  ssize_t write(int fd, const void* data, std::size_t size) override;
  int fsync(int fd) override;
  int close(int fd) override;
  int rename(const std::string& from, const std::string& to) override;
  int unlink(const std::string& path) override;
  int mkdir(const std::string& path, mode_t mode) override;
  int fstat(int fd, struct stat& status) override;
  int fchmod(int fd, mode_t mode) override;
  int lstat(const std::string& path, struct stat& status) override;
  ssize_t readlink(const std::string& path, char* buffer, std::size_t size) override;
  int listFolder(const std::string& path, std::vector<std::string>& names) override;

  // Every file by its path, with its bytes.
  [[nodiscard]] const std::map<std::string, std::string>& files() const { return files_; }

 private:
  struct Open {
    std::string path;
    std::size_t position = 0;
    bool folder = false;
  };

  [[nodiscard]] bool parentIsFolder(const std::string& path) const;
  Open* descriptor(int fd);

  std::map<std::string, std::string> files_;
  std::set<std::string> folders_;
  std::map<int, Open> open_;
  int nextDescriptor_ = 3;
};

}  // namespace corvalta::store
