#pragma once

#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <string>
#include <utility>

namespace corvalta::testing {

// A folder made into another file system for the length of a test: with tmpfs options
// ("size=64k,nr_inodes=32") a tiny tmpfs, without them the folder itself read-only. Root
// ignores mode bits, so as root the folder is bind-mounted read-only over itself; anyone else
// loses the write bit. Mounting needs CAP_SYS_ADMIN: without it, made() is false.
class Mount {
 public:
  explicit Mount(std::string folder, const char* tmpfsOptions = nullptr) : folder_(std::move(folder)) {
    const char* at = folder_.c_str();
    if (tmpfsOptions != nullptr) {
      made_ = mounted_ = ::mount("tmpfs", at, "tmpfs", 0, tmpfsOptions) == 0;
    } else if (::geteuid() != 0) {
      made_ = ::chmod(at, 0555) == 0;
    } else if ((mounted_ = ::mount(at, at, nullptr, MS_BIND, nullptr) == 0)) {
      made_ = ::mount(nullptr, at, nullptr, MS_REMOUNT | MS_BIND | MS_RDONLY, nullptr) == 0;
    }
    why_ = made_ ? "" : std::string("mounting needs CAP_SYS_ADMIN (") + std::strerror(errno) + "): skipped";
  }
  ~Mount() {
    if (mounted_) ::umount2(folder_.c_str(), MNT_DETACH);
  }
  Mount(const Mount&) = delete;
  Mount& operator=(const Mount&) = delete;

  [[nodiscard]] bool made() const { return made_; }
  [[nodiscard]] const std::string& why() const { return why_; }

 private:
  std::string folder_;
  bool mounted_ = false;
  bool made_ = false;
  std::string why_;
};

}  // namespace corvalta::testing
