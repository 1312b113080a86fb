// The two commands a script needs around the update check, which runs over real sockets.
#include <corvalta/platform/controls.h>
#include <corvalta/platform/headless/script.h>
#include <corvalta/tools/session.h>

#include <chrono>
#include <stdexcept>

namespace corvalta::tools {
namespace {

using platform::headless::CommandRegistration;
using platform::headless::Script;

// The check runs while updateWindow is up with its bar running.
bool checking(platform::Application& app) {
  auto* window = app.liveWindow("updateWindow");
  return window != nullptr && window->control<platform::ProgressBar>("ProgressBar1").Visible();
}

const CommandRegistration server("update-server", "update-server URL (where later checks fetch the manifest)",
                                 [](Script&, const std::string& a) {
  if (a.empty()) throw std::invalid_argument("a URL is missing");
  Session::current().program().setManifestURL(a);
});

const CommandRegistration await("await-check",
                                "await-check (until the server has answered or failed, 30 s at most)",
                                [](Script& s, const std::string&) {
  auto& app = s.app();
  auto& loop = s.services().loop;
  // Sleeps in the loop while the connection is under way, on the wall clock, so that a silent
  // server can't hold the script for ever.
  loop.waitUntil([&app] { return !checking(app); },
                 {.deliverInput = false, .deadline = loop.now() + std::chrono::seconds(30)});
  if (checking(app)) throw std::runtime_error("the check is still waiting for the server");
});

}  // namespace
}  // namespace corvalta::tools
