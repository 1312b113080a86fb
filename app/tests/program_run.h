#pragma once

#include <corvalta/app/program.h>
#include <corvalta/core/sound_lengths.h>
#include <corvalta/core/window1.h>
#include <corvalta/platform/controls.h>
#include <corvalta/platform/headless/script.h>
#include <corvalta/store/memory_system_calls.h>

#include <gtest/gtest.h>

#include <optional>
#include <sstream>
#include <string>

namespace corvalta::testing {

// The program as it ships, on the headless view with a fixed seed, played by script lines: on
// the files of `folder`, else on files in memory. It starts when the object is made and
// shuts down when it goes; the update check's sockets are never made.
class ProgramRun {
 public:
  explicit ProgramRun(std::optional<std::string> folder = std::nullopt)
      : program(app, {folder ? store::posixSystemCalls() : static_cast<store::SystemCalls&>(memory),
                      folder.value_or("/config"), [] { return nullptr; },
                      [this](const std::string& report) { script.fail(report); }}) {
    program.start();
  }
  ~ProgramRun() { static_cast<void>(program.finish()); }

  // Runs the lines; a failing line fails the test.
  void run(const std::string& lines) {
    std::istringstream in(lines);
    EXPECT_EQ(script.run(in), 0) << err.str();
  }
  core::Window1& window() { return core::Window1::instance(); }

  std::ostringstream out, err;
  platform::headless::HeadlessServices services{7, core::soundLengths()};
  platform::Application app{services.services()};
  platform::headless::Script script{app, services, out, err};
  store::MemorySystemCalls memory;
  app::Program program;
};

}  // namespace corvalta::testing
