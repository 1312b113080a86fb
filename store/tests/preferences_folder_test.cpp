#include <sys/stat.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "corvalta/store/preferences_folder.h"
#include "temporary_folder.h"

namespace corvalta::store {
namespace {

// The folder is $XDG_CONFIG_HOME when that is an absolute path, else ~/.config.
TEST(ConfigurationFolderPath, FollowsTheDesktopRule) {
  struct Case {
    UserEnvironment environment;
    std::string folder;
  };
  const std::vector<Case> cases = {
      {{"/srv/cfg", "/home/ann"}, "/srv/cfg"},
      {{"", "/home/ann"}, "/home/ann/.config"},
      {{"cfg/relative", "/home/ann"}, "/home/ann/.config"},
      {{"/home/\xc3\xa5sa/k", "/home/ann"}, "/home/\xc3\xa5sa/k"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(configurationFolderPath(c.environment), c.folder) << c.environment.xdgConfigHome;
  }
}

// Taking the folder makes it and its missing parents, private to the user; files then go
// directly inside it.
TEST(PreferencesFolder, IsMadeWithItsParents) {
  TemporaryFolder root;
  const std::string path = root / "a/b/c";
  const PreferencesFolder folder(posixSystemCalls(), path);
  struct stat status {};
  ASSERT_EQ(::stat(path.c_str(), &status), 0);
  EXPECT_TRUE(S_ISDIR(status.st_mode));
  EXPECT_EQ(status.st_mode & 0777, 0700U);
  EXPECT_EQ(folder.Child("corvalta.plist").path(), path + "/corvalta.plist");
}

}  // namespace
}  // namespace corvalta::store
