#include "corvalta/store/program.h"

#include <corvalta/core/module1.h>
#include <corvalta/core/sounds.h>
#include <corvalta/core/window1.h>
#include <corvalta/shell/window_descriptions.h>

#include <cxxabi.h>

#include <cstdlib>
#include <memory>
#include <utility>

#include "corvalta/store/congratulations.h"
#include "corvalta/store/main_window.h"

namespace corvalta::store {
namespace {

// The class of the exception in flight, as the source names it, without its namespaces.
std::string currentExceptionClass() {
  const std::type_info* type = abi::__cxa_current_exception_type();
  if (type == nullptr) {
    return "unknown";
  }
  int status = 0;
  std::unique_ptr<char, decltype(&std::free)> readable(
      abi::__cxa_demangle(type->name(), nullptr, nullptr, &status), &std::free);
  std::string name = status == 0 && readable ? readable.get() : type->name();
  const auto lastScope = name.rfind("::");
  return lastScope == std::string::npos ? name : name.substr(lastScope + 2);
}

}  // namespace

std::string unhandledExceptionReport(const std::exception_ptr& error) {
  try {
    std::rethrow_exception(error);
  } catch (const std::exception& e) {
    return "An exception of class " + currentExceptionClass() + " was not handled: " + e.what() +
           ". The application must shut down.";
  } catch (...) {
    return "An exception of class " + currentExceptionClass() +
           " was not handled. The application must shut down.";
  }
}

Program::Program(platform::Application& app, SystemCalls& calls, std::string configurationFolder,
                 Report report)
    : app_(app), calls_(calls), folder_(std::move(configurationFolder)), report_(std::move(report)) {}

void Program::start() {
  app_.dispatcher().setReporter([this](std::exception_ptr error) {
    report_(unhandledExceptionReport(error));
    app_.Quit(1);
  });
  app_.registerWindowClass("Window1", [this] {
    return std::make_unique<MainWindow>(shell::windowDescription("Window1"), calls_, folder_);
  });
  app_.registerWindowClass("Congratulations", [] {
    return std::make_unique<Congratulations>(shell::windowDescription("Congratulations"));
  });
  app_.addMenuHandler("FileQuit", [this] {
    quitCommand();
    return true;
  });
  app_.dispatcher().call([this] {
    core::Module1.R = app_.newRandom();
    core::Window1::instance();
  });
}

void Program::quitCommand() {
  if (platform::Window* main = app_.liveWindow("Window1")) {
    main->Close();
  } else {
    app_.Quit(0);
  }
}

int Program::finish() {
  core::releaseSounds();
  app_.setMenuBar(nullptr);
  core::Module1.Difficulty = {};
  core::Module1.R = nullptr;
  core::Module1.Name = {};
  return app_.exitCode();
}

}  // namespace corvalta::store
