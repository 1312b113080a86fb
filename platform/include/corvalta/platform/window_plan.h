#pragma once

#include <corvalta/platform/property.h>
#include <corvalta/platform/window_description.h>

#include <string>
#include <vector>

namespace corvalta::platform {

// A window's description with every record already decoded into properties: what
// Window::build needs to make the window and its controls.
struct ControlPlan {
  std::string name;
  std::string className;  // record class: "StaticText", "Timer", ...
  PropertyList properties;
  std::vector<std::string> events;  // the events it has handlers for, in order of installing
};

struct WindowPlan {
  std::string className;  // "Window1"
  PropertyList properties;
  std::vector<ControlPlan> controls;  // in order of creation
};

// Decodes every record of a description. Records are the program's own data, so a record that
// does not decode is a fault to stop at: std::invalid_argument names the window and control.
[[nodiscard]] WindowPlan planOf(const WindowDescription& description);

}  // namespace corvalta::platform
