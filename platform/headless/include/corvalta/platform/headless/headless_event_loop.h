#pragma once

#include <corvalta/platform/clock_service.h>
#include <corvalta/platform/event_loop.h>

#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <utility>

class QCoreApplication;

namespace corvalta::platform::headless {

// The event loop of the headless view: Qt's loop for real events (sockets work as on the
// desktop) and a virtual clock for time. Time stands still until something moves it: a wait
// that has nothing else to do jumps to the next call that is due (a timer tick, the end of
// a sound, its own deadline), and advanceTo moves it on purpose. So a 90-second game takes
// milliseconds.
class HeadlessEventLoop : public EventLoop, public ClockService {
 public:
  using TimePoint = ClockService::TimePoint;

  // Makes a QCoreApplication when none exists yet.
  HeadlessEventLoop();
  ~HeadlessEventLoop() override;
  HeadlessEventLoop(const HeadlessEventLoop&) = delete;
  HeadlessEventLoop& operator=(const HeadlessEventLoop&) = delete;

  // A wait runs, in this order, until `done` holds: Qt's pending events; when it delivers
  // input, the input source; while real time is held, a real wait for events; else a jump to
  // the next due call or the deadline. With none of these left it gives up and returns the
  // value of `done`: nothing could ever change it.
  bool waitUntil(const std::function<bool()>& done, WaitOptions options) override;
  void wake() override;
  [[nodiscard]] TimePoint now() const override { return now_; }

  CallId callAt(TimePoint at, std::function<void()> callback) override;
  void cancel(CallId id) override;

  // The moment the loop was made: virtual time starts here.
  [[nodiscard]] static TimePoint start() { return TimePoint{}; }
  [[nodiscard]] std::chrono::milliseconds elapsed() const;

  // Moves time forward to `until`, running each call that falls due on the way in order.
  // Calls may run waits that carry time beyond `until`; time never goes back.
  void advanceTo(TimePoint until);
  void advanceBy(std::chrono::milliseconds span) { advanceTo(now_ + span); }
  [[nodiscard]] std::optional<TimePoint> nextDue() const;

  // What a wait that delivers input (a modal window) does when nothing else is pending: the
  // driver's next script line. The source returns false when it has nothing more.
  void setInputSource(std::function<bool()> source) { inputSource_ = std::move(source); }

  // While a hold lives, real I/O is under way (a socket): waits block for Qt's events instead
  // of jumping, and virtual time follows the wall clock meanwhile.
  class RealTimeHold {
   public:
    explicit RealTimeHold(HeadlessEventLoop& loop) : loop_(&loop) { ++loop_->realTimeHolds_; }
    ~RealTimeHold() { --loop_->realTimeHolds_; }
    RealTimeHold(const RealTimeHold&) = delete;
    RealTimeHold& operator=(const RealTimeHold&) = delete;

   private:
    HeadlessEventLoop* loop_;
  };

 private:
  bool runNextDueUpTo(TimePoint limit);
  void waitForRealEvents(std::optional<TimePoint> until);

  std::unique_ptr<QCoreApplication> ownApplication_;
  TimePoint now_ = start();
  CallId nextId_ = 1;
  std::map<std::pair<TimePoint, CallId>, std::function<void()>> calls_;
  std::function<bool()> inputSource_;
  int realTimeHolds_ = 0;
};

}  // namespace corvalta::platform::headless
