#pragma once

#include <corvalta/platform/application.h>
#include <corvalta/platform/menu_item.h>

#include <memory>

namespace corvalta::app {

// The program's one menu bar: File, Edit, Sound, Check For Update and Corvalta Help, in the
// order and with the texts and shortcuts that the application shows. No item is checked yet.
[[nodiscard]] std::shared_ptr<platform::MenuItem> makeMenuBar1();

// Registers the application's five menu commands: the sound switch, which sets SoundFlag and
// the two check marks, and the three that show a window beside the main window ("Check Now",
// "Show Help", "About..."). Every command returns False, as the framework expects.
void addMenuHandlers(platform::Application& app);

}  // namespace corvalta::app
