#include <corvalta/platform/application.h>
#include <corvalta/platform/controls.h>
#include <corvalta/platform/headless/headless_services.h>
#include <corvalta/platform/timer.h>
#include <corvalta/platform/user_input.h>

#include <gtest/gtest.h>

#include <deque>
#include <string>
#include <vector>

namespace corvalta::platform {
namespace {

using namespace std::chrono_literals;
using headless::HeadlessServices;

constexpr std::int32_t kSound = 7;

// A window of plain controls; the tests install the handlers they need.
class PlainWindow : public Window {
 public:
  explicit PlainWindow(const WindowPlan& plan) : Window(plan.className) { build(plan); }
};

ControlPlan plain(const char* name, const char* className) {
  return {name, className, {{"Name", std::string(name)}}, {}};
}

WindowPlan mainPlan() {
  return {"Main", {{"Visible", true}},
          {plain("Go", "PushButton"), plain("Ok", "PushButton"),
           {"Ticker", "Timer", {{"Mode", 0}, {"Period", 1000}}, {}}}};
}

WindowPlan dialogPlan() {
  return {"Dialog", {{"Visible", false}},
          {plain("NameField", "EditField"), plain("Play", "PushButton"), plain("Done", "PushButton")}};
}

class EventPolicyTest : public ::testing::Test {
 protected:
  EventPolicyTest() {
    app.registerWindowClass("Main", [] { return std::make_unique<PlainWindow>(mainPlan()); });
    app.registerWindowClass("Dialog", [] { return std::make_unique<PlainWindow>(dialogPlan()); });
    main = &app.implicitInstance("Main");
    main->control<Timer>("Ticker").installHandler("Action", [this] { note("tick"); });
    main->control<PushButton>("Ok").installHandler("Action", [this] { note("ok"); });
  }

  void note(const std::string& what) {
    log.push_back(what + "@" + std::to_string(services.loop.elapsed().count()));
  }

  HeadlessServices services{1, {{kSound, 2300ms}}};
  Application app{services.services()};
  std::shared_ptr<Sound> sound = services.sounds.GetSound(kSound);
  Window* main = nullptr;
  std::vector<std::string> log;
};

// The same window, played with the timer restarted inside the waiting handler (true) or not.
class HeldEvents : public EventPolicyTest, public ::testing::WithParamInterface<bool> {};

// Ticks and clicks that fall due while a handler waits for a sound are held, in order, and
// delivered right after it returns, the ticks on their one-second grid from the start; a held
// tick is dropped when the handler turns its timer off and on again, and the new run starts a
// grid of its own.
TEST_P(HeldEvents, WaitForSoundHoldsTicksAndInputUntilTheHandlerReturns) {
  const bool restart = GetParam();
  auto& ticker = main->control<Timer>("Ticker");
  main->control<PushButton>("Go").installHandler("Action", [&] {
    note("go");
    playAndWait([this] { return sound; });
    if (restart) {
      ticker.setMode(0);
      ticker.setMode(2);
    }
    note("go-end");
  });
  services.loop.callAt(headless::HeadlessEventLoop::start() + 2500ms, [this] {
    EXPECT_EQ(pressControl(app, "Main", "Ok"), Dispatcher::Delivery::Held);
  });
  ticker.setMode(2);
  services.loop.advanceBy(500ms);
  EXPECT_EQ(pressControl(app, "Main", "Go"), Dispatcher::Delivery::Delivered);
  EXPECT_TRUE(app.dispatcher().idle());
  services.loop.advanceTo(headless::HeadlessEventLoop::start() + 4000ms);
  EXPECT_EQ(log, restart ? (std::vector<std::string>{"go@500", "go-end@2800", "ok@2800", "tick@3800"})
                         : (std::vector<std::string>{"go@500", "go-end@2800", "tick@2800", "tick@2800", "ok@2800",
                                                     "tick@3000", "tick@4000"}));
}
INSTANTIATE_TEST_SUITE_P(TimerRestartedInTheHandler, HeldEvents, ::testing::Bool());

// A modal window takes the input meant for it, refuses input for other windows and lets ticks
// through. A sound played inside it (the time-out's chime while the update window is up) holds
// events only while it plays: they come when the handler that waited returns, with the window
// still up, and held input for other windows is refused then. ShowModal returns when the
// window is hidden.
TEST_F(EventPolicyTest, ModalWindowGetsInputAndASoundInsideHoldsEventsOnlyWhileItPlays) {
  std::deque<std::function<void()>> user = {
      [&] { services.loop.advanceBy(1000ms); },
      [&] { EXPECT_EQ(pressControl(app, "Main", "Ok"), Dispatcher::Delivery::Refused); },
      [&] { EXPECT_EQ(typeText(app, "Dialog", "NameField", "Bo"), Dispatcher::Delivery::Delivered); },
      [&] { EXPECT_EQ(pressControl(app, "Dialog", "Play"), Dispatcher::Delivery::Delivered); },
      [&] { EXPECT_EQ(pressControl(app, "Dialog", "Done"), Dispatcher::Delivery::Delivered); },
  };
  // One step each time a modal wait looks for input.
  services.loop.setInputSource([&user] {
    if (user.empty()) return false;
    auto next = std::move(user.front());
    user.pop_front();
    next();
    return true;
  });
  main->control<PushButton>("Go").installHandler("Action", [this] {
    note("go");
    Window& dialog = app.implicitInstance("Dialog");
    dialog.control<PushButton>("Play").installHandler("Action", [this] {
      note("play");
      playAndWait([this] { return sound; });
    });
    dialog.control<PushButton>("Done").installHandler("Action", [this, &dialog] {
      note("done:" + dialog.control<EditField>("NameField").Text());
      dialog.Hide();
    });
    dialog.ShowModal();
    note("modal-returned");
  });
  services.loop.callAt(headless::HeadlessEventLoop::start() + 2500ms, [this] {
    EXPECT_EQ(pressControl(app, "Main", "Ok"), Dispatcher::Delivery::Held);
  });
  main->control<Timer>("Ticker").setMode(2);
  pressControl(app, "Main", "Go");
  EXPECT_EQ(log, (std::vector<std::string>{"go@0", "tick@1000", "play@1000", "tick@3300", "tick@3300",
                                           "done:Bo@3300", "modal-returned@3300"}));
  EXPECT_TRUE(user.empty());
  EXPECT_NE(app.liveWindow("Dialog"), nullptr);
}

// With no scripted answer that fits, a message box gives its default button, decoded from the
// code as the framework numbers buttons and defaults.
TEST_F(EventPolicyTest, MessageBoxesFallBackToTheirDefault) {
  services.dialogs.queueAnswer("Retry");  // not a button of this box
  EXPECT_EQ(MsgBox("Sure?", 305, ""), kMsgBoxCancel);
  const auto style = decodeMsgBoxButtons(305);
  EXPECT_EQ(style.buttons, (std::vector<MsgBoxResult>{kMsgBoxOK, kMsgBoxCancel}));
  EXPECT_EQ(style.icon, MsgBoxIcon::Caution);
  EXPECT_EQ(style.defaultButton, 1u);
}

}  // namespace
}  // namespace corvalta::platform
