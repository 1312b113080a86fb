#pragma once

#include <corvalta/core/congratulations.h>
#include <corvalta/core/module1.h>
#include <corvalta/core/sound_lengths.h>
#include <corvalta/core/sound_switch.h>
#include <corvalta/core/window1.h>
#include <corvalta/platform/controls.h>
#include <corvalta/platform/headless/script.h>
#include <corvalta/platform/timer.h>
#include <corvalta/store/memory_system_calls.h>

#include <gtest/gtest.h>

#include <optional>
#include <sstream>
#include <string>
#include <vector>

namespace corvalta::testing {

// The game's two windows on the headless view with a fixed seed, played by script lines, with
// the Sound menu's two commands. Given a folder, the stored files are there; else in memory.
// The main window opens when the object is made.
class Game {
 public:
  explicit Game(std::optional<std::string> folder = std::nullopt)
      : calls(folder ? store::posixSystemCalls() : static_cast<store::SystemCalls&>(memory)),
        folder_(folder.value_or("/config")) {
    core::Module1 = {};
    app.addMenuHandler("SoundSoundOn", [] { return core::setSound(true), false; });
    app.addMenuHandler("SoundSoundOff", [] { return core::setSound(false), false; });
    app.registerWindowClass("Window1", [this] {
      return std::make_unique<core::Window1>(core::window1Description(), calls, folder_);
    });
    app.registerWindowClass("Congratulations", [] {
      return std::make_unique<core::Congratulations>(core::congratulationsDescription());
    });
    app.dispatcher().setReporter([this](std::exception_ptr error) {
      try {
        std::rethrow_exception(error);
      } catch (const std::exception& e) {
        script.fail(e.what());
      }
      app.Quit(1);
    });
    app.dispatcher().call([this] {
      core::Module1.R = app.newRandom();
      core::Window1::instance();
    });
  }
  ~Game() {
    core::releaseSounds();
    core::Module1 = {};
  }

  // Runs the lines; a failing line fails the test.
  void run(const std::string& lines) {
    std::istringstream in(lines);
    EXPECT_EQ(script.run(in), 0) << err.str();
  }

  core::Window1& window() { return core::Window1::instance(); }
  template <class C>
  C& control(const std::string& name) { return window().control<C>(name); }
  std::string text(const std::string& name) {
    return std::get<std::string>(*window().controlByName(name)->property("Text"));
  }
  bool enabled(const std::string& name) { return control<platform::Control>(name).Enabled(); }
  std::vector<std::vector<std::string>> rows() {
    return control<platform::Listbox>("HighScores").rows();
  }
  // What the player sees and can do, in one line: "+" enabled, "*" the default button, each
  // answer field's text, whether a problem is up, the clock, the banner, the points, the focus.
  std::string view() {
    std::string s = "timer " + std::to_string(control<platform::Timer>("Timer1").Mode());
    for (const char* b : {"Start", "Enter"}) {
      const bool isDefault = control<platform::PushButton>(b).Default();
      s += std::string(" ") + b + (enabled(b) ? "+" : "-") + (isDefault ? "*" : "");
    }
    for (const char* f : {"SubAnswer1", "SubAnswer2", "Answer"})
      s += std::string(" ") + f + (enabled(f) ? "+'" : "-'") + text(f) + "'";
    s += std::string(" levels") + (enabled("GroupBox1") ? "+" : "-");
    s += (text("Afield") + text("Bfield") + text("Cfield")).empty() ? " no problem" : " problem";
    s += " time " + text("Time");
    s += control<platform::StaticText>("Banner").Visible() ? " banner" : "";
    const platform::Control* focus = window().focus();
    return s + " points " + text("GamePoints") + " focus " + (focus ? focus->key() : "none");
  }
  std::int64_t now() { return services.loop.elapsed().count(); }

  std::ostringstream out, err;
  platform::headless::HeadlessServices services{7, core::soundLengths()};
  platform::Application app{services.services()};
  platform::headless::Script script{app, services, out, err};
  store::MemorySystemCalls memory;
  store::SystemCalls& calls;

 private:
  std::string folder_;
};

}  // namespace corvalta::testing
