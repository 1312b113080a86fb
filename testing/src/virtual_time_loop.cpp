#include <corvalta/testing/virtual_time_loop.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace corvalta::testing {

void VirtualTimeLoop::at(Clock::duration delay, std::function<void()> work) {
  work_.emplace(std::pair(now_ + delay, scheduled_++), std::move(work));
}

void VirtualTimeLoop::runAll() {
  while (runNext(std::nullopt)) {
  }
}

bool VirtualTimeLoop::waitUntil(const std::function<bool()>& done, WaitOptions options) {
  ++waits_;
  lastDeliverInput_ = options.deliverInput;
  while (!done()) {
    if (!runNext(options.deadline)) {
      if (!options.deadline) {
        // Nothing is left that could make the condition true: a real loop would sleep forever.
        std::fputs("VirtualTimeLoop: a wait without deadline has nothing left to run\n", stderr);
        std::abort();
      }
      now_ = std::max(now_, *options.deadline);
      return done();
    }
  }
  return true;
}

// Runs the earliest work that falls due no later than `until`; false when there is none.
bool VirtualTimeLoop::runNext(std::optional<Clock::time_point> until) {
  if (work_.empty() || (until && work_.begin()->first.first > *until)) {
    return false;
  }
  auto next = work_.extract(work_.begin());
  if (next.key().first > now_) {
    now_ = next.key().first;
  }
  next.mapped()();
  return true;
}

}  // namespace corvalta::testing
