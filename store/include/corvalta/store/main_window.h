#pragma once

#include <corvalta/core/window1.h>
#include <corvalta/platform/window_description.h>

#include <cstdint>
#include <string>

#include "corvalta/store/stored_file.h"
#include "corvalta/store/system_calls.h"

namespace corvalta::store {

inline constexpr const char* kSettingsFileName = "corvalta.plist";
inline constexpr const char* kHighScoresFileName = "corvalta-highscores.plist";

// Window1 with its two files: the sound setting and the level are read when the window opens
// and written when it closes; the score table is read when it opens and written at every
// change and when it closes. A save that fails changes nothing on disk and nothing in the
// game, and is never shown.
class MainWindow : public core::Window1 {
 public:
  // `folder` is the configuration folder; it is made if it is missing.
  MainWindow(const platform::WindowDescription& description, SystemCalls& calls,
             const std::string& folder);

  void getPlist() override;
  void savePlist() override;
  void getScores() override;
  void saveScores() override;
  void HighScores_Open() override;
  void ClearScores_Action() override;

 private:
  StoredFile settingsFile_;
  StoredFile highScoresFile_;
};

}  // namespace corvalta::store
