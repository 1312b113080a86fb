#pragma once

#include <corvalta/platform/clock_service.h>

#include <map>
#include <memory>
#include <utility>

class QTimer;

namespace corvalta::platform::qt {

// One-shot calls on Qt's loop, on the steady clock. The calls wait in one queue ordered by
// time and then by the order they were asked for, behind one precise timer set for the
// earliest, so that calls due at the same moment keep their order.
class QtClockService final : public ClockService {
 public:
  QtClockService();
  ~QtClockService() override;
  QtClockService(const QtClockService&) = delete;
  QtClockService& operator=(const QtClockService&) = delete;

  [[nodiscard]] TimePoint now() const override;
  CallId callAt(TimePoint at, std::function<void()> callback) override;
  void cancel(CallId id) override;

 private:
  using Key = std::pair<TimePoint, CallId>;
  void runDue();
  void arm();

  std::unique_ptr<QTimer> timer_;
  std::map<Key, std::function<void()>> queue_;
  std::map<CallId, TimePoint> times_;
  CallId next_ = 1;
};

}  // namespace corvalta::platform::qt
