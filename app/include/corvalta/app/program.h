#pragma once

#include <corvalta/platform/application.h>
#include <corvalta/store/system_calls.h>
#include <corvalta/update/http_socket_child.h>

#include <exception>
#include <functional>
#include <string>

namespace corvalta::app {

// The report of an exception that escaped a handler: its class and its message.
std::string unhandledExceptionReport(const std::exception_ptr& error);

// What a view hands the program besides the Application made from its services.
struct ProgramSetup {
  using Report = std::function<void(const std::string& text)>;

  // The stored files: the system's, or files kept in memory.
  store::SystemCalls& files;
  std::string configurationFolder;
  // The TCP sockets of the update check.
  update::SocketFactory newSocket;
  // Shows the report of an exception that escaped a handler.
  Report report;
};

// The program, put together once for every view. It comes up and goes down in this order:
//
//   view: makes the Application (App) from its services and observes it
//   start(): gives App MenuBar1, registers the five menu commands and the quit command
//            FileQuit, then the six window classes; App's Open makes R; Window1 comes into
//            being, and its Open reads the settings, then the high scores, and takes the
//            focus off the fields
//   view: runs its event loop until the application quits (the loop is skipped when start()
//         has quit already)
//   finish(): lets go of the sounds, the menu bar and R, Difficulty and Name; exit status
//
// Window1's Close saves the settings, then the high scores, then quits with 0. Its close
// box and the quit command both end there. An exception that escapes a handler is caught
// where the event is delivered, shown through the setup's `report`, and the program quits
// with 1 and goes on to finish(), without saving.
class Program {
 public:
  Program(platform::Application& app, ProgramSetup setup);

  void start();
  [[nodiscard]] int finish();

  // Later update checks fetch their manifest from `url` instead of the build's server.
  void setManifestURL(std::string url);

 private:
  void registerWindowClasses();
  void quitCommand();

  platform::Application& app_;
  ProgramSetup setup_;
};

}  // namespace corvalta::app
