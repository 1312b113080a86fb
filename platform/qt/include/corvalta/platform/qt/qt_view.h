#pragma once

#include <corvalta/platform/application.h>
#include <corvalta/platform/view_observer.h>

#include <QPointer>

#include <map>
#include <memory>
#include <string>

class QWidget;

namespace corvalta::platform::qt {

class WindowWidget;

// The desktop view: every window of the view state as a top-level Qt window whose widgets
// mirror its controls; every window but the main one is a dialog of the main window's, which
// opens over it when modal and beside it otherwise. The view state is the truth: widgets show what it holds, and what the
// user does to a widget goes back to it as input through the dispatcher, which may hold it
// until the running handler returns; the widget then shows what the state made of it.
class QtView final : public ViewObserver {
 public:
  explicit QtView(Application& app);
  ~QtView() override;
  QtView(const QtView&) = delete;
  QtView& operator=(const QtView&) = delete;

  // Windows of this class carry the application's menu bar (the main window).
  void setMenuBarWindow(std::string className) { menuBarWindow_ = std::move(className); }

  // The top-level widget of a live window, or nullptr.
  [[nodiscard]] QWidget* topLevel(const std::string& windowClass) const;

  void windowCreated(Window& window) override;
  void windowShown(Window& window, bool modal) override;
  void windowHidden(Window& window) override;
  void windowClosing(Window& window) override;
  void propertyChanged(PaneChild& child, std::string_view property) override;
  void windowPropertyChanged(Window& window, std::string_view property) override;
  void rowsChanged(Listbox& list) override;
  void focusChanged(Window& window) override;
  void refreshRequested(PaneChild& child) override;
  void quitRequested(int exitCode) override;

 private:
  [[nodiscard]] WindowWidget* widgetOf(const Window& window) const;
  void placeBesideMainWindow(QWidget* top) const;
  void placeOverMainWindow(QWidget* top) const;

  Application& app_;
  std::string menuBarWindow_;
  // A window's widget goes with its owner's, the main window's, when that goes first.
  std::map<const Window*, QPointer<WindowWidget>> windows_;
};

}  // namespace corvalta::platform::qt
