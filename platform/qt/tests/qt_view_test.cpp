#include <corvalta/platform/application.h>
#include <corvalta/platform/controls.h>
#include <corvalta/platform/headless/headless_services.h>
#include <corvalta/platform/qt/qt_view.h>

#include "../../tests/log_window.h"
#include "../src/list_widget.h"
#include "../src/record_colors.h"
#include "../src/spoken_name.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QRect>
#include <QTest>

namespace corvalta::platform::qt {
namespace {

using headless::HeadlessServices;

// A control's record: its name, its place and what else it shows.
ControlPlan placed(const char* name, const char* className, QRect place, PropertyList more = {},
                   std::vector<std::string> events = {}) {
  PropertyList properties = {{"Name", std::string(name)}, {"Left", place.left()}, {"Top", place.top()},
                             {"Width", place.width()},     {"Height", place.height()}};
  properties.insert(properties.end(), more.begin(), more.end());
  return {name, className, properties, std::move(events)};
}

WindowPlan testPlan() {
  return {"Test",
          {{"Width", 300}, {"Height", 200}, {"Visible", true}, {"Resizeable", false}},
          {placed("Label", "StaticText", {10, 10, 100, 20},
                  {{"Text", std::string("two\rlines")}, {"TextColor", Color{0xFF, 0x00, 0x12}}}),
           placed("Field", "EditField", {10, 40, 80, 24},
                  {{"TextColor", Color{}}, {"BackColor", Color{0xFF, 0xFF, 0xFF}}}, {"TextChange"}),
           placed("Short", "EditField", {100, 40, 80, 24}, {{"Mask", std::string("AAA")}}),
           placed("Group", "GroupBox", {10, 70, 120, 80}),
           placed("Easy", "RadioButton", {20, 90, 80, 20},
                  {{"Caption", std::string("Easy")}, {"InitialParent", std::string("Group")}}, {"Action"}),
           placed("Hard", "RadioButton", {20, 115, 80, 20},
                  {{"Caption", std::string("Hard")}, {"InitialParent", std::string("Group")}}, {"Action"}),
           placed("Alone", "RadioButton", {20, 160, 80, 20},
                  {{"Caption", std::string("Alone")}, {"Value", true}}, {"Action"}),
           placed("Go", "PushButton", {150, 90, 60, 20},
                  {{"Caption", std::string("Go")}, {"Default", true}}, {"Action"}),
           placed("Stop", "PushButton", {150, 120, 60, 20},
                  {{"Caption", std::string("Stop & go")}, {"Cancel", true}}, {"Action"}),
           placed("Table", "Listbox", {140, 10, 150, 157},
                  {{"ColumnCount", 3}, {"ColumnWidths", std::string("40% 30%\t30%")}, {"HasHeading", true},
                   {"InitialValue", std::string("Name\tLevel\tScore")}, {"DefaultRowHeight", -1},
                   {"GridLinesHorizontal", 3}})}};
}

class QtViewTest : public ::testing::Test {
 protected:
  QtViewTest() {
    app.registerWindowClass("Test", [this] { return std::make_unique<LogWindow>(testPlan(), log); });
    app.setObserver(&view);
    window = &app.implicitInstance("Test");
    top = view.topLevel("Test");
  }
  ~QtViewTest() override { app.setObserver(nullptr); }

  template <class W>
  W* widget(const char* name) const {
    return top->findChild<W*>(name);
  }

  void settle() { QCoreApplication::processEvents(); }

  HeadlessServices services{1};
  Application app{services.services()};
  QtView view{app};
  std::vector<std::string> log;
  Window* window = nullptr;
  QWidget* top = nullptr;
};

// Every control with a place becomes a widget at that place, showing what its record says,
// and then what the view state says; a radio button in a disabled group is disabled with it.
TEST_F(QtViewTest, WidgetsShowTheRecordsThenTheState) {
  ASSERT_NE(top, nullptr);
  EXPECT_EQ(top->minimumSize(), top->maximumSize());
  auto* label = widget<QLabel>("Label");
  ASSERT_NE(label, nullptr);
  EXPECT_EQ(label->text(), "two\nlines");
  EXPECT_EQ(label->palette().color(QPalette::WindowText), QColor(0xFF, 0x00, 0x12));
  EXPECT_EQ(widget<QPushButton>("Stop")->text(), "Stop && go");
  EXPECT_TRUE(widget<QPushButton>("Go")->isDefault());
  auto* list = widget<ListWidget>("Table");
  ASSERT_NE(list, nullptr);
  EXPECT_EQ(list->columnWidth(0), list->viewport()->width() * 40 / 100);

  window->control<StaticText>("Label").setVisible(false);
  window->control<EditField>("Field").setText("17");
  window->control<GroupBox>("Group").setEnabled(false);
  auto& table = window->control<Listbox>("Table");
  table.AddRow("Ann");
  table.setCell(0, 2, "12");
  table.setColumnAlignment(2, 2);
  EXPECT_FALSE(label->isVisible());
  EXPECT_EQ(widget<QLineEdit>("Field")->text(), "17");
  EXPECT_FALSE(widget<QRadioButton>("Easy")->isEnabled());
  ASSERT_EQ(list->rowCount(), 1);
  EXPECT_EQ(list->item(0, 2)->text(), "12");
  EXPECT_EQ(list->item(0, 2)->textAlignment() & Qt::AlignHorizontal_Mask, Qt::AlignHCenter);
  window->control<GroupBox>("Group").setEnabled(true);
  EXPECT_TRUE(widget<QRadioButton>("Easy")->isEnabled());
  // The list grows to show ten rows and the heading whole.
  for (int row = 1; row < 10; ++row) table.AddRow("Bo");
  EXPECT_GE(list->height(), list->horizontalHeader()->height() + 10 * list->rowHeight(0) + 2 * list->frameWidth());
}

// What the user does goes into the state, which raises the events; the widgets then show what
// the state made of it.
TEST_F(QtViewTest, UserInputGoesIntoTheState) {
  QTest::mouseClick(widget<QRadioButton>("Hard"), Qt::LeftButton);
  EXPECT_TRUE(window->control<RadioButton>("Hard").Value());
  QTest::mouseClick(widget<QRadioButton>("Easy"), Qt::LeftButton);
  EXPECT_TRUE(window->control<RadioButton>("Easy").Value());
  EXPECT_FALSE(window->control<RadioButton>("Hard").Value());
  EXPECT_FALSE(widget<QRadioButton>("Hard")->isChecked());
  // A click on the button that is on leaves it on; a button of another group stays on, and
  // turned off by code it raises nothing.
  QTest::mouseClick(widget<QRadioButton>("Easy"), Qt::LeftButton);
  EXPECT_TRUE(widget<QRadioButton>("Easy")->isChecked());
  EXPECT_TRUE(window->control<RadioButton>("Alone").Value());
  window->control<RadioButton>("Alone").setValue(false);

  QTest::keyClicks(widget<QLineEdit>("Field"), "42");
  EXPECT_EQ(window->control<EditField>("Field").Text(), "42");
  // The mask takes letters and digits, three of them.
  QTest::keyClicks(widget<QLineEdit>("Short"), "a-b+cd");
  EXPECT_EQ(window->control<EditField>("Short").Text(), "abc");
  EXPECT_EQ(widget<QLineEdit>("Short")->text(), "abc");
  // A letter typed with a combining accent takes one place and is kept composed.
  window->control<EditField>("Short").setText("");
  QTest::keyClicks(widget<QLineEdit>("Short"), "Zoe");
  QTest::sendKeyEvent(QTest::Click, widget<QLineEdit>("Short"), Qt::Key_unknown, QString::fromUtf8("\xcc\x81"),
                      Qt::NoModifier);
  QTest::keyClicks(widget<QLineEdit>("Short"), "x");
  EXPECT_EQ(window->control<EditField>("Short").Text(), "Zo\xc3\xa9");

  QTest::keyClick(widget<QLineEdit>("Field"), Qt::Key_Return);
  QTest::keyClick(widget<QLineEdit>("Field"), Qt::Key_Escape);
  QTest::mouseClick(widget<QPushButton>("Stop"), Qt::LeftButton);
  // One TextChange per keystroke; Return presses the default button, Escape the cancel button.
  const std::vector<std::string> expected = {"Test_Open",        "Hard_Action", "Easy_Action",
                                             "Field_TextChange", "Field_TextChange", "Go_Action",
                                             "Stop_Action",      "Stop_Action"};
  EXPECT_EQ(log, expected);
}

// The records' colours follow the desktop from light to dark and back.
TEST_F(QtViewTest, ColorsFollowTheDesktop) {
  const QPalette before = QApplication::palette();
  QPalette dark = before;
  dark.setColor(QPalette::Window, QColor(0x32, 0x32, 0x32));
  dark.setColor(QPalette::WindowText, Qt::white);
  auto* label = widget<QLabel>("Label");
  auto* field = widget<QLineEdit>("Field");
  const auto shown = [](QWidget* widget, QPalette::ColorRole role) { return widget->palette().color(role); };

  QApplication::setPalette(dark);
  settle();
  // Red stays red, light enough to read on dark grey.
  EXPECT_GE(contrastRatio(shown(label, QPalette::WindowText), shown(label, QPalette::Window)), 4.5);
  EXPECT_EQ(shown(label, QPalette::WindowText).hslHue(), QColor(0xFF, 0x00, 0x12).hslHue());
  EXPECT_EQ(shown(field, QPalette::Base), Qt::black);
  EXPECT_EQ(shown(field, QPalette::Text), Qt::white);
  QApplication::setPalette(before);
  settle();
  EXPECT_EQ(shown(label, QPalette::WindowText), QColor(0xFF, 0x00, 0x12));
  EXPECT_EQ(shown(field, QPalette::Base), Qt::white);
  EXPECT_EQ(shown(field, QPalette::Text), Qt::black);
}

// Tab visits each control that takes the focus once, in the order of creation, the list as
// one stop whatever its rows and each radio button as its own; the list keeps no row chosen
// once the focus has left it.
TEST_F(QtViewTest, TabVisitsEachControlOnceInTheOrderOfCreation) {
  auto& table = window->control<Listbox>("Table");
  table.AddRow("Ann");
  table.AddRow("Bo");
  QApplication::setActiveWindow(top);
  EXPECT_EQ(QApplication::focusWidget(), widget<QLineEdit>("Field"));
  std::vector<QString> visited;
  for (int step = 0; step < 9; ++step) {
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    visited.push_back(QApplication::focusWidget()->objectName());
  }
  const std::vector<QString> expected = {"Short", "Easy",  "Hard",  "Alone", "Go",
                                         "Stop",  "Table", "Field", "Short"};
  EXPECT_EQ(visited, expected);

  auto* list = widget<ListWidget>("Table");
  list->setFocus();
  QTest::keyClick(list, Qt::Key_Down);
  EXPECT_FALSE(list->selectedItems().isEmpty());
  QTest::keyClick(list, Qt::Key_Tab);
  EXPECT_EQ(QApplication::focusWidget(), widget<QLineEdit>("Field"));
  EXPECT_TRUE(list->selectedItems().isEmpty());
  EXPECT_FALSE(list->currentIndex().isValid());
}

// The close box asks the state to close the window; the widget goes when the state says.
TEST_F(QtViewTest, CloseBoxClosesThroughTheState) {
  QPointer<QWidget> shown = top;
  top->close();
  EXPECT_EQ(app.liveWindow("Test"), nullptr);
  EXPECT_FALSE(shown->isVisible());
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_TRUE(shown.isNull());
  EXPECT_EQ(view.topLevel("Test"), nullptr);
}

// A field, a list or a bar is named by the nearest label with words just before it, else by
// its own name, else by its window; controls with captions are left to Qt.
TEST(SpokenName, FromTheNearestLabelElseTheName) {
  HeadlessServices services{1};
  Application app{services.services()};
  const QRect field(100, 100, 60, 24);
  const auto label = [](const char* name, QRect place, const char* text, bool visible = true) {
    return placed(name, "StaticText", place, {{"Text", std::string(text)}, {"Visible", visible}});
  };
  struct Row {
    const char* what;
    std::vector<ControlPlan> others;
    ControlPlan named;
    const char* expected;
  };
  const Row rows[] = {
      {"label to the left", {label("L", {40, 102, 47, 20}, "Name:")}, placed("NameField", "EditField", field), "Name"},
      {"label above", {label("L", {90, 78, 100, 20}, "High Scores")}, placed("Scores", "Listbox", field), "High Scores"},
      {"nearer of two", {label("Far", {100, 70, 60, 20}, "Far"), label("Near", {100, 85, 60, 14}, "Near")},
       placed("Bar", "ProgressBar", field), "Near"},
      {"a sign is no label", {label("Op", {110, 60, 20, 38}, "+")}, placed("SubAnswer1", "EditField", field), "Sub Answer 1"},
      {"hidden label", {label("L", {100, 78, 60, 20}, "Game Over", false)}, placed("Answer", "EditField", field), "Answer"},
      {"too far above", {label("L", {100, 59, 60, 20}, "Countdown")}, placed("HighScores", "Listbox", field), "High Scores"},
      {"label to the right", {label("L", {165, 102, 60, 20}, "Points")}, placed("EditField1", "EditField", field), "Dialog Box"},
      {"a button speaks its caption", {label("L", {40, 102, 47, 20}, "Name:")},
       placed("Go", "PushButton", field, {{"Caption", std::string("Go")}}), ""},
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
