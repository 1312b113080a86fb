#pragma once

#include <corvalta/platform/menu_item.h>

namespace corvalta::platform {

// The item that quits: the view runs the platform's quit action, which closes the main
// window so that its Close runs.
class QuitMenuItem : public MenuItem {
 public:
  using MenuItem::MenuItem;
};

// The item that tells about the application; the view shows it where the platform keeps
// such an item (on macOS, the application menu).
class AppleMenuItem : public MenuItem {
 public:
  using MenuItem::MenuItem;
};

}  // namespace corvalta::platform
