#pragma once

#include <corvalta/core/module1.h>
#include <corvalta/platform/application.h>
#include <corvalta/platform/headless/headless_services.h>
#include <corvalta/shell/info_windows.h>
#include <corvalta/shell/menus.h>

#include <gtest/gtest.h>

namespace corvalta::shell {

// The application as the program sets it up on the headless view: the menu bar, the menu
// commands and the shell's windows.
struct ShellApp : ::testing::Test {
  ShellApp() {
    core::Module1 = {};
    app.setMenuBar(makeMenuBar1());
    addMenuHandlers(app);
    registerInfoWindows(app);
  }
  ~ShellApp() override { core::Module1 = {}; }

  platform::headless::HeadlessServices services{1};
  platform::Application app{services.services()};
};

}  // namespace corvalta::shell
