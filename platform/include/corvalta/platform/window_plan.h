#pragma once

#include <corvalta/platform/property.h>

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

}  // namespace corvalta::platform
