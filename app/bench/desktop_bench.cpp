// Figures of the desktop game, each from fresh processes of the real program:
//   - time from process start to the first painted main window, and the CPU time and peak
//     memory until then, beside a bare Qt window (with --startup, only these);
//   - CPU time while the game sits idle for 10 s;
//   - CPU time, wall-clock length (Start to "Game Over") and peak memory of a whole game with
//     sound on, played by answering every problem right.
// Without a DISPLAY it starts its own Xvfb. It prints; it judges nothing.
#include "desktop.h"

#include <corvalta/core/module1.h>
#include <corvalta/platform/controls.h>
#include <corvalta/platform/record_names.h>
#include <corvalta/platform/user_input.h>
#include <corvalta/platform/view_observer.h>
#include <corvalta/testing/child_process.h>

#include <QApplication>
#include <QTimer>
#include <QWidget>

#include <sys/resource.h>
#include <sys/wait.h>
#include <spawn.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

extern char** environ;

namespace {

using Clock = std::chrono::steady_clock;
namespace platform = corvalta::platform;

double milliseconds(Clock::duration span) {
  return std::chrono::duration<double, std::milli>(span).count();
}

long long nanoseconds(Clock::time_point at) {
  return std::chrono::duration_cast<std::chrono::nanoseconds>(at.time_since_epoch()).count();
}

long long nowNanoseconds() { return nanoseconds(Clock::now()); }

double milliseconds(const timeval& t) { return double(t.tv_sec) * 1000.0 + double(t.tv_usec) / 1000.0; }

double cpuMilliseconds() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return milliseconds(usage.ru_utime) + milliseconds(usage.ru_stime);
}

// Calls `action` once, at the first paint of a visible top-level window.
class FirstPaint : public QObject {
 public:
  explicit FirstPaint(std::function<void()> action) : action_(std::move(action)) {}

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Paint && action_) {
      auto* widget = qobject_cast<QWidget*>(watched);
      if (widget != nullptr && widget->isWindow() && widget->isVisible()) {
        auto action = std::move(action_);
        action_ = nullptr;
        QTimer::singleShot(0, this, action);
      }
    }
    return QObject::eventFilter(watched, event);
  }

 private:
  std::function<void()> action_;
};

void printAndLeave(const std::string& line) {
  std::printf("%s\n", line.c_str());
  std::fflush(stdout);
  std::_Exit(0);
}

int bareWindow(int argc, char** argv) {
  QApplication app(argc, argv);
  FirstPaint painted([] { printAndLeave("painted " + std::to_string(nowNanoseconds())); });
  app.installEventFilter(&painted);
  QWidget window;
  window.setFixedSize(600, 325);
  window.setWindowTitle(QStringLiteral("Corvalta"));
  window.show();
  return QApplication::exec();
}

int gameStartup(int argc, char** argv) {
  return corvalta::app::runDesktop(argc, argv, [](platform::Application&) {
    static FirstPaint painted([] { printAndLeave("painted " + std::to_string(nowNanoseconds())); });
    qApp->installEventFilter(&painted);
  });
}

int gameIdle(int argc, char** argv) {
  return corvalta::app::runDesktop(argc, argv, [](platform::Application&) {
    static FirstPaint painted([] {
      const double before = cpuMilliseconds();
      QTimer::singleShot(10000, [before] {
        printAndLeave("idle-cpu-ms " + std::to_string(cpuMilliseconds() - before));
      });
    });
    qApp->installEventFilter(&painted);
  });
}

// Passes everything to the view and notes the moments the bench waits for.
class Watcher final : public platform::ViewObserver {
 public:
  Watcher(platform::Application& app, platform::ViewObserver& view) : app_(app), view_(view) {}

  void start() {
    started_ = Clock::now();
    cpuAtStart_ = cpuMilliseconds();
    platform::pressControl(app_, "Window1", "Start");
  }

  void windowCreated(platform::Window& w) override { view_.windowCreated(w); }
  void windowShown(platform::Window& w, bool modal) override {
    view_.windowShown(w, modal);
    if (w.className() == "Congratulations") {
      QTimer::singleShot(200, [this] {
        platform::typeText(app_, "Congratulations", "NameField", "Bench");
        platform::pressControl(app_, "Congratulations", "Enter");
        // The applause plays on; then the game is quit as a player would.
        QTimer::singleShot(3000, [this] { platform::chooseMenuItem(app_, "FileQuit"); });
      });
    }
  }
  void windowHidden(platform::Window& w) override { view_.windowHidden(w); }
  void windowClosing(platform::Window& w) override { view_.windowClosing(w); }
  void propertyChanged(platform::PaneChild& child, std::string_view property) override {
    view_.propertyChanged(child, property);
    const auto* visible = child.property(platform::property::Visible);
    if (child.key() == "Banner" && property == platform::property::Visible && visible != nullptr &&
        std::get<bool>(*visible) && started_ != Clock::time_point{}) {
      std::printf("game-ms %.1f\ngame-cpu-ms %.1f\n", milliseconds(Clock::now() - started_),
                  cpuMilliseconds() - cpuAtStart_);
      std::fflush(stdout);
    }
  }
  void windowPropertyChanged(platform::Window& w, std::string_view p) override { view_.windowPropertyChanged(w, p); }
  void rowsChanged(platform::Listbox& list) override { view_.rowsChanged(list); }
  void focusChanged(platform::Window& w) override { view_.focusChanged(w); }
  void refreshRequested(platform::PaneChild& child) override { view_.refreshRequested(child); }
  void quitRequested(int exitCode) override { view_.quitRequested(exitCode); }

 private:
  platform::Application& app_;
  platform::ViewObserver& view_;
  Clock::time_point started_{};
  double cpuAtStart_ = 0;
};

// Answers the problem on the screen right, as a quick player would every 1.5 s.
void answer(platform::Application& app) {
  auto* window = app.liveWindow("Window1");
  if (window == nullptr || !window->control<platform::EditField>("Answer").Enabled()) {
    return;
  }
  const auto right = std::to_string(static_cast<long long>(corvalta::core::Module1.MyAnswer));
  platform::typeText(app, "Window1", "Answer", right);
  platform::pressReturn(app, "Window1");
}

int wholeGame(int argc, char** argv) {
  return corvalta::app::runDesktop(argc, argv, [](platform::Application& app) {
    static Watcher watcher(app, app.observer());
    app.setObserver(&watcher);
    QTimer::singleShot(500, [] { watcher.start(); });
    static QTimer player;
    QObject::connect(&player, &QTimer::timeout, [&app] { answer(app); });
    player.start(1500);
  });
}

using corvalta::testing::ChildRun;

ChildRun run(const std::string& self, const std::string& mode) {
  return corvalta::testing::runChild({self, "--child", mode});
}

// The number the child printed after `key` on a line of its own.
double value(const ChildRun& child, const std::string& key) {
  for (std::size_t start = 0, end; (end = child.output.find('\n', start)) != std::string::npos;
       start = end + 1) {
    if (child.output.compare(start, key.size() + 1, key + " ") == 0) {
      return std::stod(child.output.substr(start + key.size() + 1, end - start - key.size() - 1));
    }
  }
  std::fprintf(stderr, "the child printed no %s\n", key.c_str());
  std::exit(1);
}

struct Startup {
  double bare;
  double game;
  long barePeakKilobytes;
  long gamePeakKilobytes;
  double bareCpu;
  double gameCpu;
};

template <typename T>
T median(std::vector<T> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

// The two programs take turns, so that neither profits from a warmer machine.
Startup medianStartup(const std::string& self, int runs) {
  std::vector<double> bare;
  std::vector<double> game;
  std::vector<long> barePeak;
  std::vector<long> gamePeak;
  std::vector<double> bareCpu;
  std::vector<double> gameCpu;
  const auto paintTime = [](const ChildRun& child) {
    return (value(child, "painted") - double(nanoseconds(child.started))) / 1e6;
  };
  for (int k = 0; k < runs; ++k) {
    const ChildRun plain = run(self, "bare");
    bare.push_back(paintTime(plain));
    barePeak.push_back(plain.peakKilobytes);
    bareCpu.push_back(plain.cpuMilliseconds);
    const ChildRun started = run(self, "startup");
    game.push_back(paintTime(started));
    gamePeak.push_back(started.peakKilobytes);
    gameCpu.push_back(started.cpuMilliseconds);
  }
  return {median(bare), median(game), median(barePeak), median(gamePeak), median(bareCpu), median(gameCpu)};
}

// A private X server when there is no display: -noreset spares each client a reconnection.
void ensureDisplay() {
  if (std::getenv("DISPLAY") != nullptr && std::getenv("QT_QPA_PLATFORM") == nullptr) return;
  int pipeEnds[2];
  if (pipe(pipeEnds) != 0) std::exit(1);
  const std::string fd = std::to_string(pipeEnds[1]);
  std::vector<char*> arguments = {const_cast<char*>("Xvfb"), const_cast<char*>("-displayfd"),
                                  const_cast<char*>(fd.c_str()), const_cast<char*>("-noreset"),
                                  const_cast<char*>("-nolisten"), const_cast<char*>("tcp"), nullptr};
  pid_t pid = 0;
  if (posix_spawnp(&pid, "Xvfb", nullptr, nullptr, arguments.data(), environ) != 0) {
    std::fprintf(stderr, "no DISPLAY and no Xvfb\n");
    std::exit(1);
  }
  close(pipeEnds[1]);
  char number[16] = {};
  if (read(pipeEnds[0], number, sizeof number - 1) <= 0) std::exit(1);
  close(pipeEnds[0]);
  setenv("DISPLAY", (":" + std::string(number, std::strcspn(number, "\n"))).c_str(), 1);
  unsetenv("QT_QPA_PLATFORM");
  static pid_t server = pid;
  std::atexit([] { kill(server, SIGTERM); waitpid(server, nullptr, 0); });
}

}  // namespace

int main(int argc, char** argv) {
  if (argc == 3 && std::string(argv[1]) == "--child") {
    const std::string mode = argv[2];
    int qtArgc = 1;
    if (mode == "bare") return bareWindow(qtArgc, argv);
    if (mode == "startup") return gameStartup(qtArgc, argv);
    if (mode == "idle") return gameIdle(qtArgc, argv);
    if (mode == "game") return wholeGame(qtArgc, argv);
    return 2;
  }
  ensureDisplay();
  const auto folder = std::filesystem::temp_directory_path() / ("corvalta-bench-" + std::to_string(getpid()));
  std::filesystem::create_directories(folder);
  setenv("XDG_CONFIG_HOME", folder.c_str(), 1);
  const std::string self = std::filesystem::canonical("/proc/self/exe");

  const Startup startup = medianStartup(self, 7);
  std::printf("start-up to first paint (median of 7): game %.1f ms, bare Qt window %.1f ms, "
              "ratio %.2f (goal <= 1.30)\n",
              startup.game, startup.bare, startup.game / startup.bare);
  std::printf("CPU time and peak resident memory up to the first paint (medians of 7): game %.1f ms, %.1f MiB; "
              "bare Qt window %.1f ms, %.1f MiB\n",
              startup.gameCpu, double(startup.gamePeakKilobytes) / 1024.0, startup.bareCpu,
              double(startup.barePeakKilobytes) / 1024.0);
  std::fflush(stdout);
  if (argc == 2 && std::string(argv[1]) == "--startup") {
    std::filesystem::remove_all(folder);
    return 0;
  }
  const ChildRun idle = run(self, "idle");
  std::printf("CPU while idle for 10 s: %.1f ms (goal < 10 ms)\n", value(idle, "idle-cpu-ms"));
  std::fflush(stdout);
  const ChildRun whole = run(self, "game");
  std::printf("whole game with sound on: length %.1f ms from Start to Game Over (goal 90000 +- 50), "
              "CPU %.1f ms (goal < 1000 ms)\n",
              value(whole, "game-ms"), value(whole, "game-cpu-ms"));
  std::printf("peak resident memory over a whole game: %.1f MiB (goal <= 35 MiB); "
              "a bare Qt window: %.1f MiB\n",
              double(whole.peakKilobytes) / 1024.0, double(startup.barePeakKilobytes) / 1024.0);
  std::filesystem::remove_all(folder);
  return 0;
}
