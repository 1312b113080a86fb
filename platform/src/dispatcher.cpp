#include <corvalta/platform/dispatcher.h>

#include <iostream>

namespace corvalta::platform {

Dispatcher::Dispatcher(EventLoop& loop)
    : loop_(loop), reporter_([](std::exception_ptr error) {
        try {
          std::rethrow_exception(error);
        } catch (const std::exception& e) {
          std::cerr << "Unhandled exception: " << e.what() << '\n';
        } catch (...) {
          std::cerr << "Unhandled exception\n";
        }
      }) {}

void Dispatcher::setReporter(Reporter reporter) { reporter_ = std::move(reporter); }

void Dispatcher::setIdleCallback(std::function<void()> callback) {
  idleCallback_ = std::move(callback);
}

Dispatcher::Delivery Dispatcher::input(std::string windowClass, std::function<void()> action) {
  return arrive({true, std::move(windowClass), std::move(action)});
}

Dispatcher::Delivery Dispatcher::event(std::function<void()> action) {
  return arrive({false, {}, std::move(action)});
}

bool Dispatcher::deliversNow() const {
  if (waits_.empty()) return depth_ == 0;
  return waits_.back().deliverInput && depth_ == waits_.back().depth;
}

Dispatcher::Delivery Dispatcher::arrive(Pending pending) {
  if (!deliversNow()) {
    held_.push_back(std::move(pending));
    loop_.wake();
    return Delivery::Held;
  }
  if (refuses(pending)) return Delivery::Refused;
  deliver(pending.action);
  drainHeld();
  return Delivery::Delivered;
}

bool Dispatcher::refuses(const Pending& pending) const {
  if (!pending.isInput) return false;
  for (auto wait = waits_.rbegin(); wait != waits_.rend(); ++wait) {
    if (wait->deliverInput) return wait->modalWindow != pending.windowClass || wait->modalWindow.empty();
  }
  return false;
}

void Dispatcher::call(const std::function<void()>& action) {
  deliver(action);
  drainHeld();
}

void Dispatcher::deliver(const std::function<void()>& action) {
  ++depth_;
  try {
    action();
  } catch (...) {
    reporter_(std::current_exception());
  }
  --depth_;
}

bool Dispatcher::waitUntil(const std::function<bool()>& done, EventLoop::WaitOptions options,
                           const std::string& modalWindow) {
  bool result = false;
  within({options.deliverInput, modalWindow, depth_},
         [&] { result = loop_.waitUntil(done, options); });
  return result;
}

void Dispatcher::runModal(const std::function<void()>& dialog) { within({true, {}, depth_}, dialog); }

void Dispatcher::within(Wait wait, const std::function<void()>& body) {
  waits_.push_back(std::move(wait));
  try {
    body();
  } catch (...) {
    waits_.pop_back();
    throw;
  }
  waits_.pop_back();
  // A wait outside any handler may have held events back.
  drainHeld();
}

void Dispatcher::drainHeld() {
  if (!deliversNow() || draining_) return;
  draining_ = true;
  while (!held_.empty() && deliversNow()) {
    Pending next = std::move(held_.front());
    held_.pop_front();
    if (!refuses(next)) deliver(next.action);
  }
  draining_ = false;
  if (idle() && idleCallback_) idleCallback_();
}

}  // namespace corvalta::platform
