#pragma once

#include <corvalta/platform/event_loop.h>

#include <vector>

class QEventLoop;

namespace corvalta::platform::qt {

// EventLoop over Qt's loop: a wait runs a nested QEventLoop that sleeps until an event arrives
// for someone, wake() is called or the deadline timer fires. Needs a QCoreApplication.
class QtEventLoop final : public EventLoop {
 public:
  bool waitUntil(const std::function<bool()>& done, WaitOptions options) override;
  void wake() override;
  [[nodiscard]] Clock::time_point now() const override;

 private:
  // The nested loops now running, innermost last. wake() stops them all: each looks at its own
  // condition and runs again if it doesn't hold yet.
  std::vector<QEventLoop*> running_;
};

}  // namespace corvalta::platform::qt
