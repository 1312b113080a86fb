#pragma once

#include <corvalta/platform/application.h>

#include <exception>
#include <functional>
#include <string>

#include "corvalta/store/system_calls.h"

namespace corvalta::store {

// The report of an exception that escaped a handler: its class and its message.
std::string unhandledExceptionReport(const std::exception_ptr& error);

// How the program comes up and goes down, in the same order in both views:
//
//   view: makes the Application (App) and gives it MenuBar1 and the menu handlers
//   start(): App's Open makes R; Window1 comes into being, and its Open reads the settings,
//            then the high scores, and takes the focus off the fields
//   view: runs its event loop until the application quits (the loop is skipped when start()
//         has quit already)
//   finish(): lets go of the sounds, the menu bar and R, Difficulty and Name; exit status
//
// Window1's Close saves the settings, then the high scores, then quits with 0. Its close
// box and the quit command (the menu item FileQuit, which start() registers) both end there.
// An exception that escapes a handler is caught where the event is delivered, shown through
// `report` (a message box on the desktop, standard error in the headless view), and the
// program quits with 1 and goes on to finish(), without saving.
class Program {
 public:
  using Report = std::function<void(const std::string& text)>;

  Program(platform::Application& app, SystemCalls& calls, std::string configurationFolder,
          Report report);

  void start();
  [[nodiscard]] int finish();

 private:
  void quitCommand();

  platform::Application& app_;
  SystemCalls& calls_;
  std::string folder_;
  Report report_;
};

}  // namespace corvalta::store
