#include "corvalta/store/memory_system_calls.h"

#include <fcntl.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>

namespace corvalta::store {
namespace {

int failWith(int error) {
  errno = error;
  return -1;
}

}  // namespace

MemorySystemCalls::MemorySystemCalls() : folders_{"/"} {}

bool MemorySystemCalls::parentIsFolder(const std::string& path) const {
  return folders_.contains(std::filesystem::path(path).parent_path().string());
}

MemorySystemCalls::Open* MemorySystemCalls::descriptor(int fd) {
  const auto found = open_.find(fd);
  return found == open_.end() ? nullptr : &found->second;
}

int MemorySystemCalls::open(const std::string& path, int flags, mode_t /*mode*/) {
  if (folders_.contains(path)) {
    if ((flags & O_ACCMODE) != O_RDONLY) return failWith(EISDIR);
    open_[nextDescriptor_] = {path, 0, true};
    return nextDescriptor_++;
  }
  if ((flags & O_DIRECTORY) != 0) return failWith(files_.contains(path) ? ENOTDIR : ENOENT);
  if (!files_.contains(path)) {
    if ((flags & O_CREAT) == 0 || !parentIsFolder(path)) return failWith(ENOENT);
    files_[path];
  }
  if ((flags & O_TRUNC) != 0) files_[path].clear();
  open_[nextDescriptor_] = {path, 0, false};
  return nextDescriptor_++;
}

ssize_t MemorySystemCalls::read(int fd, void* buffer, std::size_t size) {
  Open* file = descriptor(fd);
  if (file == nullptr) return failWith(EBADF);
  if (file->folder) return failWith(EISDIR);
  const std::string& bytes = files_[file->path];
  const std::size_t count = std::min(size, bytes.size() - std::min(file->position, bytes.size()));
  std::memcpy(buffer, bytes.data() + file->position, count);
  file->position += count;
  return static_cast<ssize_t>(count);
}

ssize_t MemorySystemCalls::write(int fd, const void* data, std::size_t size) {
  Open* file = descriptor(fd);
  if (file == nullptr || file->folder) return failWith(EBADF);
  std::string& bytes = files_[file->path];
  bytes.replace(file->position, size, static_cast<const char*>(data), size);
  file->position += size;
  return static_cast<ssize_t>(size);
}

int MemorySystemCalls::fsync(int fd) { return descriptor(fd) == nullptr ? failWith(EBADF) : 0; }

int MemorySystemCalls::close(int fd) { return open_.erase(fd) == 0 ? failWith(EBADF) : 0; }

int MemorySystemCalls::rename(const std::string& from, const std::string& to) {
  const auto found = files_.find(from);
  if (found == files_.end() || !parentIsFolder(to)) return failWith(ENOENT);
  if (folders_.contains(to)) return failWith(EISDIR);
  std::string bytes = std::move(found->second);
  files_.erase(found);
  files_[to] = std::move(bytes);
  return 0;
}

int MemorySystemCalls::unlink(const std::string& path) { return files_.erase(path) == 0 ? failWith(ENOENT) : 0; }

int MemorySystemCalls::mkdir(const std::string& path, mode_t /*mode*/) {
  if (folders_.contains(path) || files_.contains(path)) return failWith(EEXIST);
  if (!parentIsFolder(path)) return failWith(ENOENT);
  folders_.insert(path);
  return 0;
}

int MemorySystemCalls::fstat(int fd, struct stat& status) {
  const Open* file = descriptor(fd);
  if (file == nullptr) return failWith(EBADF);
  return lstat(file->path, status);
}

int MemorySystemCalls::fchmod(int fd, mode_t /*mode*/) { return descriptor(fd) == nullptr ? failWith(EBADF) : 0; }

int MemorySystemCalls::lstat(const std::string& path, struct stat& status) {
  status = {};
  if (folders_.contains(path)) {
    status.st_mode = S_IFDIR | 0700;
  } else if (files_.contains(path)) {
    status.st_mode = S_IFREG | 0644;
    status.st_size = static_cast<off_t>(files_.at(path).size());
  } else {
    return failWith(ENOENT);
  }
  return 0;
}

ssize_t MemorySystemCalls::readlink(const std::string& path, char* /*buffer*/, std::size_t /*size*/) {
  return failWith(folders_.contains(path) || files_.contains(path) ? EINVAL : ENOENT);
}

int MemorySystemCalls::listFolder(const std::string& path, std::vector<std::string>& names) {
  if (!folders_.contains(path)) return failWith(files_.contains(path) ? ENOTDIR : ENOENT);
  names.clear();
  const auto inFolder = [&](const std::string& entry) {
    const std::filesystem::path at(entry);
    if (entry != "/" && at.parent_path() == path) names.push_back(at.filename().string());
  };
  for (const auto& [file, bytes] : files_) inFolder(file);
  for (const auto& folder : folders_) inFolder(folder);
  return 0;
}

}  // namespace corvalta::store
