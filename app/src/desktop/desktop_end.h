#pragma once

#include <corvalta/platform/application.h>

#include <memory>

class QObject;
class QSocketNotifier;

namespace corvalta::app {

// The ways the desktop ends a game that the player did not close: SIGTERM or SIGHUP (a
// logout, a shutdown, a closed terminal) and the session manager's request to save at the end
// of a session close the main window as its close box does, so that its Close saves the
// settings and the table and the program ends with 0. A modal window or message that is up
// is closed first, as its own close box would. When the X connection breaks, Qt's xcb plugin
// ends the process with exit(1) from inside the loop and tells nothing else: the settings and
// the table are saved on the way out then, unless the program was already quitting.
// From the QApplication on, for as long as the object lives.
class DesktopEnd {
 public:
  explicit DesktopEnd(platform::Application& app);
  ~DesktopEnd();
  DesktopEnd(const DesktopEnd&) = delete;
  DesktopEnd& operator=(const DesktopEnd&) = delete;

 private:
  void closeMainWindow();

  platform::Application& app_;
  // Owns the notifier and ends the connections and timers with the object.
  std::unique_ptr<QObject> context_;
  QSocketNotifier* signals_ = nullptr;
};

}  // namespace corvalta::app
