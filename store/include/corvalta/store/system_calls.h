#pragma once

#include <sys/stat.h>
#include <sys/types.h>

#include <cstddef>
#include <string>
#include <vector>

namespace corvalta::store {

// The system calls that reading and saving the stored files make, one virtual each, so that
// a test can make any one of them fail. Each behaves as its POSIX namesake: -1 and errno on
// failure.
class SystemCalls {
 public:
  virtual ~SystemCalls() = default;

  virtual int open(const std::string& path, int flags, mode_t mode) = 0;
  virtual ssize_t read(int fd, void* buffer, std::size_t size) = 0;
  virtual ssize_t write(int fd, const void* data, std::size_t size) = 0;
  virtual int fsync(int fd) = 0;
  virtual int close(int fd) = 0;
  virtual int rename(const std::string& from, const std::string& to) = 0;
  virtual int unlink(const std::string& path) = 0;
  virtual int mkdir(const std::string& path, mode_t mode) = 0;
  virtual int fstat(int fd, struct stat& status) = 0;
  virtual int fchmod(int fd, mode_t mode) = 0;
  // Of the path itself, not of what a symbolic link there points to.
  virtual int lstat(const std::string& path, struct stat& status) = 0;
  virtual ssize_t readlink(const std::string& path, char* buffer, std::size_t size) = 0;
  // opendir and readdir: the names in the folder, without "." and "..".
  virtual int listFolder(const std::string& path, std::vector<std::string>& names) = 0;
};

// The operating system's own calls.
SystemCalls& posixSystemCalls();

}  // namespace corvalta::store
