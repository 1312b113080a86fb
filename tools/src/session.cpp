#include <corvalta/core/congratulations_stand_in.h>
#include <corvalta/core/module1.h>
#include <corvalta/core/sounds.h>
#include <corvalta/core/window1.h>
#include <corvalta/platform/app_info.h>
#include <corvalta/shell/sound_lengths.h>
#include <corvalta/shell/window_descriptions.h>
#include <corvalta/tools/commands.h>
#include <corvalta/tools/session.h>
#include <corvalta/tools/update_check.h>

#include <istream>
#include <ostream>
#include <sstream>

namespace corvalta::tools {
namespace {

std::map<std::int32_t, std::chrono::milliseconds> soundLengths() {
  return {{core::kOK3Sound, shell::kOK3Length},
          {core::kApplauseSound, shell::kApplauseLength},
          {core::kMicrowaveSound, shell::kMicrowaveLength}};
}

// The sound switch of the menu, as the application's commands have it.
bool setSound(platform::Application& app, bool on) {
  core::Module1.SoundFlag = on;
  if (platform::MenuItem* bar = app.MenuBar()) {
    if (auto* item = bar->Lookup("SoundSoundOn")) item->Checked = on;
    if (auto* item = bar->Lookup("SoundSoundOff")) item->Checked = !on;
  }
  return false;
}

}  // namespace

Session::Session(std::uint64_t seed, std::ostream& out, std::ostream& err,
                 std::optional<std::string> configurationFolder)
    : services_(seed, soundLengths()), app_(services_.services()), out_(out), err_(err) {
  core::Module1 = {};
  app_.addMenuHandler("SoundSoundOn", [this] { return setSound(app_, true); });
  app_.addMenuHandler("SoundSoundOff", [this] { return setSound(app_, false); });
  services_.loop.setInputSource([this] { return runNextLine(); });
  installUpdateCheck(*this, std::string(platform::app_info::updateManifestURL()));
  if (configurationFolder) {
    program_.emplace(app_, store::posixSystemCalls(), std::move(*configurationFolder),
                     [this](const std::string& report) { fail(report); });
    program_->start();
    return;
  }
  app_.dispatcher().setReporter([this](std::exception_ptr error) {
    try {
      std::rethrow_exception(error);
    } catch (const std::exception& e) {
      fail(std::string("unhandled exception: ") + e.what());
    } catch (...) {
      fail("unhandled exception");
    }
  });
  app_.registerWindowClass("Window1", [] {
    return std::make_unique<core::Window1>(shell::windowDescription("Window1"));
  });
  app_.registerWindowClass("Congratulations", [] {
    return std::make_unique<core::CongratulationsStandIn>(shell::windowDescription("Congratulations"));
  });
  app_.dispatcher().call([this] {
    core::Module1.R = app_.newRandom();
    core::Window1::instance();
  });
}

Session::~Session() {
  if (program_) {
    static_cast<void>(program_->finish());
  } else {
    core::releaseSounds();
  }
  core::Module1 = {};
}

int Session::run(std::istream& script) {
  std::istream* outer = script_;
  script_ = &script;
  while (runNextLine()) {
  }
  script_ = outer;
  return failures_;
}

bool Session::runNextLine() {
  if (script_ == nullptr || app_.quitRequested()) return false;
  std::string line;
  if (!std::getline(*script_, line)) return false;
  ++lineNumber_;
  runLine(line);
  return true;
}

void Session::runLine(const std::string& line) {
  const auto start = line.find_first_not_of(" \t\r");
  if (start == std::string::npos || line[start] == '#') return;
  const auto end = line.find_first_of(" \t\r", start);
  const std::string name = line.substr(start, end == std::string::npos ? end : end - start);
  std::string arguments = end == std::string::npos ? "" : line.substr(end + 1);
  if (!arguments.empty() && arguments.back() == '\r') arguments.pop_back();
  const auto found = commandTable().find(name);
  if (found == commandTable().end()) {
    fail("unknown command " + name);
    return;
  }
  try {
    found->second.run(*this, arguments);
  } catch (const std::exception& e) {
    fail(name + ": " + e.what() + " (usage: " + found->second.usage + ")");
  }
}

void Session::fail(const std::string& message) {
  ++failures_;
  err_ << "error: line " << lineNumber_ << ": " << message << '\n';
}

void Session::note(const std::string& message) {
  err_ << "note: line " << lineNumber_ << ": " << message << '\n';
}

}  // namespace corvalta::tools
