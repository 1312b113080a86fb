#include <corvalta/platform/errors.h>
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

const platform::WindowDescription& windowDescription(std::string_view className) {
  const auto* found = findWindowDescription(className);
  if (found == nullptr) throw platform::NilObjectException("no description of " + std::string(className));
  return *found;
}

}  // namespace corvalta::shell
