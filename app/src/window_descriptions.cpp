#include <corvalta/app/window_descriptions.h>
#include <corvalta/core/congratulations.h>
#include <corvalta/core/window1.h>
#include <corvalta/platform/errors.h>
#include <corvalta/shell/info_windows.h>
#include <corvalta/update/update_window.h>

#include <algorithm>

namespace corvalta::app {

std::span<const platform::WindowDescription> windowDescriptions() {
  static const std::vector<platform::WindowDescription> all = {
      core::window1Description(),  core::congratulationsDescription(), shell::aboutBoxDescription(),
      shell::helpDescription(),    shell::selfTestDescription(),       update::updateWindowDescription(),
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

}  // namespace corvalta::app
