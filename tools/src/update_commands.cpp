// The update check in the driver: selfTest and updateWindow over real sockets, and the two
// commands a script needs around them.
#include <corvalta/platform/controls.h>
#include <corvalta/platform/headless/real_time_tcp_socket.h>
#include <corvalta/platform/qt/qt_tcp_socket.h>
#include <corvalta/shell/info_windows.h>
#include <corvalta/shell/window_descriptions.h>
#include <corvalta/tools/commands.h>
#include <corvalta/tools/session.h>
#include <corvalta/tools/update_check.h>
#include <corvalta/update/update_check.h>

#include <chrono>
#include <stdexcept>

namespace corvalta::tools {
namespace {

// The check runs while updateWindow is up with its bar running.
bool checking(platform::Application& app) {
  auto* window = app.liveWindow("updateWindow");
  return window != nullptr && window->control<platform::ProgressBar>("ProgressBar1").Visible();
}

const CommandRegistration server("update-server", "update-server URL (where later checks fetch the manifest)",
                                 [](Session& s, const std::string& a) {
  if (a.empty()) throw std::invalid_argument("a URL is missing");
  installUpdateCheck(s, a);
});

const CommandRegistration await("await-check",
                                "await-check (until the server has answered or failed, 30 s at most)",
                                [](Session& s, const std::string&) {
  auto& app = s.app();
  auto& loop = s.services().loop;
  // Sleeps in the loop while the connection is under way, on the wall clock, so that a silent
  // server can't hold the script for ever.
  loop.waitUntil([&app] { return !checking(app); },
                 {.deliverInput = false, .deadline = loop.now() + std::chrono::seconds(30)});
  if (checking(app)) throw std::runtime_error("the check is still waiting for the server");
});

}  // namespace

void installUpdateCheck(Session& session, std::string manifestURL) {
  auto& app = session.app();
  auto& loop = session.services().loop;
  shell::registerInfoWindows(app);
  app.addMenuHandler("CheckForUpdateCheckNow", [&app] {
    app.implicitInstance("selfTest").Show();
    return false;
  });
  update::registerUpdateWindow(app, {shell::windowDescription("updateWindow"),
                                     [&loop] {
                                       return std::make_unique<platform::headless::RealTimeTcpSocket>(
                                           std::make_unique<platform::qt::QtTcpSocket>(), loop);
                                     },
                                     std::move(manifestURL)});
}

}  // namespace corvalta::tools
