#include "../src/spoken_name.h"

#include "../../tests/log_window.h"

#include <corvalta/platform/application.h>
#include <corvalta/platform/headless/headless_services.h>

#include <gtest/gtest.h>

#include <QRect>

namespace corvalta::platform::qt {
namespace {

ControlPlan control(const char* name, const char* className, QRect place, PropertyList more = {}) {
  PropertyList properties = {{"Name", std::string(name)}, {"Left", place.left()}, {"Top", place.top()},
                             {"Width", place.width()},     {"Height", place.height()}};
  properties.insert(properties.end(), more.begin(), more.end());
  return {name, className, properties, {}};
}

ControlPlan label(const char* name, QRect place, const char* text, bool visible = true) {
  return control(name, "StaticText", place, {{"Text", std::string(text)}, {"Visible", visible}});
}

// A field, a list or a bar is named by the nearest label with words just before it, else by
// its own name, else by its window; controls with captions are left to Qt.
TEST(SpokenName, FromTheNearestLabelElseTheName) {
  headless::HeadlessServices services{1};
  Application app{services.services()};
  const QRect field(100, 100, 60, 24);
  struct Row {
    const char* what;
    std::vector<ControlPlan> others;
    ControlPlan named;
    const char* expected;
  };
  const Row rows[] = {
      {"label to the left", {label("L", {40, 102, 47, 20}, "Name:")}, control("NameField", "EditField", field), "Name"},
      {"label above", {label("L", {90, 78, 100, 20}, "High Scores")}, control("Scores", "Listbox", field), "High Scores"},
      {"nearer of two", {label("Far", {100, 70, 60, 20}, "Far"), label("Near", {100, 85, 60, 14}, "Near")},
       control("Bar", "ProgressBar", field), "Near"},
      {"a sign is no label", {label("Op", {110, 60, 20, 38}, "+")}, control("SubAnswer1", "EditField", field), "Sub Answer 1"},
      {"hidden label", {label("L", {100, 78, 60, 20}, "Game Over", false)}, control("Answer", "EditField", field), "Answer"},
      {"too far above", {label("L", {100, 59, 60, 20}, "Countdown")}, control("HighScores", "Listbox", field), "High Scores"},
      {"label to the right", {label("L", {165, 102, 60, 20}, "Points")}, control("EditField1", "EditField", field), "Dialog Box"},
      {"a button speaks its caption", {label("L", {40, 102, 47, 20}, "Name:")},
       control("Go", "PushButton", field, {{"Caption", std::string("Go")}}), ""},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.what);
    WindowPlan plan{"DialogBox", {{"Width", 300}, {"Height", 200}}, row.others};
    plan.controls.push_back(row.named);
    std::vector<std::string> log;
    LogWindow window(plan, log);
    EXPECT_EQ(spokenName(window, *window.controlByName(row.named.name)).toStdString(), row.expected);
  }
}

}  // namespace
}  // namespace corvalta::platform::qt
