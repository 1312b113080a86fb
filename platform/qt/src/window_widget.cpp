#include "window_widget.h"

#include "control_widgets.h"
#include "list_widget.h"
#include "menu_bar_widget.h"
#include "record_colors.h"
#include "spoken_name.h"

#include <corvalta/platform/controls.h>
#include <corvalta/platform/record_names.h>
#include <corvalta/platform/user_input.h>

#include <QAbstractButton>
#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPointer>
#include <QRadioButton>
#include <QVBoxLayout>

#include <algorithm>
#include <vector>

namespace corvalta::platform::qt {

WindowWidget::WindowWidget(Application& app, Window& window, QMenuBar* menuBar, QWidget* owner)
    : QWidget(owner), app_(app), window_(&window), className_(window.className()), content_(new QWidget(this)) {
  setObjectName(QString::fromStdString(className_));
  setAttribute(Qt::WA_DeleteOnClose, false);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  if (menuBar != nullptr) {
    layout->setMenuBar(menuBar);
  }
  layout->addWidget(content_);
  // Nothing holds the focus until a control takes it; the content takes the keys meanwhile.
  content_->setFocusPolicy(Qt::ClickFocus);
  content_->installEventFilter(this);

  // Only a dialog is told to the window manager as transient for its owner.
  Qt::WindowFlags flags =
      owner != nullptr || valueOr<std::int32_t>(window.property(property::Frame), 0) == 1
          ? Qt::Dialog
          : Qt::Window;
  flags |= Qt::CustomizeWindowHint | Qt::WindowTitleHint;
  if (valueOr(window.property(property::CloseButton), true)) flags |= Qt::WindowCloseButtonHint;
  if (valueOr(window.property(property::MinimizeButton), false)) flags |= Qt::WindowMinimizeButtonHint;
  if (valueOr(window.property(property::MaximizeButton), false)) flags |= Qt::WindowMaximizeButtonHint;
  setWindowFlags(flags);

  for (const auto& property : window.properties()) {
    showWindowProperty(property.name);
  }
  for (PaneChild* child : window.controls()) {
    addControl(*child);
  }
  // Names come once every label stands.
  for (const auto& [child, widget] : widgets_) {
    if (const auto name = spokenName(window, *child); !name.isEmpty()) {
      widget->setAccessibleName(name);
    }
  }
  showEnabledStates();
  connect(qApp, &QApplication::focusChanged, this,
          [this](QWidget* /*old*/, QWidget* now) { userFocused(now); });
}

WindowWidget::~WindowWidget() {
  // The widgets lose the focus as QWidget's destructor takes them down, when this is no
  // WindowWidget any more.
  disconnect(qApp, &QApplication::focusChanged, this, nullptr);
}

void WindowWidget::showWindowProperty(std::string_view name) {
  if (window_ == nullptr) {
    return;
  }
  const auto* value = window_->property(name);
  if (name == property::Title) {
    setWindowTitle(toDisplayText(valueOr<std::string>(value, {})));
  } else if (name == property::Width || name == property::Height) {
    const auto width = valueOr<std::int32_t>(window_->property(property::Width), 100);
    const auto height = valueOr<std::int32_t>(window_->property(property::Height), 100);
    if (valueOr(window_->property(property::Resizeable), false)) {
      content_->setMinimumSize(valueOr<std::int32_t>(window_->property(property::MinWidth), 0),
                               valueOr<std::int32_t>(window_->property(property::MinHeight), 0));
      resize(width, height);
    } else {
      content_->setFixedSize(width, height);
    }
  } else if (name == property::Resizeable) {
    layout()->setSizeConstraint(valueOr(value, false) ? QLayout::SetDefaultConstraint
                                                      : QLayout::SetFixedSize);
  } else if (name == property::HasBackColor || name == property::BackColor) {
    if (valueOr(window_->property(property::HasBackColor), false)) {
      const auto color = valueOr<Color>(window_->property(property::BackColor), {});
      auto palette = content_->palette();
      palette.setColor(QPalette::Window, shownGround(color, this->palette()));
      content_->setPalette(palette);
      content_->setAutoFillBackground(true);
    }
  }
}

void WindowWidget::addControl(PaneChild& child) {
  QWidget* widget = makeControlWidget(child.className(), child.properties(), content_);
  if (widget == nullptr) {
    return;
  }
  widgets_.emplace(&child, widget);
  widget->setObjectName(QString::fromStdString(child.key()));
  widget->installEventFilter(this);
  connectInput(child, widget);
}

void WindowWidget::connectInput(PaneChild& child, QWidget* widget) {
  const std::string name = child.key();
  if (auto* radio = qobject_cast<QRadioButton*>(widget)) {
    connect(radio, &QRadioButton::clicked, this, [this, radio, name] {
      // Qt has already flipped the button; it shows the state's value until the state says.
      if (auto* button = window_ != nullptr ? dynamic_cast<RadioButton*>(window_->controlByName(name))
                                            : nullptr) {
        radio->setChecked(button->Value());
      }
      pressControl(app_, className_, name);
    });
  } else if (auto* button = qobject_cast<QAbstractButton*>(widget)) {
    connect(button, &QAbstractButton::clicked, this, [this, name] { pressControl(app_, className_, name); });
  } else if (auto* line = qobject_cast<QLineEdit*>(widget)) {
    connect(line, &QLineEdit::textEdited, this, [this, name](const QString& text) { userEdited(name, text); });
  } else if (auto* text = qobject_cast<QPlainTextEdit*>(widget)) {
    // textChanged also follows changes made by code; those already match the state.
    connect(text, &QPlainTextEdit::textChanged, this, [this, name, text] {
      auto* field = window_ != nullptr ? dynamic_cast<EditField*>(window_->controlByName(name)) : nullptr;
      if (field != nullptr && toDisplayText(field->Text()) != text->toPlainText()) {
        userEdited(name, text->toPlainText());
      }
    });
  }
}

void WindowWidget::userEdited(const std::string& name, const QString& text) {
  // The input may run later; by then this widget may be gone, or stand for a closed window.
  app_.dispatcher().input(className_, [self = QPointer(this), window = window_, name,
                                       typed = fromDisplayText(text)] {
    WindowWidget* widget = self.data();
    if (widget == nullptr) {
      return;
    }
    widget->enterEdit(window, name, typed);
  });
}

void WindowWidget::enterEdit(const Window* window, const std::string& name, const std::string& typed) {
  if (window_ != window || window == nullptr) {
    return;
  }
  auto* field = dynamic_cast<EditField*>(window->controlByName(name));
  if (field == nullptr) {
    return;
  }
  muted_ = field;
  field->userEdit(typed);
  muted_ = nullptr;
  // The field may have refused part of the typing (its mask, its limit): show what it took.
  showControlProperty(*field, property::Text);
}

void WindowWidget::userFocused(QWidget* now) {
  if (window_ == nullptr || now == nullptr || now->window() != this) {
    return;
  }
  keepRadioButtonsTabStops(now);
  auto* control = dynamic_cast<Control*>(childOf(now));
  if (control != nullptr && window_->focus() != control) {
    control->SetFocus();
  }
}

PaneChild* WindowWidget::childOf(const QWidget* widget) const {
  for (const auto& [child, shown] : widgets_) {
    if (shown == widget || shown->isAncestorOf(widget)) {
      return const_cast<PaneChild*>(child);
    }
  }
  return nullptr;
}

void WindowWidget::showControlProperty(PaneChild& child, std::string_view name) {
  const auto found = widgets_.find(&child);
  const auto* value = child.property(name);
  if (found == widgets_.end() || value == nullptr || (&child == muted_ && name == property::Text)) {
    return;
  }
  if (name == property::TextColor || name == property::BackColor) {
    showColors(found->second, child.className(), child.properties());
  } else {
    qt::showControlProperty(found->second, child.className(), name, *value);
  }
  if (name == property::Enabled || name == property::Visible) {
    showEnabledStates();
  }
}

// A control that stands in a disabled group acts disabled, so its widget is disabled too.
void WindowWidget::showEnabledStates() {
  for (const auto& [child, widget] : widgets_) {
    if (const auto* control = dynamic_cast<const Control*>(child)) {
      const Control* parent = control->parent();
      widget->setEnabled(control->Enabled() && (parent == nullptr || parent->acceptsInput()));
    }
  }
}

void WindowWidget::showRows(Listbox& list) {
  const auto found = widgets_.find(&list);
  if (found == widgets_.end()) {
    return;
  }
  std::vector<std::int32_t> alignments;
  for (std::int32_t column = 0; column < list.ColumnCount(); ++column) {
    alignments.push_back(list.ColumnAlignment(column));
  }
  auto* shown = static_cast<ListWidget*>(found->second);
  shown->showRows(list.rows(), alignments);
  growList(shown, shown->heightForRows());
}

// A list whose record is too low for its heading and rows grows down, and the controls under
// it move down as far as they must to keep clear of it and of one another, each the same
// distance from the one above as before, or 4 pixels where that distance is less.
void WindowWidget::growList(QWidget* list, int height) {
  if (height <= list->height()) {
    return;
  }
  list->resize(list->width(), height);
  std::vector<QWidget*> below;
  for (QWidget* other : content_->findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
    const QRect place = other->geometry();
    if (other != list && place.top() >= list->y() && place.left() < list->geometry().right() &&
        place.right() > list->x()) {
      below.push_back(other);
    }
  }
  std::sort(below.begin(), below.end(), [](QWidget* a, QWidget* b) { return a->y() < b->y(); });
  constexpr int gap = 4;
  int clearFrom = list->geometry().bottom() + 1 + gap;
  for (QWidget* other : below) {
    if (other->y() >= clearFrom) {
      break;
    }
    other->move(other->x(), clearFrom);
    clearFrom = other->geometry().bottom() + 1 + gap;
  }
}

void WindowWidget::showFocus() {
  if (window_ == nullptr) {
    return;
  }
  const auto found = widgets_.find(window_->focus());
  QWidget* target = found != widgets_.end() ? found->second : firstFocusable();
  if (target == nullptr) {
    target = content_;
  } else if (auto* field = qobject_cast<QLineEdit*>(target); field != nullptr && found == widgets_.end()) {
    field->selectAll();
  }
  if (!target->hasFocus()) {
    target->setFocus(Qt::OtherFocusReason);
  }
}

QWidget* WindowWidget::firstFocusable() const {
  for (const PaneChild* child : window_->controls()) {
    const auto found = widgets_.find(child);
    if (found == widgets_.end()) {
      continue;
    }
    QWidget* widget = found->second;
    if ((widget->focusPolicy() & Qt::TabFocus) != 0 && widget->isEnabled() && !widget->isHidden()) {
      return widget;
    }
  }
  return nullptr;
}

void WindowWidget::refresh(const PaneChild& child) {
  if (const auto found = widgets_.find(&child); found != widgets_.end()) {
    found->second->repaint();
  }
}

void WindowWidget::detach() {
  window_ = nullptr;
  widgets_.clear();
  hide();
  deleteLater();
}

// The desktop's palette has changed, say from light to dark: the records' colours are shown
// anew under it, the window's here and each control's as its widget takes the new palette.
void WindowWidget::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) {
    showWindowProperty(property::BackColor);
  }
}

void WindowWidget::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  // The window's Open has run by now and may have checked menu items (the sound setting).
  if (auto* bar = qobject_cast<QMenuBar*>(layout()->menuBar()); bar != nullptr && window_ != nullptr) {
    refreshMenuBar(app_, bar);
  }
}

void WindowWidget::closeEvent(QCloseEvent* event) {
  // The close box is input like any other: the view state closes the window, and the view
  // follows. Until then the window stays.
  event->ignore();
  if (window_ != nullptr) {
    closeWindow(app_, className_);
  }
}

void WindowWidget::keyPressEvent(QKeyEvent* event) {
  if (!handleKey(event)) {
    QWidget::keyPressEvent(event);
  }
}

bool WindowWidget::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress && handleKey(static_cast<QKeyEvent*>(event))) {
    return true;
  }
  if (event->type() == QEvent::PaletteChange) {
    auto* widget = qobject_cast<QWidget*>(watched);
    if (const PaneChild* child = childOf(widget); child != nullptr && widgets_.at(child) == widget) {
      showColors(widget, child->className(), child->properties());
    }
  }
  return QWidget::eventFilter(watched, event);
}

// Return and Enter press the default button, Escape the cancel button, whichever control has
// the focus; a window without such a button leaves the key to the focused control.
bool WindowWidget::handleKey(QKeyEvent* event) {
  if (window_ == nullptr || event->modifiers() & (Qt::ControlModifier | Qt::AltModifier)) {
    return false;
  }
  const int key = event->key();
  if (key == Qt::Key_Return || key == Qt::Key_Enter) {
    if (window_->defaultButton() == nullptr) {
      return false;
    }
    pressReturn(app_, className_);
    return true;
  }
  if (key == Qt::Key_Escape) {
    for (PaneChild* child : window_->controls()) {
      auto* button = dynamic_cast<PushButton*>(child);
      if (button != nullptr && button->Cancel() && button->acceptsInput()) {
        pressControl(app_, className_, button->key());
        return true;
      }
    }
  }
  return false;
}

}  // namespace corvalta::platform::qt
