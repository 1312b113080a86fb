#pragma once

#include <corvalta/platform/window.h>

#include <string>
#include <vector>

namespace corvalta::platform {

// A window whose every handler logs "<control>_<event>" and which can act on the log.
class LogWindow : public Window {
 public:
  LogWindow(const WindowPlan& plan, std::vector<std::string>& log) : Window(plan.className), log_(log) {
    build(plan);
  }

 protected:
  Handler handlerFor(std::string_view control, std::string_view event) override {
    const std::string entry = std::string(control) + "_" + std::string(event);
    return [this, entry](const EventArgs& args) {
      std::string line = entry;
      for (const auto& arg : args) line += " " + std::to_string(std::get<std::int32_t>(arg));
      log_.push_back(line);
    };
  }
  void Event_Open() override { log_.push_back(className() + "_Open"); }
  void Event_Close() override { log_.push_back(className() + "_Close"); }

 private:
  std::vector<std::string>& log_;
};

}  // namespace corvalta::platform
