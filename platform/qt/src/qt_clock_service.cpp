#include <corvalta/platform/qt/qt_clock_service.h>

#include <QTimer>

namespace corvalta::platform::qt {

QtClockService::QtClockService() : timer_(std::make_unique<QTimer>()) {
  timer_->setSingleShot(true);
  timer_->setTimerType(Qt::PreciseTimer);
  timer_->callOnTimeout([this] { runDue(); });
}

QtClockService::~QtClockService() = default;

ClockService::TimePoint QtClockService::now() const { return EventLoop::Clock::now(); }

ClockService::CallId QtClockService::callAt(TimePoint at, std::function<void()> callback) {
  const CallId id = next_++;
  queue_.emplace(Key{at, id}, std::move(callback));
  times_.emplace(id, at);
  arm();
  return id;
}

void QtClockService::cancel(CallId id) {
  const auto found = times_.find(id);
  if (found == times_.end()) {
    return;
  }
  queue_.erase(Key{found->second, id});
  times_.erase(found);
  arm();
}

// A call may run a nested loop (a handler that waits for a sound) in which later calls fall
// due: the timer is set for the next call before each call runs.
void QtClockService::runDue() {
  while (!queue_.empty() && queue_.begin()->first.first <= now()) {
    auto due = queue_.extract(queue_.begin());
    times_.erase(due.key().second);
    arm();
    due.mapped()();
  }
  arm();
}

void QtClockService::arm() {
  if (queue_.empty()) {
    timer_->stop();
    return;
  }
  // Round up: a call must never run before its time.
  const auto wait = std::chrono::ceil<std::chrono::milliseconds>(queue_.begin()->first.first - now());
  timer_->start(std::max(wait, std::chrono::milliseconds::zero()));
}

}  // namespace corvalta::platform::qt
