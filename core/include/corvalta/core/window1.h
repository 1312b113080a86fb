#pragma once

#include <corvalta/platform/window.h>
#include <corvalta/platform/window_description.h>
#include <corvalta/store/stored_file.h>
#include <corvalta/store/system_calls.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace corvalta::core {

inline constexpr const char* kSettingsFileName = "corvalta.plist";
inline constexpr const char* kHighScoresFileName = "corvalta-highscores.plist";

// The main window and every rule of the game: the level handlers, problem generation,
// answer checking and the flow of a game, written against Module1 and the controls, which
// are looked up by name each time; the name entry is the window class "Congratulations".
//
// It keeps its two files: the sound setting and the level are read when the window opens
// and written when it closes; the score table is read when it opens and written at every
// change and when it closes. A save that fails changes nothing on disk and nothing in the
// game, and is never shown.
class Window1 : public platform::Window {
 public:
  // `folder` is the configuration folder; it is made if it is missing.
  Window1(const platform::WindowDescription& description, store::SystemCalls& calls,
          const std::string& folder);

  // The one live instance, made when there is none.
  static Window1& instance();

  void Answer_TextChange();
  void Enter_Action();
  void Easy_Action();
  void Medium_Action();
  void Hard_Action();
  void VeryHard_Action();
  void Start_Action();
  void Timer1_Action();
  void Stop_Action();
  void Kagi1_Action();
  void HighScores_CellTextChange(std::int32_t row, std::int32_t column);
  void HighScores_Open();
  void ClearScores_Action();

  void getRandomNumbers();
  void getPlist();
  void getScores();
  void savePlist();
  void saveScores();
  // Sets NewHighScoreFlag: the points are above 0 and above row 9 of HighScores.
  void CheckScore();

 protected:
  platform::Handler handlerFor(std::string_view control, std::string_view event) override;
  void Event_Open() override;
  void Event_Close() override;

 private:
  void setLevel(std::int32_t high, const char* difficulty, const char* op3);
  void clearAnswerFields();
  void clearProblemFields();
  void enableAnswerFields(bool enabled);

  store::StoredFile settingsFile_;
  store::StoredFile highScoresFile_;
};

// The main window's description: its record and its 29 controls.
[[nodiscard]] platform::WindowDescription window1Description();

}  // namespace corvalta::core
