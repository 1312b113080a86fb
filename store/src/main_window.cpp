#include "corvalta/store/main_window.h"

#include "corvalta/store/preferences_folder.h"

namespace corvalta::store {
namespace {

StoredFile fileIn(SystemCalls& calls, const std::string& folder, const char* name) {
  return PreferencesFolder(calls, folder).Child(name);
}

}  // namespace

MainWindow::MainWindow(const platform::WindowDescription& description, SystemCalls& calls,
                       const std::string& folder)
    : core::Window1(description),
      settingsFile_(fileIn(calls, folder, kSettingsFileName)),
      highScoresFile_(fileIn(calls, folder, kHighScoresFileName)) {}

}  // namespace corvalta::store
