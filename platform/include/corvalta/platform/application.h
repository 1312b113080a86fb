#pragma once

#include <corvalta/platform/clock_service.h>
#include <corvalta/platform/dialogs.h>
#include <corvalta/platform/dispatcher.h>
#include <corvalta/platform/errors.h>
#include <corvalta/platform/event_loop.h>
#include <corvalta/platform/menu_item.h>
#include <corvalta/platform/random.h>
#include <corvalta/platform/sound.h>
#include <corvalta/platform/url_opener.h>
#include <corvalta/platform/view_observer.h>
#include <corvalta/platform/window.h>

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace corvalta::platform {

// The services that a view supplies: the desktop's Qt ones or the headless ones.
struct Services {
  EventLoop& loop;
  ClockService& clock;
  SoundSystem& sounds;
  Dialogs& dialogs;
  UrlOpener& urls;
  // Makes the random source of the game; empty: a Random seeded by std::random_device.
  std::function<std::shared_ptr<Random>()> newRandom;
};

// The application object: the services, the dispatcher, the window classes with their
// implicit instances, the menu bar and the table of menu handlers. One lives at a time and
// is reached through current(), as the framework's code reaches its application.
class Application {
 public:
  explicit Application(Services services);
  virtual ~Application();
  Application(const Application&) = delete;
  Application& operator=(const Application&) = delete;

  // The living application; NilObjectException when there is none.
  static Application& current();
  static Application* currentOrNull();

  [[nodiscard]] EventLoop& loop() const { return services_.loop; }
  [[nodiscard]] ClockService& clock() const { return services_.clock; }
  [[nodiscard]] SoundSystem& sounds() const { return services_.sounds; }
  [[nodiscard]] Dialogs& dialogs() const { return services_.dialogs; }
  [[nodiscard]] UrlOpener& urls() const { return services_.urls; }
  [[nodiscard]] Dispatcher& dispatcher() { return dispatcher_; }
  [[nodiscard]] std::shared_ptr<Random> newRandom() const;

  using WindowFactory = std::function<std::unique_ptr<Window>()>;
  // How the accessor of a window class makes a new instance: construct and build it. A
  // later registration of the same class replaces the earlier one.
  void registerWindowClass(std::string className, WindowFactory factory);
  // The live instance of the class, made when there is none: built, registered, its Open
  // events raised, and shown if its Visible is True. NilObjectException for a class that
  // nobody registered.
  Window& implicitInstance(std::string_view className);
  // The live instance, or nullptr.
  [[nodiscard]] Window* liveWindow(std::string_view className) const;
  // The live windows in the order they were made.
  [[nodiscard]] std::vector<Window*> windows() const;

  [[nodiscard]] MenuItem* MenuBar() const { return menuBar_.get(); }
  void setMenuBar(std::shared_ptr<MenuItem> menuBar) { menuBar_ = std::move(menuBar); }
  void addMenuHandler(std::string itemName, std::function<bool()> handler);
  [[nodiscard]] bool hasMenuHandler(std::string_view itemName) const;
  // Runs the handler registered under the item's name; false when there is none.
  bool runMenuHandler(std::string_view itemName);

  // Ends the event loop with `exitCode`: the view stops the loop, the driver its script.
  void Quit(int exitCode = 0);
  [[nodiscard]] bool quitRequested() const { return quitRequested_; }
  [[nodiscard]] int exitCode() const { return exitCode_; }

  void setObserver(ViewObserver* observer) { observer_ = observer; }
  // The view's observer, or a silent one.
  [[nodiscard]] ViewObserver& observer() const;

 private:
  friend class Window;
  void windowClosed(Window& window);
  void releaseClosed();

  Services services_;
  Dispatcher dispatcher_;
  std::map<std::string, WindowFactory, std::less<>> factories_;
  std::vector<std::unique_ptr<Window>> live_;
  std::vector<std::unique_ptr<Window>> closed_;
  std::shared_ptr<MenuItem> menuBar_;
  std::map<std::string, std::function<bool()>, std::less<>> menuHandlers_;
  ViewObserver* observer_ = nullptr;
  bool quitRequested_ = false;
  int exitCode_ = 0;
};

// The accessor of a window class: its one live instance, made at first mention.
template <class W>
W& implicitInstance(std::string_view className) {
  auto* window = dynamic_cast<W*>(&Application::current().implicitInstance(className));
  if (window == nullptr) throw NilObjectException(std::string(className) + " is of another class");
  return *window;
}

}  // namespace corvalta::platform
