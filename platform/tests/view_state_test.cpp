#include <corvalta/platform/application.h>
#include <corvalta/platform/controls.h>
#include <corvalta/platform/headless/headless_services.h>
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
           {"Table", "Listbox", {{"Name", std::string("Table")}, {"ColumnCount", 3}}, {"Open"}}}};
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

// A radio button turned on clears its group's siblings and raises its own Action, whoever turns
// it on; turning it off or on again raises nothing. (The game decides the disabled group.)
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
// typing one per character that the mask lets in.
TEST_F(ViewStateTest, ReturnAndTyping) {
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
}

}  // namespace
}  // namespace corvalta::platform
