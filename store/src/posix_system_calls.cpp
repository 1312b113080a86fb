#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>

#include "corvalta/store/system_calls.h"

namespace corvalta::store {
namespace {

class PosixSystemCalls final : public SystemCalls {
 public:
  int open(const std::string& path, int flags, mode_t mode) override {
    return ::open(path.c_str(), flags, mode);
  }
  ssize_t read(int fd, void* buffer, std::size_t size) override { return ::read(fd, buffer, size); }
  ssize_t write(int fd, const void* data, std::size_t size) override {
    return ::write(fd, data, size);
  }
  int fsync(int fd) override { return ::fsync(fd); }
  int close(int fd) override { return ::close(fd); }
  int rename(const std::string& from, const std::string& to) override {
    return std::rename(from.c_str(), to.c_str());
  }
  int unlink(const std::string& path) override { return ::unlink(path.c_str()); }
  int mkdir(const std::string& path, mode_t mode) override { return ::mkdir(path.c_str(), mode); }
  int fstat(int fd, struct stat& status) override { return ::fstat(fd, &status); }
  int fchmod(int fd, mode_t mode) override { return ::fchmod(fd, mode); }
  int lstat(const std::string& path, struct stat& status) override {
    return ::lstat(path.c_str(), &status);
  }
  ssize_t readlink(const std::string& path, char* buffer, std::size_t size) override {
    return ::readlink(path.c_str(), buffer, size);
  }
  int listFolder(const std::string& path, std::vector<std::string>& names) override {
    DIR* folder = ::opendir(path.c_str());
    if (folder == nullptr) {
      return -1;
    }
    names.clear();
    while (const dirent* entry = ::readdir(folder)) {
      const std::string name = entry->d_name;
      if (name != "." && name != "..") {
        names.push_back(name);
      }
    }
    ::closedir(folder);
    return 0;
  }
};

}  // namespace

SystemCalls& posixSystemCalls() {
  static PosixSystemCalls calls;
  return calls;
}

}  // namespace corvalta::store
