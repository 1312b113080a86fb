#include "desktop_end.h"

#include <corvalta/core/window1.h>
#include <corvalta/platform/user_input.h>

#include <QApplication>
#include <QSessionManager>
#include <QSocketNotifier>
#include <QTimer>
#include <QWidget>

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>

namespace corvalta::app {
namespace {

constexpr int kEndingSignals[] = {SIGTERM, SIGHUP};

// The handler only writes a byte to this pipe; the loop reads it.
int signalPipe[2] = {-1, -1};
struct sigaction previousActions[std::size(kEndingSignals)];

// The game whose files are saved if the process exits from inside the loop.
platform::Application* runningGame = nullptr;

void noteSignal(int) {
  const int saved = errno;
  [[maybe_unused]] const auto written = ::write(signalPipe[1], "s", 1);
  errno = saved;
}

void saveOnExit() {
  platform::Application* app = runningGame;
  if (app == nullptr || app->quitRequested()) {
    return;
  }
  if (auto* main = dynamic_cast<core::Window1*>(app->liveWindow("Window1"))) {
    main->savePlist();
    main->saveScores();
  }
}

}  // namespace

DesktopEnd::DesktopEnd(platform::Application& app) : app_(app), context_(std::make_unique<QObject>()) {
  if (::pipe2(signalPipe, O_CLOEXEC | O_NONBLOCK) == 0) {
    signals_ = new QSocketNotifier(signalPipe[0], QSocketNotifier::Read, context_.get());
    QObject::connect(signals_, &QSocketNotifier::activated, context_.get(), [this] {
      char drained[16];
      while (::read(signalPipe[0], drained, sizeof drained) > 0) {
      }
      closeMainWindow();
    });
    struct sigaction action {};
    action.sa_handler = noteSignal;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART;
    for (std::size_t i = 0; i < std::size(kEndingSignals); ++i) {
      ::sigaction(kEndingSignals[i], &action, &previousActions[i]);
    }
  }
  QObject::connect(qApp, &QGuiApplication::commitDataRequest, context_.get(),
                   [this](QSessionManager&) { closeMainWindow(); });
  static const bool registered = std::atexit(saveOnExit) == 0;
  (void)registered;
  runningGame = &app_;
}

DesktopEnd::~DesktopEnd() {
  runningGame = nullptr;
  if (signals_ != nullptr) {
    for (std::size_t i = 0; i < std::size(kEndingSignals); ++i) {
      ::sigaction(kEndingSignals[i], &previousActions[i], nullptr);
    }
  }
  context_.reset();
  for (int& end : signalPipe) {
    if (end >= 0) {
      ::close(end);
      end = -1;
    }
  }
}

// A modal window or message refuses input to the main window: it is closed first, and the
// main window's close tried again once its wait has returned. An input that is held runs as
// soon as the running handler returns, a sound's wait at the longest.
void DesktopEnd::closeMainWindow() {
  if (app_.quitRequested() ||
      platform::closeWindow(app_, "Window1") != platform::Dispatcher::Delivery::Refused) {
    return;
  }
  if (QWidget* modal = QApplication::activeModalWidget()) {
    modal->close();
  }
  QTimer::singleShot(50, context_.get(), [this] { closeMainWindow(); });
}

}  // namespace corvalta::app
