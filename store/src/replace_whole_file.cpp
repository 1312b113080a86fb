#include <fcntl.h>
#include <limits.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <filesystem>
#include <optional>
#include <set>
#include <vector>

#include "corvalta/store/whole_file.h"

namespace corvalta::store {
namespace {

namespace fs = std::filesystem;

constexpr const char* kTemporarySuffix = ".new";

// The new text is written under a hidden name that carries the process id, so that two
// running programs never write into one temporary file, and the next start can tell the files
// of killed saves from those of a save under way.
std::string temporaryPathFor(const fs::path& target) {
  return (target.parent_path() / ("." + target.filename().string() + "." +
                                  std::to_string(::getpid()) + kTemporarySuffix))
      .string();
}

// The process id in a temporary file's name of a save of `target`, if `name` is one.
std::optional<pid_t> saverOf(const std::string& name, const std::string& target) {
  const std::string prefix = "." + target + ".";
  const std::string_view suffix = kTemporarySuffix;
  if (name.size() <= prefix.size() + suffix.size() || name.compare(0, prefix.size(), prefix) != 0 ||
      name.compare(name.size() - suffix.size(), suffix.size(), suffix) != 0) {
    return std::nullopt;
  }
  const char* digits = name.data() + prefix.size();
  const char* end = name.data() + name.size() - suffix.size();
  pid_t pid = 0;
  const auto parsed = std::from_chars(digits, end, pid);
  if (parsed.ec != std::errc() || parsed.ptr != end || pid <= 0) {
    return std::nullopt;
  }
  return pid;
}

bool savingNow(pid_t pid) {
  return pid != ::getpid() && (::kill(pid, 0) == 0 || errno != ESRCH);
}

// The file that a save of `path` replaces: the path itself, or the end of its chain of
// symbolic links, with its status when it exists.
struct FileBehind {
  fs::path path;
  std::optional<struct stat> status;
};

// None for a chain of links that loops or can't be read.
std::optional<FileBehind> fileBehind(SystemCalls& calls, fs::path path) {
  for (int hop = 0; hop < 40; ++hop) {
    struct stat status {};
    if (calls.lstat(path.string(), status) != 0) {
      return errno == ENOENT ? std::optional(FileBehind{path, std::nullopt}) : std::nullopt;
    }
    if (!S_ISLNK(status.st_mode)) {
      return FileBehind{path, status};
    }
    char target[PATH_MAX];
    const ssize_t length = calls.readlink(path.string(), target, sizeof target);
    if (length < 0 || static_cast<std::size_t>(length) >= sizeof target) {
      return std::nullopt;
    }
    path = path.parent_path() / fs::path(std::string(target, static_cast<std::size_t>(length)));
  }
  return std::nullopt;
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

// `mode` is the old file's permission bits; without one the new file gets what the umask
// leaves of read and write for all, as any new file does.
bool writeTemporary(SystemCalls& calls, const std::string& path, std::string_view bytes,
                    std::optional<mode_t> mode) {
  const int fd = calls.open(path, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOFOLLOW,
                            mode ? 0600 : 0666);
  if (fd < 0) {
    return false;
  }
  const bool flushed = (!mode || calls.fchmod(fd, *mode) == 0) && writeAll(calls, fd, bytes) &&
                       calls.fsync(fd) == 0;
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
void flushFolder(SystemCalls& calls, const fs::path& folder) {
  const int fd = calls.open(folder.string(), O_RDONLY | O_DIRECTORY | O_CLOEXEC, 0);
  if (fd < 0) {
    return;
  }
  calls.fsync(fd);
  calls.close(fd);
}

}  // namespace

bool replaceWholeFile(SystemCalls& calls, const std::string& path, std::string_view bytes) {
  const std::optional<FileBehind> target = fileBehind(calls, path);
  if (!target || (target->status && !S_ISREG(target->status->st_mode))) {
    return false;
  }
  std::optional<mode_t> mode;
  if (target->status) {
    mode = target->status->st_mode & 07777;
  }
  const std::string temporary = temporaryPathFor(target->path);
  if (!writeTemporary(calls, temporary, bytes, mode)) {
    return false;
  }
  if (calls.rename(temporary, target->path.string()) != 0) {
    calls.unlink(temporary);
    return false;
  }
  flushFolder(calls, target->path.parent_path());
  return true;
}

void removeTemporariesOfKilledSaves(SystemCalls& calls, const std::string& path) {
  std::set<fs::path> saved = {fs::path(path)};
  if (const auto target = fileBehind(calls, path)) {
    saved.insert(target->path);
  }
  for (const fs::path& file : saved) {
    std::vector<std::string> names;
    calls.listFolder(file.parent_path().string(), names);
    for (const std::string& name : names) {
      const auto pid = saverOf(name, file.filename().string());
      if (pid && !savingNow(*pid)) {
        calls.unlink((file.parent_path() / name).string());
      }
    }
  }
}

}  // namespace corvalta::store
