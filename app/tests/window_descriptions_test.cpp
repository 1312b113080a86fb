#include <corvalta/app/window_descriptions.h>

#include <gtest/gtest.h>

namespace corvalta::app {
namespace {

using platform::Color;
using platform::PropertyValue;

// The value of one property in the record of a window's control, as the views decode it.
PropertyValue decodedValue(std::string_view window, std::string_view control, std::string_view property) {
  for (const auto& candidate : windowDescription(window).controls) {
    if (candidate.name != control) continue;
    const auto decoded = platform::decodeRecord(candidate.recordClass, candidate.record);
    if (!decoded.properties) throw std::runtime_error(decoded.error);
    for (const auto& entry : *decoded.properties) {
      if (entry.name == property) return entry.value;
    }
  }
  throw std::runtime_error("no " + std::string(property) + " on " + std::string(control));
}

// What the player sees or does through a record and no other test reaches: a row's own values
// win over the values that all controls share.
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
    EXPECT_EQ(decodedValue(row.window, row.control, row.property), row.value) << row.control << " " << row.property;
  }
}

}  // namespace
}  // namespace corvalta::app
