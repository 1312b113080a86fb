// The show command: one line of the main window as a player sees it.
#include <corvalta/core/module1.h>
#include <corvalta/core/window1.h>
#include <corvalta/platform/controls.h>
#include <corvalta/platform/headless/script.h>

#include <iomanip>
#include <ostream>

namespace corvalta::tools {
namespace {

using platform::headless::CommandRegistration;

const CommandRegistration show("show", "show", [](platform::headless::Script& s, const std::string&) {
  auto& w = core::Window1::instance();
  const auto label = [&](const char* name) { return w.control<platform::StaticText>(name).Text(); };
  const auto elapsed = s.services().loop.elapsed().count();
  const bool running = !w.control<platform::PushButton>("Start").Enabled();
  s.out() << std::setw(6) << elapsed / 1000 << '.' << elapsed % 1000 / 100 << "s  "
          << (running ? "running" : "idle   ") << "  " << label("Afield") << ' ' << label("Op1") << ' '
          << label("Bfield") << ' ' << label("Op2") << ' ' << label("Cfield") << "  (" << label("Op3")
          << ")  answer '" << w.control<platform::EditField>("Answer").Text() << "'  time "
          << label("Time") << "  points " << label("GamePoints")
          << (w.control<platform::StaticText>("Banner").Visible() ? "  Game Over" : "") << '\n';
});

}  // namespace
}  // namespace corvalta::tools
