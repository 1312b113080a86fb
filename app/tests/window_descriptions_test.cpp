#include <corvalta/app/window_descriptions.h>

#include <gtest/gtest.h>

#include <map>

namespace corvalta::app {
namespace {

using platform::Color;
using platform::PropertyList;
using platform::PropertyValue;
using platform::RecordBytes;
using platform::RecordClass;

PropertyList decoded(RecordClass recordClass, const RecordBytes& bytes) {
  auto result = platform::decodeRecord(recordClass, bytes);
  if (!result.properties) throw std::runtime_error(result.error);
  return *result.properties;
}

// The record of a window's control, or of the window itself for an empty control name.
std::pair<RecordClass, RecordBytes> recordOf(std::string_view window, std::string_view control) {
  const auto* description = findWindowDescription(window);
  if (description == nullptr) throw std::runtime_error("no window " + std::string(window));
  if (control.empty()) return {RecordClass::Window, description->record};
  for (const auto& candidate : description->controls) {
    if (candidate.name == control) return {candidate.recordClass, candidate.record};
  }
  throw std::runtime_error("no control " + std::string(control));
}

std::map<std::string, PropertyValue> valuesOf(std::string_view window, std::string_view control) {
  std::map<std::string, PropertyValue> values;
  const auto [recordClass, record] = recordOf(window, control);
  for (const auto& property : decoded(recordClass, record)) values.emplace(property.name, property.value);
  return values;
}

// Six windows and 47 controls; each record lists exactly its class's entries, in their order,
// and a control's opens with its own name and the no-array index.
TEST(WindowRecords, EveryRecordDecodesToItsClassEntries) {
  const std::map<std::string, std::size_t> controlsPerWindow = {
      {"Window1", 29}, {"Congratulations", 4}, {"AboutBox", 6},
      {"Help", 1},     {"selfTest", 3},        {"updateWindow", 4}};
  const std::map<RecordClass, int> recordsPerClass = {
      {RecordClass::Window, 6},      {RecordClass::StaticText, 22}, {RecordClass::EditField, 5},
      {RecordClass::PushButton, 10}, {RecordClass::RadioButton, 4}, {RecordClass::GroupBox, 1},
      {RecordClass::Listbox, 1},     {RecordClass::Separator, 1},   {RecordClass::ProgressBar, 1},
      {RecordClass::Timer, 1},       {RecordClass::HTTPSocket, 1}};

  std::map<RecordClass, int> counted;
  const auto check = [&counted](RecordClass recordClass, const RecordBytes& record,
                                const std::string& name) {
    SCOPED_TRACE(name);
    ++counted[recordClass];
    const auto properties = decoded(recordClass, record);
    std::vector<std::string> names;
    for (const auto& property : properties) names.push_back(property.name);
    const auto entries = platform::entryOrder(recordClass);
    EXPECT_EQ(names, std::vector<std::string>(entries.begin(), entries.end()));
    if (recordClass != RecordClass::Window && recordClass != RecordClass::Timer &&
        recordClass != RecordClass::HTTPSocket) {
      EXPECT_EQ(std::get<std::string>(properties[0].value), name);
      EXPECT_EQ(std::get<std::int32_t>(properties[1].value), -2147483647 - 1);
    }
  };

  ASSERT_EQ(windowDescriptions().size(), controlsPerWindow.size());
  for (const auto& window : windowDescriptions()) {
    EXPECT_EQ(window.controls.size(), controlsPerWindow.at(window.className)) << window.className;
    check(RecordClass::Window, window.record, window.className);
    for (const auto& control : window.controls) check(control.recordClass, control.record, control.name);
  }
  EXPECT_EQ(counted, recordsPerClass);
  EXPECT_EQ(findWindowDescription("Window2"), nullptr);
}

// Decoding gives back what each helper of the tables writes: a row's own values over the values
// that all windows or all controls share.
TEST(WindowRecords, DecodedValuesMatchTheWindowTables) {
  struct Row {
    std::string_view window;
    std::string_view control;  // empty for the window's own record
    std::string_view property;
    PropertyValue value;
  };
  const Row rows[] = {
      // The window's own record: its table, then the values all windows share.
      {"Window1", "", "Title", std::string("Corvalta")},
      {"Window1", "", "MaxWidth", 32000},
      {"updateWindow", "", "Frame", 1},
      // Controls: their rows over the values all controls share.
      {"Window1", "Afield", "Left", 20},
      {"Window1", "SubAnswer2", "Alignment", 2},
      {"Window1", "Answer", "TextFont", std::string("Arial")},
      {"Window1", "Medium", "InitialParent", std::string("GroupBox1")},
      {"Window1", "Banner", "TextColor", Color{0xFF, 0x00, 0x12}},
      {"Window1", "HighScores", "InitialValue", std::string("Name\tDifficulty\tScore")},
      {"updateWindow", "PushButton1", "Cancel", true},
  };
  for (const auto& row : rows) {
    const auto values = valuesOf(row.window, row.control);
    const auto found = values.find(std::string(row.property));
    ASSERT_NE(found, values.end()) << row.window << " " << row.control << " " << row.property;
    EXPECT_EQ(found->second, row.value) << row.window << " " << row.control << " " << row.property;
  }
}

}  // namespace
}  // namespace corvalta::app
