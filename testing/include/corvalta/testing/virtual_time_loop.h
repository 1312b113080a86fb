#pragma once

#include <corvalta/platform/event_loop.h>

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <utility>

namespace corvalta::testing {

// An EventLoop on a virtual clock for code that waits: work is scheduled at moments of
// virtual time, and a wait runs it in time order, jumping the clock forward, until its
// condition holds, its deadline comes first, or nothing is left to run.
class VirtualTimeLoop final : public platform::EventLoop {
 public:
  void at(Clock::duration delay, std::function<void()> work);
  // Runs everything scheduled, in time order.
  void runAll();

  bool waitUntil(const std::function<bool()>& done, WaitOptions options) override;
  void wake() override {}
  [[nodiscard]] Clock::time_point now() const override { return now_; }

  [[nodiscard]] int waits() const { return waits_; }
  [[nodiscard]] bool lastWaitDeliveredInput() const { return lastDeliverInput_; }

 private:
  bool runNext(std::optional<Clock::time_point> until);

  Clock::time_point now_{};
  // Keyed by moment, then by order of scheduling, so work at one moment runs in order.
  std::map<std::pair<Clock::time_point, std::uint64_t>, std::function<void()>> work_;
  std::uint64_t scheduled_ = 0;
  int waits_ = 0;
  bool lastDeliverInput_ = false;
};

}  // namespace corvalta::testing
