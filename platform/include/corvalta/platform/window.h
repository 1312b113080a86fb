#pragma once

#include <corvalta/platform/errors.h>
#include <corvalta/platform/pane_child.h>
#include <corvalta/platform/property.h>
#include <corvalta/platform/window_plan.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace corvalta::platform {

class Application;
class Control;

// A window of the view state: its own properties (Title, Visible, Width, ...) and the
// controls, timers and sockets that it holds by name. A window class derives from it, builds
// itself from a WindowPlan and hands out its handlers through handlerFor. Windows come into
// being through Application::implicitInstance, which also raises their Open events.
class Window {
 public:
  explicit Window(std::string className);
  virtual ~Window();
  Window(const Window&) = delete;
  Window& operator=(const Window&) = delete;

  [[nodiscard]] const std::string& className() const { return className_; }
  [[nodiscard]] Application& application() const { return application_; }

  [[nodiscard]] const PropertyList& properties() const { return properties_; }
  [[nodiscard]] const PropertyValue* property(std::string_view name) const;
  void setProperty(std::string_view name, PropertyValue value);
  [[nodiscard]] std::string Title() const;
  [[nodiscard]] bool Visible() const;

  // Applies the window's properties, then makes each control in turn (makeChild), adds it,
  // applies its properties and installs a handler for each of its events (handlerFor).
  void build(const WindowPlan& plan);
  void build(const WindowDescription& description) { build(planOf(description)); }

  PaneChild& addControl(std::string name, std::unique_ptr<PaneChild> child);
  // The control of that name, or nullptr: how code reaches a control, each time anew.
  [[nodiscard]] PaneChild* controlByName(std::string_view name) const;
  // The control of that name and class; NilObjectException when there is none.
  template <class C>
  [[nodiscard]] C& control(std::string_view name) const {
    auto* found = dynamic_cast<C*>(controlByName(name));
    if (found == nullptr) throw NilObjectException(className_ + " has no control " + std::string(name));
    return *found;
  }
  // Everything the window holds, in the order of adding.
  [[nodiscard]] const std::vector<PaneChild*>& controls() const { return order_; }

  // The control that holds the keyboard focus, or nullptr.
  [[nodiscard]] Control* focus() const { return focus_; }
  // Takes the focus off every control.
  void SetFocus();

  void Show();
  // Shows the window and runs the event loop until it is hidden or closed. Input reaches
  // this window only, timer ticks go on.
  void ShowModal();
  void Hide();
  // Raises Close, closes the controls and ends the instance: the next use of the accessor
  // makes a new window. The object itself lives until no handler runs.
  void Close();
  [[nodiscard]] bool isClosed() const { return closed_; }
  [[nodiscard]] bool isModal() const { return modal_; }

  // The push button whose Default is True and that accepts input, or nullptr: what the
  // Return key presses.
  [[nodiscard]] Control* defaultButton() const;

 protected:
  // The handler of a control's event, or an empty handler for none. The window's own events
  // are Event_Open and Event_Close.
  virtual Handler handlerFor(std::string_view control, std::string_view event);
  // Makes a child of a class that is no framework class (a socket); nullptr by default.
  virtual std::unique_ptr<PaneChild> makeChild(std::string_view className);
  virtual void Event_Open() {}
  virtual void Event_Close() {}

 private:
  friend class Application;
  friend class Control;
  void open();  // raises the controls' Open events, then the window's
  void setFocusControl(Control* control);

  std::string className_;
  Application& application_;
  PropertyList properties_;
  std::vector<std::unique_ptr<PaneChild>> children_;
  std::vector<PaneChild*> order_;
  Control* focus_ = nullptr;
  bool modal_ = false;
  bool closed_ = false;
};

}  // namespace corvalta::platform
