#include <corvalta/platform/qt/qt_view.h>

#include "menu_bar_widget.h"
#include "window_widget.h"

#include <corvalta/platform/controls.h>
#include <corvalta/platform/user_input.h>

#include <QCoreApplication>
#include <QGuiApplication>
#include <QScreen>
#include <QWindow>

#include <algorithm>

namespace corvalta::platform::qt {

QtView::QtView(Application& app) : app_(app) {}

QtView::~QtView() {
  // Owned windows first: their owner takes them down with it.
  for (const auto& [window, widget] : windows_) {
    if (widget != nullptr && widget->parentWidget() != nullptr) {
      delete widget;
    }
  }
  for (const auto& [window, widget] : windows_) {
    delete widget;
  }
}

QWidget* QtView::topLevel(const std::string& windowClass) const {
  const Window* live = app_.liveWindow(windowClass);
  return live != nullptr ? widgetOf(*live) : nullptr;
}

WindowWidget* QtView::widgetOf(const Window& window) const {
  const auto found = windows_.find(&window);
  return found == windows_.end() ? nullptr : found->second.data();
}

void QtView::windowCreated(Window& window) {
  QMenuBar* menuBar = nullptr;
  if (window.className() == menuBarWindow_ && app_.MenuBar() != nullptr) {
    // The framework's quit action closes the main window, whose Close saves and quits.
    menuBar = makeMenuBar(app_, [this] { closeWindow(app_, menuBarWindow_); });
  }
  QWidget* owner = window.className() == menuBarWindow_ ? nullptr : topLevel(menuBarWindow_);
  windows_.emplace(&window, new WindowWidget(app_, window, menuBar, owner));
}

void QtView::windowShown(Window& window, bool modal) {
  auto* widget = widgetOf(window);
  if (widget == nullptr) {
    return;
  }
  // A window whose record says Visible shows as it opens, and ShowModal then asks for it again,
  // modal: Qt takes a change of modality only while the window is hidden, and a modal window
  // has its place over the main window, not beside it.
  const auto modality = modal ? Qt::ApplicationModal : Qt::NonModal;
  if (widget->isVisible() && widget->windowModality() != modality) {
    widget->hide();
  }
  if (!widget->isVisible()) {
    widget->setWindowModality(modality);
    if (window.className() != menuBarWindow_) {
      modal ? placeOverMainWindow(widget) : placeBesideMainWindow(widget);
    }
    widget->show();
    widget->showFocus();
  }
  widget->raise();
  widget->activateWindow();
}

// A window other than the main one opens beside it, to the right where the screen has room,
// so that the game stays in sight; each further one a step down and to the right, so that
// none hides another.
void QtView::placeBesideMainWindow(QWidget* top) const {
  const QWidget* main = topLevel(menuBarWindow_);
  if (main == nullptr || !main->isVisible()) {
    return;
  }
  const auto others = std::count_if(windows_.begin(), windows_.end(), [&](const auto& entry) {
    return entry.second != nullptr && entry.second != top && entry.second != main &&
           entry.second->isVisible();
  });
  const int step = 28 * static_cast<int>(others);
  const auto frame = main->frameGeometry();
  const auto size = top->sizeHint();
  QPoint at(frame.right() + 12 + step, frame.top() + step);
  if (const QScreen* screen = main->screen()) {
    const auto room = screen->availableGeometry();
    if (at.x() + size.width() > room.right()) {
      at.setX(std::max(room.left(), frame.left() - size.width() - 12));
    }
  }
  top->move(at);
}

// A modal window, which the game waits on, opens centred over the main window, as the
// desktop's dialogs open over their parents.
void QtView::placeOverMainWindow(QWidget* top) const {
  const QWidget* main = topLevel(menuBarWindow_);
  if (main == nullptr || !main->isVisible()) {
    return;
  }
  QRect place({}, top->sizeHint());
  place.moveCenter(main->frameGeometry().center());
  top->move(place.topLeft());
}

void QtView::windowHidden(Window& window) {
  if (auto* widget = widgetOf(window)) {
    widget->hide();
  }
}

void QtView::windowClosing(Window& window) {
  if (auto* widget = widgetOf(window)) {
    widget->detach();
  }
  windows_.erase(&window);
}

void QtView::propertyChanged(PaneChild& child, std::string_view property) {
  if (child.window() != nullptr) {
    if (auto* widget = widgetOf(*child.window())) {
      widget->showControlProperty(child, property);
    }
  }
}

void QtView::windowPropertyChanged(Window& window, std::string_view property) {
  if (auto* widget = widgetOf(window)) {
    widget->showWindowProperty(property);
  }
}

void QtView::rowsChanged(Listbox& list) {
  if (list.window() != nullptr) {
    if (auto* widget = widgetOf(*list.window())) {
      widget->showRows(list);
    }
  }
}

void QtView::focusChanged(Window& window) {
  if (auto* widget = widgetOf(window)) {
    widget->showFocus();
  }
}

void QtView::refreshRequested(PaneChild& child) {
  if (child.window() != nullptr) {
    if (auto* widget = widgetOf(*child.window())) {
      widget->refresh(child);
    }
  }
}

void QtView::quitRequested(int exitCode) { QCoreApplication::exit(exitCode); }

}  // namespace corvalta::platform::qt
