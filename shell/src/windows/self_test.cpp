#include <corvalta/shell/info_windows.h>

#include <corvalta/platform/description_builder.h>

#include <corvalta/platform/app_info.h>

namespace corvalta::shell {

using namespace platform::description;

// The door to the update check.
platform::WindowDescription selfTestDescription() {
  const std::string version(platform::app_info::LongVersion());
  return window("selfTest", "Self Test", 231, 92, {{property::MinimizeButton, false}},
                {
                    staticText("StaticText1", {55, 19, 53, 20}, "Version:", arial(12, true), 0),
                    staticText("StaticText2", {111, 18, 64, 20}, version, systemFont(true), 2, {},
                               {"Open"}),
                    pushButton("PushButton1", {45, 51, 140, 21}, "Check for Updates",
                               arial(12, true), {{property::Default, true}}, {"Action"}),
                });
}

}  // namespace corvalta::shell
