#include <corvalta/shell/info_windows.h>

#include <corvalta/platform/description_builder.h>

#include <corvalta/platform/app_info.h>

namespace corvalta::shell {

using namespace platform::description;

platform::WindowDescription aboutBoxDescription() {
  const std::string version(platform::app_info::LongVersion());
  return window(
      "AboutBox", "About Corvalta", 264, 258, {{property::MinimizeButton, false}},
      {
          pushButton("PushButton1", {72, 180, 120, 21}, "Email Author", systemFont(true), {},
                     {"Action"}),
          pushButton("PushButton2", {72, 217, 120, 21}, "Visit Web Site", systemFont(true), {},
                     {"Action"}),
          staticText("StaticText2", {80, 86, 104, 87},
                     "Developed by\rNemkard\r\rSr. Beta Tester\rOstrel", systemFont(), 1,
                     {{property::MultiLine, true}}),
          staticText("StaticText1", {20, 20, 224, 45}, "Corvalta", arial(30, true), 1),
          staticText("StaticText3", {60, 60, 56, 20}, "Version:", arial(12, true), 2),
          staticText("StaticText4", {131, 60, 79, 20}, version, arial(12, true), 1, {},
                     {"Open"}),
      });
}

}  // namespace corvalta::shell
