#include <corvalta/platform/qt/qt_event_loop.h>

#include <QEventLoop>
#include <QTimer>

#include <algorithm>

namespace corvalta::platform::qt {

bool QtEventLoop::waitUntil(const std::function<bool()>& done, WaitOptions options) {
  const auto flags = options.deliverInput ? QEventLoop::AllEvents
                                          : QEventLoop::ExcludeUserInputEvents;
  QEventLoop loop;
  QTimer deadline;
  deadline.setSingleShot(true);
  deadline.setTimerType(Qt::PreciseTimer);
  QObject::connect(&deadline, &QTimer::timeout, &loop, &QEventLoop::quit);

  running_.push_back(&loop);
  bool finished = done();
  while (!finished) {
    if (options.deadline) {
      const auto left = *options.deadline - now();
      if (left <= Clock::duration::zero()) {
        break;
      }
      // Round up: a timer that fires a little early would only make us sleep again.
      deadline.start(std::chrono::ceil<std::chrono::milliseconds>(left));
    }
    loop.exec(flags);
    finished = done();
  }
  running_.erase(std::find(running_.begin(), running_.end(), &loop));
  return finished;
}

void QtEventLoop::wake() {
  for (QEventLoop* loop : running_) {
    loop->quit();
  }
}

EventLoop::Clock::time_point QtEventLoop::now() const { return Clock::now(); }

}  // namespace corvalta::platform::qt
