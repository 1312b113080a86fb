#include <corvalta/platform/application.h>
#include <corvalta/platform/controls.h>
#include <corvalta/platform/headless/headless_services.h>
#include <corvalta/platform/timer.h>
#include <corvalta/platform/user_input.h>

#include <gtest/gtest.h>

#include "log_window.h"

#include <string>
#include <tuple>
#include <vector>

namespace corvalta::platform {
namespace {

using headless::HeadlessServices;

WindowPlan levelWindowPlan() {
  return {"Levels",
          {{"Title", std::string("Levels")}, {"Visible", true}},
          {{"Group", "GroupBox", {{"Name", std::string("Group")}}, {}},
           {"Easy", "RadioButton", {{"Name", std::string("Easy")}, {"InitialParent", std::string("Group")}}, {"Action"}},
           {"Hard", "RadioButton", {{"Name", std::string("Hard")}, {"InitialParent", std::string("Group")}}, {"Action"}},
           {"Loose", "RadioButton", {{"Name", std::string("Loose")}, {"Value", true}}, {"Action"}},
           {"Field", "EditField", {{"Name", std::string("Field")}, {"Enabled", true}}, {"TextChange"}},
           {"NameField", "EditField", {{"Name", std::string("NameField")}, {"Mask", std::string("AAAA")}}, {"TextChange"}},
           {"Go", "PushButton", {{"Name", std::string("Go")}, {"Default", false}}, {"Action"}},
           {"Ok", "PushButton", {{"Name", std::string("Ok")}, {"Default", true}}, {"Action"}},
           {"Table", "Listbox", {{"Name", std::string("Table")}, {"ColumnCount", 3}}, {"CellTextChange", "Open"}},
           {"Ticker", "Timer", {{"Mode", 0}, {"Period", 1000}}, {"Action"}}}};
}

class ViewStateTest : public ::testing::Test {
 protected:
  ViewStateTest() {
    app.registerWindowClass("Levels", [this] { return std::make_unique<LogWindow>(levelWindowPlan(), log); });
  }
  Window& window() { return app.implicitInstance("Levels"); }

  HeadlessServices services{1};
  Application app{services.services()};
  std::vector<std::string> log;
};

// A name field takes the letters and digits of every script, and never a tab, a line end or
// anything else that would break a line of the score file.
TEST_F(ViewStateTest, NameMaskTakesLettersAndDigitsOfEveryScript) {
  const std::pair<std::string, bool> cases[] = {
      {"a", true},      {"7", true},       {"\u00e9", true},  {"\u4e2d", true},       {"\u0663", true},
      {"\t", false},    {"\n", false},     {"\u2028", false}, {"\U0001F600", false}, {"-", false},
      {" ", false},     {"\xC3", false},
  };
  Window& w = window();
  auto& field = w.control<EditField>("NameField");
  for (const auto& [typed, admitted] : cases) {
    field.setText("");
    typeText(app, "Levels", "NameField", typed);
    EXPECT_EQ(field.Text(), admitted ? typed : "") << typed;
  }
}

// A new window raises its controls' Open events, then its own; records raise nothing else.
TEST_F(ViewStateTest, CreationRaisesOpenEventsOnly) {
  Window& w = window();
  EXPECT_EQ(log, (std::vector<std::string>{"Table_Open", "Levels_Open"}));
  EXPECT_THROW((void)w.control<PushButton>("Missing"), NilObjectException);
  EXPECT_THROW((void)w.control<PushButton>("Field"), NilObjectException);
  EXPECT_THROW(app.implicitInstance("Nobody"), NilObjectException);
}

// A radio button turned on clears its group's siblings and raises Action, whoever turns it
// on; turning it off or on again raises nothing; a disabled group makes its buttons deaf.
TEST_F(ViewStateTest, RadioButtonsFollowTheirGroup) {
  Window& w = window();
  log.clear();
  auto& easy = w.control<RadioButton>("Easy");
  auto& hard = w.control<RadioButton>("Hard");
  auto& loose = w.control<RadioButton>("Loose");
  struct Step {
    std::function<void()> act;
    bool easy, hard;
    std::vector<std::string> log;
  };
  const std::vector<Step> steps = {
      {[&] { easy.setValue(true); }, true, false, {"Easy_Action"}},
      {[&] { easy.setValue(true); }, true, false, {}},
      {[&] { pressControl(app, "Levels", "Hard"); }, false, true, {"Hard_Action"}},
      {[&] { hard.setValue(false); }, false, false, {}},
      {[&] { w.control<GroupBox>("Group").setEnabled(false); pressControl(app, "Levels", "Easy"); }, false, false, {}},
      {[&] { w.control<GroupBox>("Group").setEnabled(true); pressControl(app, "Levels", "Easy"); }, true, false, {"Easy_Action"}},
  };
  for (std::size_t i = 0; i < steps.size(); ++i) {
    log.clear();
    steps[i].act();
    EXPECT_EQ((std::tuple(easy.Value(), hard.Value(), loose.Value(), log)),
              (std::tuple(steps[i].easy, steps[i].hard, true, steps[i].log)))
        << "step " << i;  // Loose is in another group
  }
}

// Return presses the enabled default button, or nothing; text set by code raises TextChange,
// typing one per character that the mask lets in; cells set by code raise nothing, edited
// cells do.
TEST_F(ViewStateTest, KeyboardAndCells) {
  Window& w = window();
  log.clear();
  pressReturn(app, "Levels");
  w.control<PushButton>("Ok").setEnabled(false);
  pressReturn(app, "Levels");
  w.control<PushButton>("Go").setDefault(true);
  pressReturn(app, "Levels");
  EXPECT_EQ(log, (std::vector<std::string>{"Ok_Action", "Go_Action"}));

  log.clear();
  w.control<EditField>("Field").setText("x");
  typeText(app, "Levels", "NameField", "A-b");
  EXPECT_EQ(w.control<EditField>("NameField").Text(), "Ab");
  EXPECT_EQ(log, (std::vector<std::string>{"Field_TextChange", "NameField_TextChange",
                                           "NameField_TextChange"}));
  EXPECT_EQ(w.focus(), &w.control<EditField>("NameField"));

  log.clear();
  auto& table = w.control<Listbox>("Table");
  table.AddRow("Ann");
  table.setCell(0, 2, "30");
  EXPECT_EQ(table.LastIndex(), 0);
  EXPECT_THROW((void)table.Cell(1, 0), OutOfBoundsException);
  EXPECT_THROW(table.setCell(0, 3, ""), OutOfBoundsException);
  editCell(app, "Levels", "Table", 0, 1, "Easy");
  EXPECT_EQ(table.rows(), (std::vector<std::vector<std::string>>{{"Ann", "Easy", "30"}}));
  EXPECT_EQ(log, (std::vector<std::string>{"Table_CellTextChange 0 1"}));
}

// Close raises Close and ends the instance, even from outside any handler, where the window
// is freed inside Close itself; the accessor then makes a fresh one.
TEST_F(ViewStateTest, CloseEndsTheInstance) {
  Window& first = window();
  first.control<EditField>("Field").setText("kept?");
  log.clear();
  first.Close();
  EXPECT_EQ(log, (std::vector<std::string>{"Levels_Close"}));
  EXPECT_EQ(app.liveWindow("Levels"), nullptr);
  EXPECT_EQ(window().control<EditField>("Field").Text(), "");
}

}  // namespace
}  // namespace corvalta::platform
