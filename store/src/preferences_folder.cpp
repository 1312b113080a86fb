#include "corvalta/store/preferences_folder.h"

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <utility>
#include <vector>

namespace corvalta::store {
namespace {

std::string environmentValue(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? std::string() : std::string(value);
}

std::string homeFromPasswordDatabase() {
  const passwd* entry = ::getpwuid(::getuid());
  return entry == nullptr || entry->pw_dir == nullptr ? std::string() : std::string(entry->pw_dir);
}

// mkdir -p. The folders that are made are private to the user, as the desktop wants its
// configuration folders.
void makeFolderWithParents(SystemCalls& calls, const std::filesystem::path& folder) {
  std::vector<std::filesystem::path> missing;
  for (std::filesystem::path at = folder; !at.empty() && at != at.root_path();
       at = at.parent_path()) {
    if (calls.mkdir(at.string(), 0700) == 0 || errno == EEXIST) {
      break;
    }
    if (errno != ENOENT) {
      return;
    }
    missing.push_back(at);
  }
  for (auto it = missing.rbegin(); it != missing.rend(); ++it) {
    calls.mkdir(it->string(), 0700);
  }
}

}  // namespace

UserEnvironment currentUserEnvironment() {
  UserEnvironment environment{environmentValue("XDG_CONFIG_HOME"), environmentValue("HOME")};
  if (environment.home.empty()) {
    environment.home = homeFromPasswordDatabase();
  }
  return environment;
}

std::string configurationFolderPath(const UserEnvironment& environment) {
  if (std::filesystem::path(environment.xdgConfigHome).is_absolute()) {
    return environment.xdgConfigHome;
  }
  return (std::filesystem::path(environment.home) / ".config").string();
}

PreferencesFolder::PreferencesFolder(SystemCalls& calls, std::string path)
    : calls_(&calls), path_(std::move(path)) {
  makeFolderWithParents(*calls_, path_);
}

StoredFile PreferencesFolder::Child(std::string_view name) const {
  return StoredFile(*calls_, (std::filesystem::path(path_) / name).string());
}

}  // namespace corvalta::store
