#include <corvalta/platform/application.h>

#include <algorithm>

namespace corvalta::platform {
namespace {

Application* currentApplication = nullptr;

ViewObserver& silentObserver() {
  static ViewObserver silent;
  return silent;
}

}  // namespace

Application::Application(Services services)
    : services_(std::move(services)), dispatcher_(services_.loop) {
  if (currentApplication != nullptr) throw std::logic_error("an application lives already");
  currentApplication = this;
  dispatcher_.setIdleCallback([this] { releaseClosed(); });
}

Application::~Application() {
  // Windows go without their Close events: those belong to an orderly shutdown.
  closed_.clear();
  live_.clear();
  currentApplication = nullptr;
}

Application& Application::current() {
  if (currentApplication == nullptr) throw NilObjectException("no application");
  return *currentApplication;
}

Application* Application::currentOrNull() { return currentApplication; }

std::shared_ptr<Random> Application::newRandom() const {
  return services_.newRandom ? services_.newRandom() : std::make_shared<Random>();
}

void Application::registerWindowClass(std::string className, WindowFactory factory) {
  factories_[std::move(className)] = std::move(factory);
}

Window& Application::implicitInstance(std::string_view className) {
  if (Window* live = liveWindow(className)) return *live;
  const auto factory = factories_.find(className);
  if (factory == factories_.end()) {
    throw NilObjectException("no window class " + std::string(className));
  }
  live_.push_back(factory->second());
  Window& window = *live_.back();
  observer().windowCreated(window);
  window.open();
  if (window.Visible() && !window.isClosed()) observer().windowShown(window, false);
  return window;
}

Window* Application::liveWindow(std::string_view className) const {
  for (const auto& window : live_) {
    if (window->className() == className && !window->isClosed()) return window.get();
  }
  return nullptr;
}

std::vector<Window*> Application::windows() const {
  std::vector<Window*> result;
  for (const auto& window : live_) {
    if (!window->isClosed()) result.push_back(window.get());
  }
  return result;
}

void Application::addMenuHandler(std::string itemName, std::function<bool()> handler) {
  menuHandlers_[std::move(itemName)] = std::move(handler);
}

bool Application::hasMenuHandler(std::string_view itemName) const {
  return menuHandlers_.find(itemName) != menuHandlers_.end();
}

bool Application::runMenuHandler(std::string_view itemName) {
  const auto found = menuHandlers_.find(itemName);
  if (found == menuHandlers_.end()) return false;
  const auto handler = found->second;
  handler();
  return true;
}

void Application::Quit(int exitCode) {
  quitRequested_ = true;
  exitCode_ = exitCode;
  observer().quitRequested(exitCode);
  loop().wake();
}

ViewObserver& Application::observer() const {
  return observer_ != nullptr ? *observer_ : silentObserver();
}

void Application::windowClosed(Window& window) {
  const auto found = std::find_if(live_.begin(), live_.end(),
                                  [&](const auto& w) { return w.get() == &window; });
  if (found == live_.end()) return;
  closed_.push_back(std::move(*found));
  live_.erase(found);
  if (dispatcher_.idle()) releaseClosed();
}

void Application::releaseClosed() { closed_.clear(); }

}  // namespace corvalta::platform
