#include <corvalta/core/congratulations.h>
#include <corvalta/platform/description_builder.h>

namespace corvalta::core {

using namespace platform::description;

// Asks for the name of a player whose score enters the table.
platform::WindowDescription congratulationsDescription() {
  return window(
      "Congratulations", "Congratulations!", 358, 95, {{property::MinimizeButton, false}},
      {
          staticText("StaticText1", {20, 20, 318, 20},
                     "Congratulations!  Your score is in the top ten.", arial(12, true), 1,
                     {{property::MultiLine, true}}),
          staticText("StaticText2", {40, 55, 47, 20}, "Name:", arial(12, true), 0),
          editField("NameField", {86, 55, 100, 22}, arial(12),
                    {{property::Mask, std::string("AAAAAAAAAA")}}),
          pushButton("Enter", {234, 55, 80, 20}, "Enter", arial(12, true), {}, {"Action"}),
      },
      {"Open"});
}

}  // namespace corvalta::core
