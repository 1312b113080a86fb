#include <corvalta/platform/application.h>
#include <corvalta/platform/timer.h>

#include <chrono>

namespace corvalta::platform {

Timer::Timer() : PaneChild(record_class::Timer) {}

Timer::~Timer() { unschedule(); }

void Timer::Reset() {
  if (Mode() == 0) return;
  unschedule();
  schedule();
}

void Timer::closing() { unschedule(); }

void Timer::propertyChanged(std::string_view name) {
  if (name != property::Mode && name != property::Period) return;
  unschedule();
  if (Mode() != 0) schedule();
}

void Timer::schedule() {
  auto& clock = Application::current().clock();
  anchor_ = clock.now();
  ticks_ = 0;
  const auto generation = ++generation_;
  const auto period = std::chrono::milliseconds(std::max(Period(), 1));
  pending_ = clock.callAt(anchor_ + period, [this, generation] { fire(generation); });
}

void Timer::unschedule() {
  ++generation_;
  if (!pending_) return;
  if (Application* app = Application::currentOrNull()) app->clock().cancel(*pending_);
  pending_.reset();
}

void Timer::fire(std::uint64_t generation) {
  pending_.reset();
  auto& app = Application::current();
  ++ticks_;
  if (Mode() == 2) {
    const auto period = std::chrono::milliseconds(std::max(Period(), 1));
    pending_ = app.clock().callAt(anchor_ + period * (ticks_ + 1),
                                  [this, generation] { fire(generation); });
  }
  app.dispatcher().event([this, generation] {
    if (generation != generation_ || Mode() == 0) return;
    if (Mode() == 1) setMode(0);
    raise("Action");
  });
}

}  // namespace corvalta::platform
