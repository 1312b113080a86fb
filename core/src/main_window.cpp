// The main window comes into being with its two stored files.
#include <corvalta/core/window1.h>
#include <corvalta/store/preferences_folder.h>

namespace corvalta::core {
namespace {

using store::PreferencesFolder;
using store::StoredFile;
using store::SystemCalls;

StoredFile fileIn(SystemCalls& calls, const std::string& folder, const char* name) {
  return PreferencesFolder(calls, folder).Child(name);
}

}  // namespace

Window1::Window1(const platform::WindowDescription& description, SystemCalls& calls,
                 const std::string& folder)
    : Window("Window1"),
      settingsFile_(fileIn(calls, folder, kSettingsFileName)),
      highScoresFile_(fileIn(calls, folder, kHighScoresFileName)) {
  build(description);
}

}  // namespace corvalta::core
