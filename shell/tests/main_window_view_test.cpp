#include <corvalta/core/window1.h>
#include <corvalta/platform/qt/qt_view.h>
#include <corvalta/platform/user_input.h>
#include <corvalta/shell/window_descriptions.h>

#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QTableWidget>

#include "shell_app.h"

namespace corvalta::shell {
namespace {

struct MainWindowView : ShellApp {
  MainWindowView() {
    app.registerWindowClass("Window1", [] {
      return std::make_unique<core::Window1>(*findWindowDescription("Window1"));
    });
    view.setMenuBarWindow("Window1");
    app.setObserver(&view);
    app.dispatcher().call([] { core::Window1::instance(); });
    top = view.topLevel("Window1");
  }
  ~MainWindowView() override { app.setObserver(nullptr); }

  // The widget of a control: the one at the control's place in the content area.
  template <class W>
  W* at(QWidget* window, int left, int top_, int width, int height) const {
    for (auto* widget : window->findChildren<W*>()) {
      if (widget->geometry() == QRect(left, top_, width, height)) return widget;
    }
    return nullptr;
  }

  platform::qt::QtView view{app};
  QWidget* top = nullptr;
};

// The main window has its fixed size under the menu bar, with the controls of its table.
TEST_F(MainWindowView, WindowStandsAsDescribed) {
  ASSERT_NE(top, nullptr);
  auto* menuBar = top->findChild<QMenuBar*>();
  ASSERT_NE(menuBar, nullptr);
  QStringList menus;
  for (auto* action : menuBar->actions()) menus << action->text();
  EXPECT_EQ(menus, (QStringList{"&File", "&Edit", "Sound", "Check For Update", "Corvalta Help"}));
  top->adjustSize();
  EXPECT_EQ(top->minimumSize(), top->maximumSize());
  EXPECT_EQ(top->width(), 600);
  EXPECT_EQ(top->height(), 325 + menuBar->sizeHint().height());
  EXPECT_EQ(top->windowTitle(), "Corvalta");

  auto* banner = at<QLabel>(top, 20, 275, 298, 30);
  ASSERT_NE(banner, nullptr);
  EXPECT_EQ(banner->text(), "Game Over");
  EXPECT_FALSE(banner->isVisibleTo(top));
  EXPECT_EQ(banner->palette().color(QPalette::WindowText), QColor(0xFF, 0x00, 0x12));
  EXPECT_EQ(banner->font().pixelSize(), 30);

  // The hint lies below the bottom edge: there, but never seen.
  auto* hint = at<QLabel>(top, 146, 346, 50, 20);
  ASSERT_NE(hint, nullptr);
  EXPECT_FALSE(hint->parentWidget()->rect().intersects(hint->geometry()));

  // Arial is asked for; where it is missing, its metric twin stands in.
  auto* answer = at<QLineEdit>(top, 73, 181, 60, 24);
  ASSERT_NE(answer, nullptr);
  EXPECT_EQ(answer->font().pixelSize(), 20);
  EXPECT_TRUE(QFontInfo(answer->font()).family() == "Arial" ||
              QFontInfo(answer->font()).family() == "Liberation Sans")
      << QFontInfo(answer->font()).family().toStdString();
  EXPECT_EQ(answer->alignment() & Qt::AlignHorizontal_Mask, Qt::AlignHCenter);
  EXPECT_FALSE(answer->isEnabled());

  auto* scores = at<QTableWidget>(top, 370, 38, 210, 157);
  ASSERT_NE(scores, nullptr);
  EXPECT_EQ(scores->horizontalHeaderItem(0)->text(), "Name");
  EXPECT_EQ(scores->horizontalHeaderItem(1)->text(), "Difficulty");
  EXPECT_EQ(scores->horizontalHeaderItem(2)->text(), "Score");
  EXPECT_TRUE(scores->showGrid());
  EXPECT_EQ(scores->rowCount(), 10);
  // Ten rows and the heading fit the list's height.
  EXPECT_LE(scores->horizontalHeader()->height() + 10 * scores->rowHeight(0), 157 - 2);
  const int width = scores->viewport()->width();
  EXPECT_EQ(scores->columnWidth(0), width * 40 / 100);
  EXPECT_EQ(scores->columnWidth(1), width * 30 / 100);
}

// Tab goes from field to field in the order the window made them.
TEST_F(MainWindowView, TabOrderIsCreationOrder) {
  auto* first = at<QLineEdit>(top, 44, 93, 50, 24);
  auto* second = at<QLineEdit>(top, 112, 93, 50, 24);
  auto* answer = at<QLineEdit>(top, 73, 181, 60, 24);
  ASSERT_TRUE(first && second && answer);
  EXPECT_EQ(first->nextInFocusChain(), second);
  EXPECT_EQ(second->nextInFocusChain(), answer);
}

// The help text wraps to its field.
TEST_F(MainWindowView, HelpWrapsToItsField) {
  platform::chooseMenuItem(app, "HelpShow");
  auto* help = view.topLevel("Help");
  ASSERT_NE(help, nullptr);
  auto* text = help->findChild<QPlainTextEdit*>();
  ASSERT_NE(text, nullptr);
  EXPECT_EQ(text->geometry(), QRect(20, 20, 360, 260));
  EXPECT_EQ(text->lineWrapMode(), QPlainTextEdit::WidgetWidth);
  EXPECT_FALSE(text->isReadOnly());
  EXPECT_TRUE(text->tabChangesFocus());
  EXPECT_EQ(text->toPlainText().count('\n'), 16);
}

}  // namespace
}  // namespace corvalta::shell
