#pragma once

#include <corvalta/platform/application.h>
#include <corvalta/platform/headless/headless_services.h>

#include <functional>
#include <iosfwd>
#include <map>
#include <string>
#include <string_view>

namespace corvalta::platform::headless {

class Script;

// A command of a script: the rest of the line after the command's name, with the blank after
// the name taken off. A command reports a fault by throwing std::exception.
using Command = std::function<void(Script&, const std::string& arguments)>;

struct CommandEntry {
  std::string usage;
  Command run;
};

// Every command, by name. A file of commands adds its own with CommandRegistration objects
// at namespace scope; no central list names them. The commands that act as the user and move
// the clock are always there.
[[nodiscard]] std::map<std::string, CommandEntry, std::less<>>& commandTable();

struct CommandRegistration {
  CommandRegistration(std::string name, std::string usage, Command run);
};

// The user of an application on the headless view, played from a script line by line; a
// modal window that is up reads its input from the lines that follow.
class Script {
 public:
  Script(Application& app, HeadlessServices& services, std::ostream& out, std::ostream& err);
  ~Script();
  Script(const Script&) = delete;
  Script& operator=(const Script&) = delete;

  [[nodiscard]] Application& app() { return app_; }
  [[nodiscard]] HeadlessServices& services() { return services_; }
  [[nodiscard]] std::ostream& out() { return out_; }

  // Runs every line of `script`; returns the number of lines that failed.
  int run(std::istream& script);
  // Runs one line: a command and its arguments, a comment (#) or nothing.
  void runLine(const std::string& line);
  // A failed command or an exception that escaped a handler.
  void fail(const std::string& message);
  // Tells the script's author something that is no failure (an input held or refused).
  void note(const std::string& message);
  [[nodiscard]] int failures() const { return failures_; }

 private:
  bool runNextLine();

  Application& app_;
  HeadlessServices& services_;
  std::ostream& out_;
  std::ostream& err_;
  std::istream* script_ = nullptr;
  int lineNumber_ = 0;
  int failures_ = 0;
};

}  // namespace corvalta::platform::headless
