#pragma once

#include <corvalta/platform/property.h>

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace corvalta::platform {

class Window;

// The arguments an event carries (CellTextChange: row and column); most carry none.
using EventArgs = std::vector<PropertyValue>;
using Handler = std::function<void(const EventArgs&)>;

// Anything a window owns and finds by name: its controls, and the timers and sockets that
// are no controls. It keeps its properties by name, as description records set them and the
// views read them, and the handlers installed for its events.
class PaneChild {
 public:
  explicit PaneChild(std::string className);
  virtual ~PaneChild();
  PaneChild(const PaneChild&) = delete;
  PaneChild& operator=(const PaneChild&) = delete;

  // "PushButton", "Timer", ... as description records name the classes.
  [[nodiscard]] const std::string& className() const { return className_; }
  // The name under which the owning window holds it; empty before it is added.
  [[nodiscard]] const std::string& key() const { return key_; }
  // The owning window; nullptr before it is added and after the window has closed.
  [[nodiscard]] Window* window() const { return window_; }

  [[nodiscard]] const PropertyList& properties() const { return properties_; }
  // The property's value, or nullptr when it has never been set.
  [[nodiscard]] const PropertyValue* property(std::string_view name) const;
  // Sets a property as a record does: no rule of the framework, no event. The view is told.
  void setProperty(std::string_view name, PropertyValue value);
  void applyProperties(const PropertyList& properties);

  void installHandler(std::string event, Handler handler);
  void installHandler(std::string event, std::function<void()> handler);
  [[nodiscard]] bool hasHandler(std::string_view event) const;
  // Runs the event's handler at once, if one is installed.
  void raise(std::string_view event, const EventArgs& args = {});

  // The window is closing: a control closes, a timer stops.
  virtual void closing() {}

 protected:
  [[nodiscard]] bool boolProperty(std::string_view name, bool fallback = false) const;
  [[nodiscard]] std::int32_t intProperty(std::string_view name, std::int32_t fallback = 0) const;
  [[nodiscard]] std::string textProperty(std::string_view name) const;
  // The change of a property that the framework watches itself (a timer's Mode).
  virtual void propertyChanged(std::string_view /*name*/) {}

 private:
  friend class Window;
  void attach(Window* window, std::string key);

  std::string className_;
  std::string key_;
  Window* window_ = nullptr;
  PropertyList properties_;
  std::map<std::string, Handler, std::less<>> handlers_;
};

}  // namespace corvalta::platform
