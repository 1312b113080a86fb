#pragma once

#include <string>
#include <string_view>

#include "corvalta/store/stored_file.h"
#include "corvalta/store/system_calls.h"

namespace corvalta::store {

// What decides where the user's configuration folder lies.
struct UserEnvironment {
  std::string xdgConfigHome;
  std::string home;
};

// $XDG_CONFIG_HOME and $HOME of this process; the password database stands in for a HOME that
// is unset or empty.
UserEnvironment currentUserEnvironment();

// The desktop's configuration folder: $XDG_CONFIG_HOME when it is an absolute path (a relative
// one is to be ignored), else ~/.config.
std::string configurationFolderPath(const UserEnvironment& environment);

// The folder that holds the stored files, made with its missing parents when it is taken.
// If it can't be made, its files read as missing and saves into it fail.
class PreferencesFolder {
 public:
  PreferencesFolder(SystemCalls& calls, std::string path);

  [[nodiscard]] StoredFile Child(std::string_view name) const;
  [[nodiscard]] const std::string& path() const { return path_; }

 private:
  SystemCalls* calls_;
  std::string path_;
};

}  // namespace corvalta::store
