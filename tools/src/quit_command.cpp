// The application's quit command, as the menu item FileQuit gives it: it ends in the close
// of the main window, which saves the settings and the high scores before the program quits.
#include <corvalta/platform/user_input.h>
#include <corvalta/tools/commands.h>
#include <corvalta/tools/session.h>

#include <stdexcept>

namespace corvalta::tools {
namespace {

const CommandRegistration quit("quit", "quit (the quit command; needs --config)", [](Session& s, const std::string&) {
  if (!s.app().hasMenuHandler("FileQuit")) throw std::invalid_argument("no quit command without --config");
  if (platform::chooseMenuItem(s.app(), "FileQuit") == platform::Dispatcher::Delivery::Refused) {
    s.note("quit refused: a modal window is up");
  }
});

}  // namespace
}  // namespace corvalta::tools
