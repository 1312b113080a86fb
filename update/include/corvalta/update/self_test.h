#pragma once

#include <corvalta/platform/window.h>
#include <corvalta/platform/window_description.h>

#include <string_view>

namespace corvalta::update {

// The door to the update check: the running version and one button, "Check for Updates",
// that runs the check in updateWindow. No selfTest is left once the check has ended.
class selfTest : public platform::Window {
 public:
  explicit selfTest(const platform::WindowDescription& description);

  // The one live instance, made when there is none.
  static selfTest& instance();

  void StaticText2_Open();
  void PushButton1_Action();

 protected:
  platform::Handler handlerFor(std::string_view control, std::string_view event) override;
};

}  // namespace corvalta::update
