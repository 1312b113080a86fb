#pragma once

#include <corvalta/platform/event_loop.h>

#include <cstdint>
#include <functional>

namespace corvalta::platform {

// Time and one-shot calls on the event loop's clock: the wall clock on the desktop, the
// virtual clock in the headless view. Timers are built on it.
class ClockService {
 public:
  using TimePoint = EventLoop::Clock::time_point;
  using CallId = std::uint64_t;

  virtual ~ClockService() = default;

  [[nodiscard]] virtual TimePoint now() const = 0;

  // Calls `callback` from the event loop once `at` has come (at once if it has passed).
  // Calls due at the same moment run in the order they were asked for.
  virtual CallId callAt(TimePoint at, std::function<void()> callback) = 0;

  // Drops a call that has not run yet; an unknown or finished id is ignored.
  virtual void cancel(CallId id) = 0;
};

}  // namespace corvalta::platform
