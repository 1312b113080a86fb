#pragma once

#include <corvalta/platform/application.h>
#include <corvalta/platform/headless/headless_services.h>
#include <corvalta/update/update_window.h>

#include <chrono>
#include <functional>
#include <string>
#include <vector>

namespace corvalta::update::testing {

// Everything the user sees and hears of a check, in order: windows closing, beeps, boxes,
// prompts, addresses handed to the browser, labels redrawn. The state of updateWindow as each
// dialog came up is kept beside it.
class Journal : public platform::ViewObserver {
 public:
  void add(std::string entry) { entries.push_back(std::move(entry)); }
  void windowClosing(platform::Window& window) override { add("close " + window.className()); }
  void refreshRequested(platform::PaneChild& child) override;

  std::vector<std::string> entries;
  std::vector<std::string> updateWindowAtDialogs;
};

// The update check on the headless view with real sockets: the application with the
// program's menu commands, selfTest and updateWindow, fetching from `manifestURL`, and
// services that write to the journal.
// Dialogs take their answers from answer(); one that finds none takes its default button.
class UpdateCheckHarness {
 public:
  explicit UpdateCheckHarness(std::string manifestURL);
  ~UpdateCheckHarness();
  UpdateCheckHarness(const UpdateCheckHarness&) = delete;
  UpdateCheckHarness& operator=(const UpdateCheckHarness&) = delete;

  using Step = std::function<void()>;

  // The user's road: "Check Now", then "Check for Updates". While updateWindow is up the steps
  // run in turn, as the user would act on it; the call returns when the button's handler has.
  void checkForUpdates(std::vector<Step> whileUp);
  void checkForUpdates() { checkForUpdates({awaitCheck()}); }
  // The same check without selfTest, with automaticCheck set before the page can come.
  void automaticCheck();

  // A step: waits until the check has heard from the server (updateWindow has closed or hidden
  // its bar). A check that hears nothing for 30 seconds fails the test.
  Step awaitCheck();
  // A step: waits until `done` holds, failing the test after 30 seconds.
  Step awaitReal(std::function<bool()> done);

  void answer(std::string button) { services_.dialogs.queueAnswer(std::move(button)); }
  void chooseCheckNow();
  void press(const std::string& window, const std::string& control);
  void closeBox(const std::string& window);

  // "label '...', bar shown|hidden (Maximum N), button '...'" or "no updateWindow".
  [[nodiscard]] std::string describeUpdateWindow() const;
  [[nodiscard]] std::vector<std::string> liveWindows() const;
  [[nodiscard]] platform::Application& app() { return app_; }
  [[nodiscard]] platform::headless::HeadlessEventLoop& loop() { return services_.loop; }
  [[nodiscard]] const std::vector<std::string>& journal() const { return journal_.entries; }
  [[nodiscard]] const std::vector<std::string>& updateWindowAtDialogs() const {
    return journal_.updateWindowAtDialogs;
  }
  // Runs the loop for a while of real time, so that late network events would have come.
  void settle(std::chrono::milliseconds span);

 private:
  class Sounds;
  class Dialogs;
  class Browser;
  void runWhileUp(const std::function<void()>& action, std::vector<Step> steps);

  platform::headless::HeadlessServices services_;
  Journal journal_;
  std::unique_ptr<Sounds> sounds_;
  std::unique_ptr<Dialogs> dialogs_;
  std::unique_ptr<Browser> browser_;
  platform::Application app_;
  std::vector<Step> pending_;
};

}  // namespace corvalta::update::testing
