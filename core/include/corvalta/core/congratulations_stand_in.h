#pragma once

#include <corvalta/platform/window.h>
#include <corvalta/platform/window_description.h>

namespace corvalta::core {

// Takes a name and nothing more, until the real name entry with its score insertion takes
// its place: Open offers the last Name, Enter keeps the field's text in Name, clears
// NewHighScoreFlag and hides the window.
class CongratulationsStandIn : public platform::Window {
 public:
  explicit CongratulationsStandIn(const platform::WindowDescription& description);

 protected:
  platform::Handler handlerFor(std::string_view control, std::string_view event) override;
  void Event_Open() override;
};

}  // namespace corvalta::core
