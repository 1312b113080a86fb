#pragma once

#include <string_view>

namespace corvalta::platform {

class PaneChild;
class Window;
class Listbox;

// What a view (the Qt widgets) hears of the view state so that it can mirror it. Every call
// comes after the change. The headless view needs none.
class ViewObserver {
 public:
  virtual ~ViewObserver() = default;
  virtual void windowCreated(Window& /*window*/) {}
  virtual void windowShown(Window& /*window*/, bool /*modal*/) {}
  virtual void windowHidden(Window& /*window*/) {}
  // The window is going; it still holds its controls.
  virtual void windowClosing(Window& /*window*/) {}
  virtual void propertyChanged(PaneChild& /*child*/, std::string_view /*property*/) {}
  virtual void windowPropertyChanged(Window& /*window*/, std::string_view /*property*/) {}
  virtual void rowsChanged(Listbox& /*list*/) {}
  virtual void focusChanged(Window& /*window*/) {}
  virtual void refreshRequested(PaneChild& /*child*/) {}
  virtual void quitRequested(int /*exitCode*/) {}
};

}  // namespace corvalta::platform
