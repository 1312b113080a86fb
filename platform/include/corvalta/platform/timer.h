#pragma once

#include <corvalta/platform/clock_service.h>
#include <corvalta/platform/pane_child.h>
#include <corvalta/platform/record_names.h>

#include <cstdint>
#include <optional>

namespace corvalta::platform {

// Fires its Action every Period milliseconds while Mode is 2, once with Mode 1 (which then
// falls back to 0), never with Mode 0. The ticks stay anchored to the moment the timer was
// turned on: a tick that the dispatcher has to hold back does not move the next one. A tick
// that falls due while its timer is already off again, or was turned off and on meanwhile,
// is dropped.
class Timer : public PaneChild {
 public:
  Timer();
  ~Timer() override;

  [[nodiscard]] std::int32_t Mode() const { return intProperty(property::Mode); }
  void setMode(std::int32_t mode) { setProperty(property::Mode, mode); }
  [[nodiscard]] std::int32_t Period() const { return intProperty(property::Period, 1000); }
  void setPeriod(std::int32_t period) { setProperty(property::Period, period); }
  // Starts the period over from now, if the timer is on.
  void Reset();

  void closing() override;

 protected:
  void propertyChanged(std::string_view name) override;

 private:
  void schedule();
  void unschedule();
  void fire(std::uint64_t generation);

  ClockService::TimePoint anchor_{};
  std::int64_t ticks_ = 0;
  std::uint64_t generation_ = 0;
  std::optional<ClockService::CallId> pending_;
};

}  // namespace corvalta::platform
