#include <corvalta/app/menus.h>
#include <corvalta/core/sound_switch.h>
#include <corvalta/platform/menu_item_classes.h>

namespace corvalta::app {
namespace {

using platform::MenuItem;

struct Entry {
  const char* name;
  const char* text;
  const char* shortcut;  // nullptr: a separator, which never gets the property
  enum { Plain, Quit, About } kind = Plain;
};

struct Menu {
  const char* name;
  const char* text;
  std::vector<Entry> entries;
};

std::shared_ptr<MenuItem> makeItem(const Entry& entry) {
  std::shared_ptr<MenuItem> item;
  switch (entry.kind) {
    case Entry::Quit: item = std::make_shared<platform::QuitMenuItem>(entry.name); break;
    case Entry::About: item = std::make_shared<platform::AppleMenuItem>(entry.name); break;
    case Entry::Plain: item = std::make_shared<MenuItem>(entry.name); break;
  }
  item->AutoEnable = true;
  item->Text = entry.text;
  if (entry.shortcut != nullptr) {
    item->KeyboardShortcut = entry.shortcut;
  }
  return item;
}

bool setSound(bool on) {
  core::setSound(on);
  return false;
}

bool show(platform::Application& app, const char* windowClass) {
  app.implicitInstance(windowClass).Show();
  return false;
}

}  // namespace

std::shared_ptr<MenuItem> makeMenuBar1() {
  const std::vector<Menu> menus = {
      {"FileMenu", "&File", {{"FileQuit", "Quit", "Cmd+Q", Entry::Quit}}},
      {"EditMenu",
       "&Edit",
       {
           {"EditUndo", "&Undo", "Cmd+Z"},
           {"UntitledMenu1", "-", nullptr},
           {"EditCut", "Cu&t", "Cmd+X"},
           {"EditCopy", "&Copy", "Cmd+C"},
           {"EditPaste", "&Paste", "Cmd+V"},
           {"EditClear", "&Delete", ""},
           {"UntitledMenu0", "-", nullptr},
           {"EditSelectAll", "Select &All", "Cmd+A"},
       }},
      {"SoundMenu", "Sound", {{"SoundSoundOn", "Sound On", ""}, {"SoundSoundOff", "Sound Off", ""}}},
      {"CheckForUpdateMenu", "Check For Update", {{"CheckForUpdateCheckNow", "Check Now", ""}}},
      {"HelpMenu",
       "Corvalta Help",
       {{"HelpShow", "Show Help", ""}, {"CorvaltaHelpAbout", "About...", "", Entry::About}}},
  };
  auto bar = std::make_shared<MenuItem>("MenuBar1");
  for (const auto& menu : menus) {
    bar->Append(makeItem({menu.name, menu.text, ""}));
    MenuItem* parent = bar->Child(menu.name);
    for (const auto& entry : menu.entries) {
      parent->Append(makeItem(entry));
    }
  }
  return bar;
}

void addMenuHandlers(platform::Application& app) {
  app.addMenuHandler("CheckForUpdateCheckNow", [&app] { return show(app, "selfTest"); });
  app.addMenuHandler("SoundSoundOn", [] { return setSound(true); });
  app.addMenuHandler("SoundSoundOff", [] { return setSound(false); });
  app.addMenuHandler("HelpShow", [&app] { return show(app, "Help"); });
  app.addMenuHandler("CorvaltaHelpAbout", [&app] { return show(app, "AboutBox"); });
}

}  // namespace corvalta::app
