#pragma once

#include <corvalta/core/module1.h>
#include <corvalta/core/window1.h>
#include <corvalta/platform/controls.h>
#include <corvalta/platform/timer.h>
#include <corvalta/tools/session.h>

#include <gtest/gtest.h>

#include <sstream>
#include <string>

namespace corvalta::core::testing {

// A headless game with a fixed seed, run by script lines.
class Game {
 public:
  explicit Game(std::uint64_t seed = 7) : session(seed, out, err) {}

  // Runs the lines; a failing line fails the test.
  void run(const std::string& script) {
    std::istringstream in(script);
    const int failures = session.run(in);
    EXPECT_EQ(failures, 0) << err.str();
  }

  Window1& window() { return Window1::instance(); }
  std::string text(const std::string& control) {
    auto* child = window().controlByName(control);
    if (auto* label = dynamic_cast<platform::StaticText*>(child)) return label->Text();
    return window().control<platform::EditField>(control).Text();
  }
  bool enabled(const std::string& control) { return window().control<platform::Control>(control).Enabled(); }
  bool isDefault(const std::string& control) { return window().control<platform::PushButton>(control).Default(); }
  std::int32_t timerMode() { return window().control<platform::Timer>("Timer1").Mode(); }
  std::int64_t now() { return session.services().loop.elapsed().count(); }

  std::ostringstream out;
  std::ostringstream err;
  tools::Session session;
};

}  // namespace corvalta::core::testing
