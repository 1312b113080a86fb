#include <corvalta/platform/app_info.h>
#include <corvalta/platform/controls.h>
#include <corvalta/platform/menu_item_classes.h>
#include <corvalta/platform/user_input.h>

#include "shell_app.h"

namespace corvalta::shell {
namespace {

using platform::EditField;
using platform::MenuItem;
using platform::StaticText;

struct Shell : ShellApp {
  std::string checks() const {
    const auto mark = [this](const char* name) { return app.MenuBar()->Lookup(name)->Checked ? "x" : "-"; };
    return std::string(mark("SoundSoundOn")) + mark("SoundSoundOff");
  }

  std::string staticText(const char* window, const char* control) {
    return app.liveWindow(window)->control<StaticText>(control).Text();
  }
};

// The tree stands in the order the user sees, with texts, shortcuts and item classes.
TEST_F(Shell, MenuTreeHoldsTheFiveMenusInOrder) {
  struct Row {
    std::string path;  // menu/entry names
    std::string text;
    std::string shortcut;
  };
  std::vector<Row> seen;
  const MenuItem* bar = app.MenuBar();
  for (std::size_t m = 0; m < bar->Count(); ++m) {
    const MenuItem* menu = bar->Item(m);
    seen.push_back({menu->Name, menu->Text, menu->KeyboardShortcut});
    for (std::size_t e = 0; e < menu->Count(); ++e) {
      const MenuItem* entry = menu->Item(e);
      seen.push_back({menu->Name + "/" + entry->Name, entry->Text, entry->KeyboardShortcut});
    }
  }
  const std::vector<Row> expected = {
      {"FileMenu", "&File", ""},
      {"FileMenu/FileQuit", "Quit", "Cmd+Q"},
      {"EditMenu", "&Edit", ""},
      {"EditMenu/EditUndo", "&Undo", "Cmd+Z"},
      {"EditMenu/UntitledMenu1", "-", ""},
      {"EditMenu/EditCut", "Cu&t", "Cmd+X"},
      {"EditMenu/EditCopy", "&Copy", "Cmd+C"},
      {"EditMenu/EditPaste", "&Paste", "Cmd+V"},
      {"EditMenu/EditClear", "&Delete", ""},
      {"EditMenu/UntitledMenu0", "-", ""},
      {"EditMenu/EditSelectAll", "Select &All", "Cmd+A"},
      {"SoundMenu", "Sound", ""},
      {"SoundMenu/SoundSoundOn", "Sound On", ""},
      {"SoundMenu/SoundSoundOff", "Sound Off", ""},
      {"CheckForUpdateMenu", "Check For Update", ""},
      {"CheckForUpdateMenu/CheckForUpdateCheckNow", "Check Now", ""},
      {"HelpMenu", "Corvalta Help", ""},
      {"HelpMenu/HelpShow", "Show Help", ""},
      {"HelpMenu/CorvaltaHelpAbout", "About...", ""},
  };
  ASSERT_EQ(seen.size(), expected.size());
  for (std::size_t k = 0; k < seen.size(); ++k) {
    EXPECT_EQ(seen[k].path, expected[k].path);
    EXPECT_EQ(seen[k].text, expected[k].text) << seen[k].path;
    EXPECT_EQ(seen[k].shortcut, expected[k].shortcut) << seen[k].path;
  }
  EXPECT_NE(dynamic_cast<platform::QuitMenuItem*>(bar->Lookup("FileQuit")), nullptr);
  EXPECT_NE(dynamic_cast<platform::AppleMenuItem*>(bar->Lookup("CorvaltaHelpAbout")), nullptr);
  EXPECT_EQ(checks(), "--");
}

// The two sound items set, never toggle: flag and marks after each command in a row.
TEST_F(Shell, SoundItemsAreACheckedPair) {
  const struct {
    const char* item;
    bool flag;
    const char* marks;
  } steps[] = {
      {"SoundSoundOn", true, "x-"},
      {"SoundSoundOn", true, "x-"},
      {"SoundSoundOff", false, "-x"},
      {"SoundSoundOff", false, "-x"},
      {"SoundSoundOn", true, "x-"},
  };
  for (const auto& step : steps) {
    SCOPED_TRACE(step.item);
    EXPECT_EQ(platform::chooseMenuItem(app, step.item), platform::Dispatcher::Delivery::Delivered);
    EXPECT_EQ(core::Module1.SoundFlag, step.flag);
    EXPECT_EQ(checks(), step.marks);
  }
}

// Each window command shows one instance; choosing it again finds the same one, and after a
// close the next command makes a fresh one from the records.
TEST_F(Shell, WindowCommandsShowOneInstanceEach) {
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
  EXPECT_EQ(app.windows().size(), 3U);

  // Typing into the help text lasts as long as the window; a new window has the record's text.
  platform::typeText(app, "Help", "EditField1", "scribble");
  EXPECT_EQ(app.liveWindow("Help")->control<EditField>("EditField1").Text(), "scribble");
  platform::closeWindow(app, "Help");
  EXPECT_EQ(app.liveWindow("Help"), nullptr);
  platform::chooseMenuItem(app, "HelpShow");
  const auto text = app.liveWindow("Help")->control<EditField>("EditField1").Text();
  EXPECT_TRUE(text.starts_with("Corvalta was developed")) << text;
}

// The version beside "Version:" is the running one from the moment the window is open, and the
// About buttons hand their addresses to the browser without closing the box.
TEST_F(Shell, AboutBoxAndSelfTestShowTheRunningVersion) {
  platform::chooseMenuItem(app, "CorvaltaHelpAbout");
  platform::chooseMenuItem(app, "CheckForUpdateCheckNow");
  EXPECT_EQ(staticText("AboutBox", "StaticText4"), platform::app_info::LongVersion());
  EXPECT_EQ(staticText("selfTest", "StaticText2"), platform::app_info::LongVersion());
  EXPECT_EQ(staticText("AboutBox", "StaticText1"), "Corvalta");

  platform::pressControl(app, "AboutBox", "PushButton1");
  platform::pressControl(app, "AboutBox", "PushButton2");
  platform::pressReturn(app, "AboutBox");
  const std::vector<std::string> opened = {std::string(platform::app_info::authorMailAddress),
                                           std::string(platform::app_info::makerWebSite())};
  EXPECT_EQ(services.urls.opened(), opened);
  EXPECT_TRUE(opened[0].starts_with("mailto:"));
  EXPECT_NE(app.liveWindow("AboutBox"), nullptr);
}

}  // namespace
}  // namespace corvalta::shell
