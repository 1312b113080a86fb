#pragma once

#include <corvalta/app/program.h>
#include <corvalta/platform/application.h>
#include <corvalta/platform/headless/headless_services.h>
#include <corvalta/platform/headless/script.h>
#include <corvalta/store/memory_system_calls.h>

#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string>

namespace corvalta::tools {

// The program on the headless view: the services with a virtual clock, the application, and
// the program started as the desktop starts it, played by a script.
//
// Given a configuration folder, the program reads and writes its files there; without one it
// keeps them in memory, so no file is touched and every run starts as a first start does. An
// exception that escapes a handler is reported as a failure and ends the run.
class Session {
 public:
  Session(std::uint64_t seed, std::ostream& out, std::ostream& err,
          std::optional<std::string> configurationFolder = std::nullopt);
  ~Session();
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  // The session that runs now: there is one at a time.
  static Session& current();

  [[nodiscard]] platform::headless::HeadlessServices& services() { return services_; }
  [[nodiscard]] platform::Application& app() { return app_; }
  [[nodiscard]] platform::headless::Script& script() { return script_; }
  [[nodiscard]] app::Program& program() { return program_; }

  // Runs every line of `script`; returns the number of lines that failed.
  int run(std::istream& script) { return script_.run(script); }

 private:
  platform::headless::HeadlessServices services_;
  platform::Application app_;
  platform::headless::Script script_;
  store::MemorySystemCalls memoryFiles_;
  app::Program program_;
};

}  // namespace corvalta::tools
