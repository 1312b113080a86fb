#include "update_check_harness.h"

#include <corvalta/platform/controls.h>
#include <corvalta/platform/headless/real_time_tcp_socket.h>
#include <corvalta/platform/qt/qt_tcp_socket.h>
#include <corvalta/platform/user_input.h>
#include <corvalta/shell/info_windows.h>
#include <corvalta/shell/menus.h>
#include <corvalta/shell/window_descriptions.h>
#include <corvalta/update/update_check.h>

#include <QCoreApplication>
#include <QElapsedTimer>

#include <gtest/gtest.h>

namespace corvalta::update::testing {
namespace {

using namespace std::chrono_literals;

}  // namespace

void Journal::refreshRequested(platform::PaneChild& child) {
  if (auto* label = dynamic_cast<platform::StaticText*>(&child)) {
    add("refresh " + label->key() + ": " + label->Text());
  }
}

class UpdateCheckHarness::Sounds : public platform::SoundSystem {
 public:
  Sounds(platform::SoundSystem& inner, Journal& journal) : inner_(inner), journal_(journal) {}
  std::shared_ptr<platform::Sound> GetSound(std::int32_t number) override {
    return inner_.GetSound(number);
  }
  void Beep() override {
    journal_.add("beep");
    inner_.Beep();
  }

 private:
  platform::SoundSystem& inner_;
  Journal& journal_;
};

class UpdateCheckHarness::Dialogs : public platform::Dialogs {
 public:
  Dialogs(UpdateCheckHarness& harness, platform::Dialogs& inner)
      : harness_(harness), inner_(inner) {}

  platform::MsgBoxResult showMsgBox(const std::string& text, const platform::MsgBoxStyle& style,
                                    const std::string& title) override {
    harness_.journal_.updateWindowAtDialogs.push_back(harness_.describeUpdateWindow());
    harness_.journal_.add("box: " + text);
    return inner_.showMsgBox(text, style, title);
  }

  platform::MessageDialogChoice showMessageDialog(const platform::MessageDialog& dialog) override {
    harness_.journal_.updateWindowAtDialogs.push_back(harness_.describeUpdateWindow());
    const auto choice = inner_.showMessageDialog(dialog);
    const char* pressed = choice == platform::MessageDialogChoice::Action      ? "Action"
                          : choice == platform::MessageDialogChoice::Alternate ? "Alternate"
                                                                               : "Cancel";
    harness_.journal_.add("prompt: " + dialog.Title + " | " + dialog.Message + " | " +
                          dialog.Explanation + " -> " + pressed);
    return choice;
  }

 private:
  UpdateCheckHarness& harness_;
  platform::Dialogs& inner_;
};

class UpdateCheckHarness::Browser : public platform::UrlOpener {
 public:
  explicit Browser(Journal& journal) : journal_(journal) {}
  void open(const std::string& url) override { journal_.add("browser: " + url); }

 private:
  Journal& journal_;
};

UpdateCheckHarness::UpdateCheckHarness(std::string manifestURL)
    : services_(1),
      sounds_(std::make_unique<Sounds>(services_.sounds, journal_)),
      dialogs_(std::make_unique<Dialogs>(*this, services_.dialogs)),
      browser_(std::make_unique<Browser>(journal_)),
      app_({services_.loop, services_.loop, *sounds_, *dialogs_, *browser_, {}}) {
  app_.setObserver(&journal_);
  app_.dispatcher().setReporter([](std::exception_ptr error) {
    try {
      std::rethrow_exception(error);
    } catch (const std::exception& e) {
      ADD_FAILURE() << "a handler threw: " << e.what();
    }
  });
  // As the program does: the menu commands, the shell's windows with selfTest, updateWindow.
  shell::addMenuHandlers(app_);
  shell::registerInfoWindows(app_);
  auto& loop = services_.loop;
  registerUpdateWindow(app_, {shell::windowDescription("updateWindow"),
                              [&loop] {
                                return std::make_unique<platform::headless::RealTimeTcpSocket>(
                                    std::make_unique<platform::qt::QtTcpSocket>(), loop);
                              },
                              std::move(manifestURL)});
  services_.loop.setInputSource([this] {
    if (pending_.empty()) return false;
    const Step step = std::move(pending_.front());
    pending_.erase(pending_.begin());
    step();
    return true;
  });
}

UpdateCheckHarness::~UpdateCheckHarness() { app_.setObserver(nullptr); }

void UpdateCheckHarness::runWhileUp(const std::function<void()>& action, std::vector<Step> steps) {
  pending_ = std::move(steps);
  action();
  EXPECT_TRUE(pending_.empty()) << pending_.size() << " steps never ran: the window went first";
  pending_.clear();
}

void UpdateCheckHarness::checkForUpdates(std::vector<Step> whileUp) {
  chooseCheckNow();
  runWhileUp([this] { press("selfTest", "PushButton1"); }, std::move(whileUp));
}

void UpdateCheckHarness::automaticCheck() {
  runWhileUp(
      [this] {
        app_.dispatcher().call([] {
          auto& window = updateWindow::instance();
          window.automaticCheck = true;
          window.ShowModal();
        });
      },
      {awaitCheck()});
}

UpdateCheckHarness::Step UpdateCheckHarness::awaitReal(std::function<bool()> done) {
  return [this, done = std::move(done)] {
    // Virtual time follows the wall clock while a connection is under way.
    const auto patience = services_.loop.now() + 30s;
    while (!done()) {
      if (services_.loop.now() >= patience) {
        ADD_FAILURE() << "waited 30 s in vain; updateWindow: " << describeUpdateWindow();
        return;
      }
      // Sleeps until the network wakes the loop; the deadline bounds each round for conditions
      // that another thread (a scripted server) makes true.
      services_.loop.waitUntil(done, {.deliverInput = false, .deadline = services_.loop.now() + 20ms});
    }
  };
}

UpdateCheckHarness::Step UpdateCheckHarness::awaitCheck() {
  return awaitReal([this] {
    auto* window = app_.liveWindow("updateWindow");
    return window == nullptr || !window->control<platform::ProgressBar>("ProgressBar1").Visible();
  });
}

void UpdateCheckHarness::chooseCheckNow() {
  EXPECT_EQ(platform::chooseMenuItem(app_, "CheckForUpdateCheckNow"),
            platform::Dispatcher::Delivery::Delivered);
}

void UpdateCheckHarness::press(const std::string& window, const std::string& control) {
  EXPECT_EQ(platform::pressControl(app_, window, control), platform::Dispatcher::Delivery::Delivered)
      << window << "." << control;
}

void UpdateCheckHarness::closeBox(const std::string& window) {
  EXPECT_EQ(platform::closeWindow(app_, window), platform::Dispatcher::Delivery::Delivered) << window;
}

std::string UpdateCheckHarness::describeUpdateWindow() const {
  auto* window = app_.liveWindow("updateWindow");
  if (window == nullptr) return "no updateWindow";
  const auto& bar = window->control<platform::ProgressBar>("ProgressBar1");
  return "label '" + window->control<platform::StaticText>("StaticText1").Text() + "', bar " +
         (bar.Visible() ? "shown" : "hidden") + " (Maximum " + std::to_string(bar.Maximum()) +
         "), button '" + window->control<platform::PushButton>("PushButton1").Caption() + "'";
}

std::vector<std::string> UpdateCheckHarness::liveWindows() const {
  std::vector<std::string> names;
  for (const platform::Window* window : app_.windows()) names.push_back(window->className());
  return names;
}

void UpdateCheckHarness::settle(std::chrono::milliseconds span) {
  QElapsedTimer real;
  real.start();
  while (real.elapsed() < span.count()) {
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents,
                                    static_cast<int>(span.count() - real.elapsed()));
  }
}

}  // namespace corvalta::update::testing
