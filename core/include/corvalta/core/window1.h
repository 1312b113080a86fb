#pragma once

#include <corvalta/platform/window.h>
#include <corvalta/platform/window_description.h>

#include <cstdint>
#include <string_view>

namespace corvalta::core {

// The main window and every rule of the game: the level handlers, problem generation,
// answer checking and the flow of a game, written against Module1 and the controls, which
// are looked up by name each time.
//
// The settings, the score table and the name entry plug in by deriving: getPlist,
// getScores, savePlist, saveScores, CheckScore and the handlers of HighScores and
// ClearScores are virtual. The bodies here are stand-ins: sound on, Easy selected, ten rows
// scored "0", nothing saved. The name entry is whatever window class "Congratulations" the
// application has registered.
class Window1 : public platform::Window {
 public:
  explicit Window1(const platform::WindowDescription& description);

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
  virtual void HighScores_CellTextChange(std::int32_t row, std::int32_t column);
  virtual void HighScores_Open();
  virtual void ClearScores_Action();

  void getRandomNumbers();
  virtual void getPlist();
  virtual void getScores();
  virtual void savePlist();
  virtual void saveScores();
  // Sets NewHighScoreFlag: the points are above 0 and above row 9 of HighScores.
  virtual void CheckScore();

 protected:
  platform::Handler handlerFor(std::string_view control, std::string_view event) override;
  void Event_Open() override;
  void Event_Close() override;

 private:
  void setLevel(std::int32_t high, const char* difficulty, const char* op3);
  void clearAnswerFields();
  void clearProblemFields();
  void enableAnswerFields(bool enabled);
};

}  // namespace corvalta::core
