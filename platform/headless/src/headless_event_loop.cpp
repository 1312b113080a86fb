#include <corvalta/platform/headless/headless_event_loop.h>

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>

#include <algorithm>

namespace corvalta::platform::headless {
namespace {

int argc = 1;
char name[] = "corvalta-headless";
char* argv[] = {name, nullptr};

}  // namespace

HeadlessEventLoop::HeadlessEventLoop() {
  if (QCoreApplication::instance() == nullptr) {
    ownApplication_ = std::make_unique<QCoreApplication>(argc, argv);
  }
}

HeadlessEventLoop::~HeadlessEventLoop() = default;

bool HeadlessEventLoop::waitUntil(const std::function<bool()>& done, WaitOptions options) {
  for (;;) {
    QCoreApplication::processEvents(QEventLoop::AllEvents);
    if (done()) return true;
    if (options.deadline && now_ >= *options.deadline) return false;
    if (options.deliverInput && inputSource_ && inputSource_()) continue;
    if (realTimeHolds_ > 0) {
      waitForRealEvents(options.deadline);
      continue;
    }
    const auto due = nextDue();
    if (due && (!options.deadline || *due <= *options.deadline)) {
      runNextDueUpTo(*due);
    } else if (options.deadline) {
      now_ = *options.deadline;
    } else {
      return done();
    }
  }
}

void HeadlessEventLoop::wake() {
  if (auto* dispatcher = QAbstractEventDispatcher::instance()) dispatcher->wakeUp();
}

ClockService::CallId HeadlessEventLoop::callAt(TimePoint at, std::function<void()> callback) {
  const CallId id = nextId_++;
  calls_.emplace(std::make_pair(std::max(at, now_), id), std::move(callback));
  return id;
}

void HeadlessEventLoop::cancel(CallId id) {
  const auto found = std::find_if(calls_.begin(), calls_.end(),
                                  [id](const auto& call) { return call.first.second == id; });
  if (found != calls_.end()) calls_.erase(found);
}

std::chrono::milliseconds HeadlessEventLoop::elapsed() const {
  return std::chrono::duration_cast<std::chrono::milliseconds>(now_ - start());
}

void HeadlessEventLoop::advanceTo(TimePoint until) {
  QCoreApplication::processEvents(QEventLoop::AllEvents);
  while (runNextDueUpTo(until)) QCoreApplication::processEvents(QEventLoop::AllEvents);
  now_ = std::max(now_, until);
}

std::optional<ClockService::TimePoint> HeadlessEventLoop::nextDue() const {
  if (calls_.empty()) return std::nullopt;
  return calls_.begin()->first.first;
}

bool HeadlessEventLoop::runNextDueUpTo(TimePoint limit) {
  if (calls_.empty() || calls_.begin()->first.first > limit) return false;
  const auto first = calls_.begin();
  const TimePoint at = first->first.first;
  const std::function<void()> callback = std::move(first->second);
  calls_.erase(first);
  if (at > now_) now_ = at;
  callback();
  return true;
}

void HeadlessEventLoop::waitForRealEvents(std::optional<TimePoint> until) {
  const auto due = nextDue();
  std::optional<TimePoint> limit = until;
  if (due && (!limit || *due < *limit)) limit = due;
  QElapsedTimer real;
  real.start();
  // processEvents with a time limit never blocks, so the deadline is a timer whose event ends
  // the blocking wait if nothing else comes first.
  QTimer deadline;
  if (limit) {
    const auto span = std::chrono::ceil<std::chrono::milliseconds>(*limit - now_);
    deadline.setSingleShot(true);
    deadline.setTimerType(Qt::PreciseTimer);
    deadline.start(std::max(span, std::chrono::milliseconds(0)));
  }
  QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  now_ += std::chrono::milliseconds(real.elapsed());
  while (runNextDueUpTo(now_)) {
  }
}

}  // namespace corvalta::platform::headless
