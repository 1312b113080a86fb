#include <corvalta/shell/window_descriptions.h>

#include "windows/window_tables.h"

#include <algorithm>

namespace corvalta::shell {

std::span<const platform::WindowDescription> windowDescriptions() {
  static const std::vector<platform::WindowDescription> all = {
      windows::mainWindow(),     windows::congratulationsWindow(), windows::aboutBox(),
      windows::helpWindow(),     windows::selfTestWindow(),        windows::updateWindow(),
  };
  return all;
}

const platform::WindowDescription* findWindowDescription(std::string_view className) {
  const auto all = windowDescriptions();
  const auto found =
      std::find_if(all.begin(), all.end(), [className](const platform::WindowDescription& window) {
        return window.className == className;
      });
  return found == all.end() ? nullptr : &*found;
}

}  // namespace corvalta::shell
