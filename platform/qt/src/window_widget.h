#pragma once

#include <corvalta/platform/application.h>

#include <QWidget>

#include <functional>
#include <map>
#include <string>
#include <string_view>

class QMenuBar;

namespace corvalta::platform::qt {

// One window of the view state on the screen: a top-level widget holding a content area of
// the window's Width and Height, with a widget for each control in the order of creation,
// which is also Qt's Tab order. It shows what the view state holds and sends what the user
// does back as input. A window with an owner (the main window) is a dialog of the owner's:
// the window manager keeps it above the owner and with it.
class WindowWidget final : public QWidget {
 public:
  WindowWidget(Application& app, Window& window, QMenuBar* menuBar, QWidget* owner);
  ~WindowWidget() override;
  WindowWidget(const WindowWidget&) = delete;
  WindowWidget& operator=(const WindowWidget&) = delete;

  void showWindowProperty(std::string_view name);
  void showControlProperty(PaneChild& child, std::string_view name);
  void showRows(Listbox& list);
  // Puts the keyboard focus where the view state has it; where it has none, on the first
  // control in the order of creation that takes the focus, with a field's text selected, so
  // that typing at once replaces it.
  void showFocus();
  void refresh(const PaneChild& child);
  // The window is closing: from now on the widget forgets the view state, and it goes once
  // the loop is back, since the click that closed it may still be on the stack.
  void detach();

 protected:
  void changeEvent(QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void addControl(PaneChild& child);
  void connectInput(PaneChild& child, QWidget* widget);
  void userEdited(const std::string& name, const QString& text);
  void enterEdit(const Window* window, const std::string& name, const std::string& typed);
  void userFocused(QWidget* now);
  bool handleKey(QKeyEvent* event);
  void showEnabledStates();
  void growList(QWidget* list, int height);
  [[nodiscard]] QWidget* firstFocusable() const;
  [[nodiscard]] PaneChild* childOf(const QWidget* widget) const;

  Application& app_;
  Window* window_;
  std::string className_;
  QWidget* content_;
  std::map<const PaneChild*, QWidget*> widgets_;
  // While the user's edit goes into a field, the field's own text changes are not shown
  // back: the widget already holds the text, and each step of typing would redraw it.
  const PaneChild* muted_ = nullptr;
};

}  // namespace corvalta::platform::qt
