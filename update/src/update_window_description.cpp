#include <corvalta/update/update_window.h>
#include <corvalta/platform/description_builder.h>

namespace corvalta::update {

using namespace platform::description;

// Carries one update check; it owns the socket that fetches the manifest.
platform::WindowDescription updateWindowDescription() {
  return window(
      "updateWindow", "Update", 300, 120, {{property::Frame, std::int32_t{1}}},
      {
          staticText("StaticText1", {20, 19, 266, 20}, "Checking for updates...", arial(12), 0),
          progressBar("ProgressBar1", {20, 46, 260, 12},
                      {{property::Value, std::int32_t{0}}, {property::Maximum, std::int32_t{100}}}),
          httpSocket("hp",
                     {{property::Address, std::string()},
                      {property::Port, std::int32_t{0}},
                      {property::yield, false}},
                     {"PageReceived", "Error"}),
          pushButton("PushButton1", {208, 80, 72, 20}, "Cancel", systemFont(),
                     {{property::Default, true}, {property::Cancel, true}}, {"Action"}),
      },
      {"Open"});
}

}  // namespace corvalta::update
