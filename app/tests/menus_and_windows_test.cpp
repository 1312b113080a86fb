#include <corvalta/core/module1.h>
#include <corvalta/platform/app_info.h>
#include <corvalta/platform/menu_item_classes.h>
#include <corvalta/platform/qt/qt_view.h>
#include <corvalta/platform/user_input.h>

#include <QPlainTextEdit>

#include <gtest/gtest.h>

#include "program_run.h"

namespace corvalta::app {
namespace {

using platform::MenuItem;
using platform::StaticText;

// The program on the headless view, its menu bar and the windows beside the main window.
struct Shell : ::testing::Test, testing::ProgramRun {
  // The check marks of Sound On and Sound Off.
  std::string marks() const {
    const auto mark = [this](const char* name) { return app.MenuBar()->Lookup(name)->Checked ? "x" : "-"; };
    return std::string(mark("SoundSoundOn")) + mark("SoundSoundOff");
  }
};

// The tree stands in the order the user sees, with names, texts, shortcuts and item classes.
TEST_F(Shell, MenuTreeHoldsTheFiveMenusInOrder) {
  std::vector<std::string> seen;
  const MenuItem* bar = app.MenuBar();
  for (std::size_t m = 0; m < bar->Count(); ++m) {
    const MenuItem* menu = bar->Item(m);
    std::string line = menu->Name + " " + menu->Text + ":";
    for (std::size_t e = 0; e < menu->Count(); ++e) {
      const MenuItem& entry = *menu->Item(e);
      line += " " + entry.Name + " " + entry.Text + " " + entry.KeyboardShortcut + "|";
    }
    seen.push_back(line);
  }
  const std::vector<std::string> expected = {
      "FileMenu &File: FileQuit Quit Cmd+Q|",
      "EditMenu &Edit: EditUndo &Undo Cmd+Z| UntitledMenu1 - | EditCut Cu&t Cmd+X|"
      " EditCopy &Copy Cmd+C| EditPaste &Paste Cmd+V| EditClear &Delete | UntitledMenu0 - |"
      " EditSelectAll Select &All Cmd+A|",
      "SoundMenu Sound: SoundSoundOn Sound On | SoundSoundOff Sound Off |",
      "CheckForUpdateMenu Check For Update: CheckForUpdateCheckNow Check Now |",
      "HelpMenu Corvalta Help: HelpShow Show Help | CorvaltaHelpAbout About... |",
  };
  EXPECT_EQ(seen, expected);
  EXPECT_NE(dynamic_cast<platform::QuitMenuItem*>(bar->Lookup("FileQuit")), nullptr);
  EXPECT_NE(dynamic_cast<platform::AppleMenuItem*>(bar->Lookup("CorvaltaHelpAbout")), nullptr);
}

// The two sound items set, never toggle: flag and marks after each command in a row.
TEST_F(Shell, SoundItemsAreACheckedPair) {
  std::string seen;
  for (const char* item : {"SoundSoundOn", "SoundSoundOn", "SoundSoundOff", "SoundSoundOff"}) {
    platform::chooseMenuItem(app, item);
    seen += std::string(core::Module1.SoundFlag ? "on " : "off ") + marks() + " ";
  }
  EXPECT_EQ(seen, "on x- on x- off -x off -x ");
}

// Each window command shows its window, one instance however often it is chosen. About and Self
// Test show the running version from the moment they open, and the About buttons hand their
// addresses to the browser without closing the box.
TEST_F(Shell, WindowCommandsShowTheirWindows) {
  const std::pair<const char*, const char*> commands[] = {
      {"HelpShow", "Help"}, {"CorvaltaHelpAbout", "AboutBox"}, {"CheckForUpdateCheckNow", "selfTest"}};
  for (const auto& [item, window] : commands) {
    SCOPED_TRACE(item);
    platform::chooseMenuItem(app, item);
    platform::Window* first = app.liveWindow(window);
    ASSERT_NE(first, nullptr);
    EXPECT_TRUE(first->Visible());
    platform::chooseMenuItem(app, item);
    EXPECT_EQ(app.liveWindow(window), first);
  }
  EXPECT_EQ(app.windows().size(), 4U) << "Window1 and the three";
  EXPECT_EQ(app.liveWindow("AboutBox")->control<StaticText>("StaticText4").Text(), platform::app_info::LongVersion());
  EXPECT_EQ(app.liveWindow("selfTest")->control<StaticText>("StaticText2").Text(), platform::app_info::LongVersion());

  platform::pressControl(app, "AboutBox", "PushButton1");
  platform::pressControl(app, "AboutBox", "PushButton2");
  platform::pressReturn(app, "AboutBox");
  const std::vector<std::string> opened = {std::string(platform::app_info::authorMailAddress),
                                           std::string(platform::app_info::makerWebSite())};
  EXPECT_EQ(services.urls.opened(), opened);
  EXPECT_NE(app.liveWindow("AboutBox"), nullptr);
}

// The same application on Qt widgets.
struct ShellView : Shell {
  ShellView() { app.setObserver(&view); }
  ~ShellView() override { app.setObserver(nullptr); }
  platform::qt::QtView view{app};
};

// The help text wraps to its field, nine paragraphs apart.
TEST_F(ShellView, HelpWrapsToItsField) {
  platform::chooseMenuItem(app, "HelpShow");
  auto* text = view.topLevel("Help")->findChild<QPlainTextEdit*>();
  ASSERT_NE(text, nullptr);
  EXPECT_EQ(text->lineWrapMode(), QPlainTextEdit::WidgetWidth);
  EXPECT_FALSE(text->isReadOnly());
  EXPECT_TRUE(text->tabChangesFocus());
  EXPECT_EQ(text->toPlainText().count('\n'), 16);
}

}  // namespace
}  // namespace corvalta::app
