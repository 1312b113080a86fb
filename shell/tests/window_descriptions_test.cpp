#include <corvalta/shell/window_descriptions.h>

#include <gtest/gtest.h>

#include <map>

namespace corvalta::shell {
namespace {

using platform::Color;
using platform::ControlDescription;
using platform::PropertyList;
using platform::PropertyValue;
using platform::RecordBytes;
using platform::RecordClass;
using platform::WindowDescription;

const WindowDescription& windowNamed(std::string_view className) {
  const auto* window = findWindowDescription(className);
  if (window == nullptr) {
    throw std::runtime_error("no window " + std::string(className));
  }
  return *window;
}

const ControlDescription& controlNamed(const WindowDescription& window, std::string_view name) {
  for (const auto& control : window.controls) {
    if (control.name == name) {
      return control;
    }
  }
  throw std::runtime_error("no control " + std::string(name));
}

PropertyList decoded(RecordClass recordClass, const RecordBytes& bytes) {
  auto result = platform::decodeRecord(recordClass, bytes);
  if (!result.properties) {
    throw std::runtime_error(result.error);
  }
  return *result.properties;
}

std::map<std::string, PropertyValue> byName(const PropertyList& properties) {
  std::map<std::string, PropertyValue> values;
  for (const auto& property : properties) {
    values.emplace(property.name, property.value);
  }
  return values;
}

// The timer's whole record is its mode and period, and nothing marks its end.
TEST(WindowRecords, TimerRecordIsTwelveBytes) {
  const RecordBytes expected = {0x00, 0x00, 0x00, 0x00, 0x00, 0x00,
                                0x00, 0x01, 0x00, 0x00, 0x03, 0xE8};
  const auto& timer = controlNamed(windowNamed("Window1"), "Timer1");
  EXPECT_EQ(timer.recordClass, RecordClass::Timer);
  EXPECT_EQ(timer.record, expected);
}

// A control's record opens with its name, the no-array index and its left edge.
TEST(WindowRecords, AfieldRecordOpensWithNameIndexLeft) {
  const RecordBytes expected = {0x00, 0x00, 0x00, 0x00, 0x00, 0x06, 'A',  'f',  'i',
                                'e',  'l',  'd',  0x00, 0x01, 0x80, 0x00, 0x00, 0x00,
                                0x00, 0x13, 0x00, 0x00, 0x00, 0x14};
  const auto& record = controlNamed(windowNamed("Window1"), "Afield").record;
  ASSERT_GE(record.size(), expected.size());
  EXPECT_EQ(RecordBytes(record.begin(), record.begin() + std::ssize(expected)), expected);
}

// The help text travels whole in its field's record: nine paragraphs of 7-bit ASCII joined by
// two carriage returns, with 190 bytes of the field's other entries around it.
TEST(WindowRecords, HelpFieldCarriesTheWholeText) {
  const auto& field = controlNamed(windowNamed("Help"), "EditField1");
  const auto values = byName(decoded(field.recordClass, field.record));
  const auto& text = std::get<std::string>(values.at("Text"));
  EXPECT_EQ(field.record.size(), text.size() + 190);
  EXPECT_EQ(text.size(), 1757U);
  EXPECT_TRUE(text.starts_with("Corvalta was developed to help you have fun"));
  EXPECT_TRUE(text.ends_with("are saved between sessions."));
  EXPECT_NE(text.find("\r\r     c.  If you are playing"), std::string::npos);
  EXPECT_NE(text.find("Click on the \"Enter\" button"), std::string::npos);
  std::size_t breaks = 0;
  for (std::size_t at = text.find("\r\r"); at != std::string::npos; at = text.find("\r\r", at + 2)) {
    ++breaks;
  }
  EXPECT_EQ(breaks, 8U);
  for (const char ch : text) {
    ASSERT_TRUE(ch == '\r' || (ch >= ' ' && ch <= '~')) << static_cast<int>(ch);
  }
}

// Six windows and 47 controls; each record lists exactly its class's entries, in their order.
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
    const auto entries = platform::entryOrder(recordClass);
    ASSERT_EQ(properties.size(), entries.size());
    for (std::size_t k = 0; k < entries.size(); ++k) {
      EXPECT_EQ(properties[k].name, entries[k]);
    }
    if (recordClass != RecordClass::Window && recordClass != RecordClass::Timer &&
        recordClass != RecordClass::HTTPSocket) {
      EXPECT_EQ(std::get<std::string>(properties[0].value), name);
      EXPECT_EQ(std::get<std::int32_t>(properties[1].value), -2147483647 - 1);
    }
    // A record cut by one byte is refused, never half read.
    const RecordBytes cut(record.begin(), record.end() - 1);
    EXPECT_FALSE(platform::decodeRecord(recordClass, cut).properties);
  };

  ASSERT_EQ(windowDescriptions().size(), controlsPerWindow.size());
  for (const auto& window : windowDescriptions()) {
    EXPECT_EQ(window.controls.size(), controlsPerWindow.at(window.className)) << window.className;
    check(RecordClass::Window, window.record, window.className);
    for (const auto& control : window.controls) {
      check(control.recordClass, control.record, control.name);
    }
  }
  EXPECT_EQ(counted, recordsPerClass);
  EXPECT_EQ(findWindowDescription("Window2"), nullptr);
}

// Decoding gives back the values of the window tables, defaults and exceptions alike.
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
      {"Window1", "", "Resizeable", false},
      {"Window1", "", "BackColor", Color{0xFF, 0xFF, 0xFF}},
      {"Congratulations", "", "MinimizeButton", false},
      {"updateWindow", "", "Frame", 1},
      // Controls: their rows over the values all controls share.
      {"Window1", "SubAnswer2", "Alignment", 2},
      {"Window1", "SubAnswer2", "Enabled", false},
      {"Window1", "SubAnswer2", "ScrollBarVertical", true},
      {"Window1", "Answer", "TextFont", std::string("Arial")},
      {"Window1", "Answer", "TextSize", 20},
      {"Window1", "Op3", "Text", std::string()},
      {"Window1", "Medium", "InitialParent", std::string("GroupBox1")},
      {"Window1", "VeryHard", "Value", false},
      {"Window1", "Banner", "Visible", false},
      {"Window1", "Banner", "TextColor", Color{0xFF, 0x00, 0x12}},
      {"Window1", "HighScores", "ColumnWidths", std::string("40% 30%\t30%")},
      {"Window1", "HighScores", "InitialValue", std::string("Name\tDifficulty\tScore")},
      {"Window1", "HighScores", "HeadingIndex", -1},
      {"Window1", "HighScores", "Bold", false},
      {"Window1", "Start", "Default", true},
      {"Window1", "Stop", "Default", false},
      {"Window1", "Hint", "Top", 346},
      {"Window1", "Hint", "TextFont", std::string("System")},
      {"Window1", "Hint", "TextSize", 0},
      {"Congratulations", "StaticText1", "Text",
       std::string("Congratulations!  Your score is in the top ten.")},
      {"Congratulations", "NameField", "Mask", std::string("AAAAAAAAAA")},
      {"AboutBox", "StaticText2", "Text", std::string("Developed by\rNemkard\r\rSr. Beta Tester\rOstrel")},
      {"AboutBox", "StaticText4", "Text", std::string("2.1.1 UB")},
      {"Help", "EditField1", "ReadOnly", false},
      {"selfTest", "PushButton1", "Default", true},
      {"updateWindow", "hp", "Port", 0},
      {"updateWindow", "PushButton1", "Cancel", true},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(std::string(row.window) + " " + std::string(row.control) + " " +
                 std::string(row.property));
    const auto& window = windowNamed(row.window);
    const auto values =
        row.control.empty()
            ? byName(decoded(RecordClass::Window, window.record))
            : [&] {
                const auto& control = controlNamed(window, row.control);
                return byName(decoded(control.recordClass, control.record));
              }();
    ASSERT_TRUE(values.contains(std::string(row.property)));
    EXPECT_EQ(values.at(std::string(row.property)), row.value);
  }
}

// Creation order is the Tab order.
TEST(WindowRecords, MainWindowControlsInTheOrderOfCreation) {
  const std::vector<std::string> order = {
      "Afield", "SubAnswer1", "SubAnswer2", "Answer", "Enter", "Bfield", "Cfield", "Op1",
      "Op2", "Op3", "Time", "GroupBox1", "Easy", "Medium", "Hard", "Banner", "HighScores",
      "ClearScores", "Start", "StaticText1", "Timer1", "Separator1", "StaticText2",
      "GamePoints", "StaticText3", "Stop", "Kagi1", "VeryHard", "Hint"};
  std::vector<std::string> names;
  for (const auto& control : windowNamed("Window1").controls) names.push_back(control.name);
  EXPECT_EQ(names, order);
}

}  // namespace
}  // namespace corvalta::shell
