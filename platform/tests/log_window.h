#pragma once

#include <corvalta/platform/window.h>

#include <string>
#include <vector>

namespace corvalta::platform {

// A window whose every handler logs "<control>_<event>", and its Open "<class>_Open".
class LogWindow : public Window {
 public:
  LogWindow(const WindowPlan& plan, std::vector<std::string>& log) : Window(plan.className), log_(log) {
    build(plan);
  }

 protected:
  Handler handlerFor(std::string_view control, std::string_view event) override {
    const std::string entry = std::string(control) + "_" + std::string(event);
    return [this, entry](const EventArgs& /*args*/) { log_.push_back(entry); };
  }
  void Event_Open() override { log_.push_back(className() + "_Open"); }

 private:
  std::vector<std::string>& log_;
};

}  // namespace corvalta::platform
