#include <corvalta/app/window_descriptions.h>
#include <corvalta/platform/window_plan.h>

#include <gtest/gtest.h>

#include <algorithm>

namespace corvalta::app {
namespace {

using platform::Color;
using platform::PropertyValue;

// What the player sees or does through a record and no other test reaches, as the views decode
// it: a row's own values win over the values that all controls share.
TEST(WindowRecords, DecodedValuesMatchTheWindowTables) {
  const struct {
    std::string_view window, control, property;
    PropertyValue value;
  } rows[] = {
      {"Window1", "SubAnswer2", "Alignment", 2},
      {"Window1", "Answer", "TextFont", std::string("Arial")},
      {"Window1", "Banner", "TextColor", Color{0xFF, 0x00, 0x12}},
      {"Window1", "HighScores", "InitialValue", std::string("Name\tDifficulty\tScore")},
      {"updateWindow", "PushButton1", "Cancel", true},  // Escape cancels the check
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(std::string(row.control) + " " + std::string(row.property));
    const auto plan = platform::planOf(windowDescription(row.window));
    const auto control = std::ranges::find(plan.controls, row.control, &platform::ControlPlan::name);
    ASSERT_NE(control, plan.controls.end());
    const PropertyValue* value = platform::findProperty(control->properties, row.property);
    ASSERT_NE(value, nullptr);
    EXPECT_EQ(*value, row.value);
  }
}

}  // namespace
}  // namespace corvalta::app
