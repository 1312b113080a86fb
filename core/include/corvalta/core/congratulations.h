#pragma once

#include <corvalta/platform/window.h>
#include <corvalta/platform/window_description.h>

#include <string_view>

namespace corvalta::core {

// Asks for the name of a player whose score enters the table, puts the score in its sorted
// place, saves the table and drops the row that fell out. Hide keeps the window with the
// name typed; its close box ends it and changes nothing.
class Congratulations : public platform::Window {
 public:
  explicit Congratulations(const platform::WindowDescription& description);

  void Enter_Action();
  // Sorts the eleven rows of the main window's table by score, highest first; equal scores
  // keep their order.
  void sortScores();

 protected:
  platform::Handler handlerFor(std::string_view control, std::string_view event) override;
  void Event_Open() override;
};

// The name entry's description: the message, the name field and Enter.
[[nodiscard]] platform::WindowDescription congratulationsDescription();

}  // namespace corvalta::core
