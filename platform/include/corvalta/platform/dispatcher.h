#pragma once

#include <corvalta/platform/event_loop.h>

#include <deque>
#include <exception>
#include <functional>
#include <string>
#include <vector>

namespace corvalta::platform {

// Where input and timer ticks enter, so that handlers never nest. An event is delivered at
// once when no handler runs, or when the innermost wait is a modal one (a modal window or
// dialog) and no handler runs inside it; otherwise it is held, in order of arrival, and
// delivered as soon as that holds again: right after the outermost handler returns, or, inside
// a modal wait, right after the handler that held it returns. While a modal window is up, input to any other window is
// refused, and while a modal dialog is up input to every window is.
//
// Every handler that runs here runs under one catch: an exception that escapes it goes to
// the reporter and no further.
class Dispatcher {
 public:
  using Reporter = std::function<void(std::exception_ptr)>;
  enum class Delivery { Delivered, Held, Refused };

  explicit Dispatcher(EventLoop& loop);

  // The default reporter writes the exception's text to standard error.
  void setReporter(Reporter reporter);

  // The user's input to the window of class `windowClass`, or with "" to the application
  // (a menu command), which any modal window or dialog refuses.
  Delivery input(std::string windowClass, std::function<void()> action);
  // An event that isn't the user's, such as a timer tick: never refused.
  Delivery event(std::function<void()> action);
  // Runs `action` as a handler at once, whatever runs: start-up and the Open events.
  void call(const std::function<void()>& action);

  // Waits in the event loop. With options.deliverInput False (a sound) everything that
  // arrives is held; with True (a modal window named by `modalWindow`, or a dialog when it is
  // empty) events are delivered, nested.
  bool waitUntil(const std::function<bool()>& done, EventLoop::WaitOptions options,
                 const std::string& modalWindow = {});
  // Runs a dialog that has a loop of its own as a modal wait.
  void runModal(const std::function<void()>& dialog);

  // No handler runs and nothing waits.
  [[nodiscard]] bool idle() const { return depth_ == 0 && waits_.empty(); }
  [[nodiscard]] std::size_t heldCount() const { return held_.size(); }
  // Called each time the dispatcher becomes idle, after the held events have run.
  void setIdleCallback(std::function<void()> callback);

 private:
  struct Pending {
    bool isInput;
    std::string windowClass;
    std::function<void()> action;
  };
  struct Wait {
    bool deliverInput;
    std::string modalWindow;
    // How many handlers ran when the wait began: the modal wait delivers at this depth only.
    int depth;
  };

  Delivery arrive(Pending pending);
  void within(Wait wait, const std::function<void()>& body);
  [[nodiscard]] bool deliversNow() const;
  [[nodiscard]] bool refuses(const Pending& pending) const;
  void deliver(const std::function<void()>& action);
  void drainHeld();

  EventLoop& loop_;
  Reporter reporter_;
  std::function<void()> idleCallback_;
  std::deque<Pending> held_;
  std::vector<Wait> waits_;
  int depth_ = 0;
  bool draining_ = false;
};

}  // namespace corvalta::platform
