#pragma once

#include <corvalta/platform/application.h>
#include <corvalta/platform/headless/headless_services.h>

#include <corvalta/store/program.h>

#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string>

namespace corvalta::tools {

// The game on the headless view: the services with a virtual clock, the application, the
// window classes, and the main window opened as at start-up. A script runs line by line; a
// modal window that is up reads its input from the lines that follow.
//
// Given a configuration folder, the session runs the whole program on it (store::Program):
// the settings and high-score files are read at start and written as the game writes them,
// and an exception that escapes a handler is reported as a failure and ends the run. Without
// one, no file is touched: the main window starts with sound on, Easy and a default table.
class Session {
 public:
  Session(std::uint64_t seed, std::ostream& out, std::ostream& err,
          std::optional<std::string> configurationFolder = std::nullopt);
  ~Session();
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  [[nodiscard]] platform::headless::HeadlessServices& services() { return services_; }
  [[nodiscard]] platform::Application& app() { return app_; }
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

  platform::headless::HeadlessServices services_;
  platform::Application app_;
  std::optional<store::Program> program_;
  std::ostream& out_;
  std::ostream& err_;
  std::istream* script_ = nullptr;
  int lineNumber_ = 0;
  int failures_ = 0;
};

}  // namespace corvalta::tools
