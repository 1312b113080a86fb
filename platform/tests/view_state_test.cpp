#include <corvalta/platform/application.h>
#include <corvalta/platform/controls.h>
#include <corvalta/platform/headless/headless_services.h>
#include <corvalta/platform/user_input.h>

#include <gtest/gtest.h>

#include "log_window.h"

#include <string>
#include <vector>

namespace corvalta::platform {
namespace {

using headless::HeadlessServices;

WindowPlan formPlan() {
  return {"Form",
          {{"Title", std::string("Form")}, {"Visible", true}},
          {{"Field", "EditField", {{"Name", std::string("Field")}, {"Enabled", true}}, {"TextChange"}},
           {"NameField", "EditField", {{"Name", std::string("NameField")}, {"Mask", std::string("AAAA")}}, {"TextChange"}},
           {"Table", "Listbox", {{"Name", std::string("Table")}, {"ColumnCount", 3}}, {"Open"}}}};
}

class ViewStateTest : public ::testing::Test {
 protected:
  ViewStateTest() {
    app.registerWindowClass("Form", [this] { return std::make_unique<LogWindow>(formPlan(), log); });
  }
  Window& window() { return app.implicitInstance("Form"); }

  HeadlessServices services{1};
  Application app{services.services()};
  std::vector<std::string> log;
};

// A new window raises its controls' Open events, then its own; records raise nothing else.
TEST_F(ViewStateTest, CreationRaisesOpenEventsOnly) {
  Window& w = window();
  EXPECT_EQ(log, (std::vector<std::string>{"Table_Open", "Form_Open"}));
  EXPECT_THROW((void)w.control<PushButton>("Missing"), NilObjectException);
  EXPECT_THROW((void)w.control<PushButton>("Field"), NilObjectException);
  EXPECT_THROW(app.implicitInstance("Nobody"), NilObjectException);
}

// Text set by code raises TextChange, typing one per character that the mask lets in.
TEST_F(ViewStateTest, Typing) {
  Window& w = window();
  log.clear();
  w.control<EditField>("Field").setText("x");
  typeText(app, "Form", "NameField", "A-b");
  EXPECT_EQ(w.control<EditField>("NameField").Text(), "Ab");
  EXPECT_EQ(log, (std::vector<std::string>{"Field_TextChange", "NameField_TextChange",
                                           "NameField_TextChange"}));
  EXPECT_EQ(w.focus(), &w.control<EditField>("NameField"));
}

}  // namespace
}  // namespace corvalta::platform
