#pragma once

#include <corvalta/core/module1.h>
#include <corvalta/core/window1.h>
#include <corvalta/platform/controls.h>
#include <corvalta/platform/timer.h>
#include <corvalta/tools/session.h>

#include <gtest/gtest.h>

#include <optional>
#include <sstream>
#include <string>
#include <vector>

namespace corvalta::testing {

// A game on the headless view with a fixed seed, run by script lines. Given a folder, the
// whole program runs on its files; the run starts when the object is made and ends when it goes.
class Game {
 public:
  explicit Game(std::optional<std::string> folder = std::nullopt) : session(7, out, err, std::move(folder)) {}

  // Runs the lines; a failing line fails the test.
  void run(const std::string& script) {
    std::istringstream in(script);
    EXPECT_EQ(session.run(in), 0) << err.str();
  }

  core::Window1& window() { return core::Window1::instance(); }
  template <class C>
  C& control(const std::string& name) { return window().control<C>(name); }
  std::string text(const std::string& name) {
    if (auto* label = dynamic_cast<platform::StaticText*>(window().controlByName(name))) return label->Text();
    return control<platform::EditField>(name).Text();
  }
  bool enabled(const std::string& name) { return control<platform::Control>(name).Enabled(); }
  bool selected(const std::string& level) { return control<platform::RadioButton>(level).Value(); }
  std::vector<std::vector<std::string>> rows() { return control<platform::Listbox>("HighScores").rows(); }
  // What the player sees and can do, in one line: "+" enabled, "*" the default button, each
  // answer field's text, whether a problem is up, the clock, the banner, the points, the focus.
  std::string view() {
    std::string s = "timer " + std::to_string(control<platform::Timer>("Timer1").Mode());
    for (const char* b : {"Start", "Enter"})
      s += std::string(" ") + b + (enabled(b) ? "+" : "-") + (control<platform::PushButton>(b).Default() ? "*" : "");
    for (const char* f : {"SubAnswer1", "SubAnswer2", "Answer"})
      s += std::string(" ") + f + (enabled(f) ? "+'" : "-'") + text(f) + "'";
    s += std::string(" levels") + (enabled("GroupBox1") ? "+" : "-");
    s += (text("Afield") + text("Bfield") + text("Cfield")).empty() ? " no problem" : " problem";
    s += " time " + text("Time") + (control<platform::StaticText>("Banner").Visible() ? " banner" : "");
    return s + " points " + text("GamePoints") + " focus " + (window().focus() ? window().focus()->key() : "none");
  }
  std::int64_t now() { return session.services().loop.elapsed().count(); }

  std::ostringstream out, err;
  tools::Session session;
};

}  // namespace corvalta::testing
