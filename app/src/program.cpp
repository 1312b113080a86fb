#include <corvalta/app/menus.h>
#include <corvalta/app/program.h>
#include <corvalta/app/window_descriptions.h>
#include <corvalta/core/congratulations.h>
#include <corvalta/core/module1.h>
#include <corvalta/core/sounds.h>
#include <corvalta/core/window1.h>
#include <corvalta/shell/info_windows.h>
#include <corvalta/update/update_check.h>

#include <cxxabi.h>

#include <cstdlib>
#include <memory>
#include <utility>

namespace corvalta::app {
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

Program::Program(platform::Application& app, ProgramSetup setup) : app_(app), setup_(std::move(setup)) {}

void Program::start() {
  core::Module1 = {};
  app_.setMenuBar(makeMenuBar1());
  addMenuHandlers(app_);
  app_.addMenuHandler("FileQuit", [this] {
    quitCommand();
    return true;
  });
  registerWindowClasses();
  app_.dispatcher().setReporter([this](std::exception_ptr error) {
    setup_.report(unhandledExceptionReport(error));
    app_.Quit(1);
  });
  app_.dispatcher().call([this] {
    core::Module1.R = app_.newRandom();
    core::Window1::instance();
  });
}

void Program::registerWindowClasses() {
  app_.registerWindowClass("Window1", [this] {
    return std::make_unique<core::Window1>(windowDescription("Window1"), setup_.files,
                                           setup_.configurationFolder);
  });
  app_.registerWindowClass("Congratulations", [] {
    return std::make_unique<core::Congratulations>(windowDescription("Congratulations"));
  });
  shell::registerInfoWindows(app_);
  update::registerUpdateWindow(app_, {windowDescription("updateWindow"), setup_.newSocket});
}

void Program::setManifestURL(std::string url) {
  update::registerUpdateWindow(app_, {windowDescription("updateWindow"), setup_.newSocket, std::move(url)});
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

}  // namespace corvalta::app
