#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>

namespace corvalta::platform {

// The program's one event loop, as seen by code that has to wait for something (a sound to
// end, a modal window, a page) without blocking the loop and without spinning: a wait sleeps
// in the loop until an event arrives or its deadline passes, then looks at its condition.
class EventLoop {
 public:
  using Clock = std::chrono::steady_clock;

  struct WaitOptions {
    // False while a handler waits for something of its own (a sound): input to the windows
    // stays queued until the wait is over. True for modal windows and dialogs.
    bool deliverInput = true;
    // The wait ends at this moment even if the condition never holds.
    std::optional<Clock::time_point> deadline;
  };

  virtual ~EventLoop() = default;

  // Runs the loop, nested, until `done` returns true or the deadline passes; returns the last
  // value of `done`. `done` is looked at when the wait starts, after every wake(), and at the
  // deadline, so whatever makes it true must call wake().
  virtual bool waitUntil(const std::function<bool()>& done, WaitOptions options) = 0;

  // Makes every running wait look at its condition again.
  virtual void wake() = 0;

  // Monotonic time as the loop sees it: the wall clock on the desktop, a virtual clock in the
  // headless view.
  [[nodiscard]] virtual Clock::time_point now() const = 0;
};

}  // namespace corvalta::platform
