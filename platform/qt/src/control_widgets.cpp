#include "control_widgets.h"

#include "list_widget.h"
#include "record_colors.h"

#include <corvalta/platform/record.h>
#include <corvalta/platform/record_names.h>

#include <QApplication>
#include <QButtonGroup>
#include <QFrame>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>

namespace corvalta::platform::qt {
namespace {

// A caption shows "&" as itself: the records carry no access keys.
QString caption(const std::string& text) { return toDisplayText(text).replace('&', "&&"); }

// A StaticText's TextAlign: 0 left, 1 centred, 2 right.
Qt::Alignment textAlignment(std::int32_t align) {
  switch (align) {
    case 1: return Qt::AlignHCenter;
    case 2: return Qt::AlignRight;
    default: return Qt::AlignLeft;
  }
}

// An EditField's Alignment: 0 the default (left), 1 left, 2 centred, 3 right.
Qt::Alignment fieldAlignment(std::int32_t align) {
  switch (align) {
    case 2: return Qt::AlignHCenter;
    case 3: return Qt::AlignRight;
    default: return Qt::AlignLeft;
  }
}

// Font properties arrive one at a time; each changes only its own part of the font. "System"
// and size 0 mean the platform's own font and size. Sizes are pixels: the windows are laid
// out in pixels, and a point would grow with the screen's resolution.
bool applyFontProperty(QFont& font, std::string_view name, const PropertyValue& value) {
  if (name == property::TextFont) {
    const auto& family = std::get<std::string>(value);
    font.setFamily(family == "System" ? QApplication::font().family() : QString::fromStdString(family));
  } else if (name == property::TextSize) {
    const auto size = std::get<std::int32_t>(value);
    if (size > 0) {
      font.setPixelSize(size);
    } else {
      font.setPointSizeF(QApplication::font().pointSizeF());
    }
  } else if (name == property::Bold) {
    font.setBold(std::get<bool>(value));
  } else if (name == property::Italic) {
    font.setItalic(std::get<bool>(value));
  } else if (name == property::Underline) {
    font.setUnderline(std::get<bool>(value));
  } else {
    return false;
  }
  return true;
}

bool showFontProperty(QWidget* widget, std::string_view name, const PropertyValue& value) {
  QFont font = widget->font();
  if (!applyFontProperty(font, name, value)) {
    return false;
  }
  widget->setFont(font);
  return true;
}

bool showPlaceProperty(QWidget* widget, std::string_view name, const PropertyValue& value) {
  const auto* number = std::get_if<std::int32_t>(&value);
  if (number == nullptr) {
    return false;
  }
  if (name == property::Left) {
    widget->move(*number, widget->y());
  } else if (name == property::Top) {
    widget->move(widget->x(), *number);
  } else if (name == property::Width) {
    widget->resize(*number, widget->height());
  } else if (name == property::Height) {
    widget->resize(widget->width(), *number);
  } else {
    return false;
  }
  return true;
}

void showStaticText(QLabel* label, std::string_view name, const PropertyValue& value) {
  if (name == property::Text) {
    label->setText(toDisplayText(std::get<std::string>(value)));
  } else if (name == property::TextAlign) {
    label->setAlignment(textAlignment(std::get<std::int32_t>(value)) | Qt::AlignTop);
  } else if (name == property::MultiLine) {
    label->setWordWrap(std::get<bool>(value));
  }
}

void showLineEdit(QLineEdit* field, std::string_view name, const PropertyValue& value) {
  if (name == property::Text) {
    const auto text = toDisplayText(std::get<std::string>(value));
    if (field->text() != text) {
      field->setText(text);
    }
  } else if (name == property::Alignment) {
    field->setAlignment(fieldAlignment(std::get<std::int32_t>(value)) | Qt::AlignVCenter);
  } else if (name == property::Border) {
    field->setFrame(std::get<bool>(value));
  } else if (name == property::ReadOnly) {
    field->setReadOnly(std::get<bool>(value));
  } else if (name == property::Password) {
    field->setEchoMode(std::get<bool>(value) ? QLineEdit::Password : QLineEdit::Normal);
  } else if (name == property::LimitText) {
    const auto limit = std::get<std::int32_t>(value);
    field->setMaxLength(limit > 0 ? limit : 32767);
  }
}

void showTextEdit(QPlainTextEdit* field, std::string_view name, const PropertyValue& value) {
  if (name == property::Text) {
    const auto text = toDisplayText(std::get<std::string>(value));
    if (field->toPlainText() != text) {
      field->setPlainText(text);
    }
  } else if (name == property::Border) {
    field->setFrameShape(std::get<bool>(value) ? QFrame::StyledPanel : QFrame::NoFrame);
  } else if (name == property::ReadOnly) {
    field->setReadOnly(std::get<bool>(value));
  } else if (name == property::AcceptTabs) {
    field->setTabChangesFocus(!std::get<bool>(value));
  } else if (name == property::ScrollBarVertical) {
    field->setVerticalScrollBarPolicy(std::get<bool>(value) ? Qt::ScrollBarAsNeeded
                                                            : Qt::ScrollBarAlwaysOff);
  }
}

void showEditField(QWidget* widget, std::string_view name, const PropertyValue& value) {
  if (auto* line = qobject_cast<QLineEdit*>(widget)) {
    showLineEdit(line, name, value);
  } else if (auto* text = qobject_cast<QPlainTextEdit*>(widget)) {
    showTextEdit(text, name, value);
  }
}

void showPushButton(QPushButton* button, std::string_view name, const PropertyValue& value) {
  if (name == property::Caption) {
    button->setText(caption(std::get<std::string>(value)));
  } else if (name == property::Default) {
    button->setDefault(std::get<bool>(value));
  }
}

void showRadioButton(QRadioButton* button, std::string_view name, const PropertyValue& value) {
  if (name == property::Caption) {
    button->setText(caption(std::get<std::string>(value)));
  } else if (name == property::Value) {
    button->setChecked(std::get<bool>(value));
  }
}

void showProgressBar(QProgressBar* bar, std::string_view name, const PropertyValue& value) {
  if (name == property::Value) {
    bar->setValue(std::get<std::int32_t>(value));
  } else if (name == property::Maximum) {
    // A maximum of 0 runs the bar without a known end.
    bar->setMaximum(std::get<std::int32_t>(value));
  }
}

// The radio buttons under one parent: a group that is no exclusive one, since the view state
// clears the siblings and the widgets follow, but that makes them radio buttons to a screen
// reader and lets the arrow keys move among them.
QButtonGroup* groupNamed(QWidget* content, const std::string& parent) {
  const auto name = QString::fromStdString(parent);
  for (auto* group : content->findChildren<QButtonGroup*>(Qt::FindDirectChildrenOnly)) {
    if (group->objectName() == name) return group;
  }
  auto* group = new QButtonGroup(content);
  group->setObjectName(name);
  group->setExclusive(false);
  return group;
}

QWidget* newWidget(RecordClass recordClass, const PropertyList& properties, QWidget* content) {
  switch (recordClass) {
    case RecordClass::StaticText: {
      auto* label = new QLabel(content);
      label->setTextFormat(Qt::PlainText);
      label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
      return label;
    }
    case RecordClass::EditField: {
      const bool multiLine =
          std::any_of(properties.begin(), properties.end(), [](const Property& p) {
            return p.name == property::MultiLine && std::get<bool>(p.value);
          });
      if (multiLine) {
        auto* text = new QPlainTextEdit(content);
        text->setLineWrapMode(QPlainTextEdit::WidgetWidth);
        text->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        return text;
      }
      auto* line = new QLineEdit(content);
      line->setTextMargins(0, 0, 0, 0);
      return line;
    }
    case RecordClass::PushButton: {
      auto* button = new QPushButton(content);
      button->setAutoDefault(false);
      return button;
    }
    case RecordClass::RadioButton: {
      auto* button = new QRadioButton(content);
      const auto* parent = findProperty(properties, property::InitialParent);
      groupNamed(content, parent != nullptr ? std::get<std::string>(*parent) : std::string())
          ->addButton(button);
      button->setFocusPolicy(Qt::StrongFocus);
      return button;
    }
    case RecordClass::GroupBox: return new QGroupBox(content);
    case RecordClass::Listbox: return new ListWidget(content);
    case RecordClass::Separator: {
      auto* line = new QFrame(content);
      line->setFrameShadow(QFrame::Sunken);
      return line;
    }
    case RecordClass::ProgressBar: {
      auto* bar = new QProgressBar(content);
      bar->setTextVisible(false);
      return bar;
    }
    default: return nullptr;
  }
}

}  // namespace

void keepRadioButtonsTabStops(QWidget* focused) {
  const auto* button = qobject_cast<QRadioButton*>(focused);
  if (button == nullptr || button->group() == nullptr) {
    return;
  }
  for (QAbstractButton* member : button->group()->buttons()) {
    member->setFocusPolicy(Qt::StrongFocus);
  }
}

QString toDisplayText(const std::string& text) {
  return QString::fromStdString(text).replace(QLatin1String("\r\n"), QLatin1String("\n")).replace('\r', '\n');
}

std::string fromDisplayText(const QString& text) {
  return QString(text).replace('\n', '\r').toStdString();
}

QWidget* makeControlWidget(std::string_view className, const PropertyList& properties,
                           QWidget* content) {
  const auto recordClass = recordClassNamed(className);
  auto* widget = recordClass ? newWidget(*recordClass, properties, content) : nullptr;
  if (widget == nullptr) {
    return nullptr;
  }
  // The font whole and first: set a part at a time, it passes through fonts that a list's
  // header measures itself in, and the platform's bold font is loaded for nothing.
  QFont font = widget->font();
  for (const auto& property : properties) {
    applyFontProperty(font, property.name, property.value);
  }
  widget->setFont(font);
  for (const auto& property : properties) {
    showControlProperty(widget, className, property.name, property.value);
  }
  showColors(widget, className, properties);
  if (auto* line = qobject_cast<QFrame*>(widget); line != nullptr && recordClass == RecordClass::Separator) {
    line->setFrameShape(widget->width() < widget->height() ? QFrame::VLine : QFrame::HLine);
  }
  return widget;
}

void showControlProperty(QWidget* widget, std::string_view className, std::string_view name,
                         const PropertyValue& value) {
  if (name == property::Visible) {
    widget->setVisible(std::get<bool>(value));
    return;
  }
  if (name == property::Enabled) {
    widget->setEnabled(std::get<bool>(value));
    return;
  }
  if (name == property::HelpTag) {
    widget->setToolTip(toDisplayText(std::get<std::string>(value)));
    return;
  }
  if (showPlaceProperty(widget, name, value) || showFontProperty(widget, name, value)) {
    return;
  }
  switch (recordClassNamed(className).value_or(RecordClass::Control)) {
    case RecordClass::StaticText: showStaticText(qobject_cast<QLabel*>(widget), name, value); break;
    case RecordClass::EditField: showEditField(widget, name, value); break;
    case RecordClass::PushButton:
      showPushButton(qobject_cast<QPushButton*>(widget), name, value);
      break;
    case RecordClass::RadioButton:
      showRadioButton(qobject_cast<QRadioButton*>(widget), name, value);
      break;
    case RecordClass::GroupBox:
      if (name == property::Caption) {
        qobject_cast<QGroupBox*>(widget)->setTitle(caption(std::get<std::string>(value)));
      }
      break;
    case RecordClass::Listbox: static_cast<ListWidget*>(widget)->showProperty(name, value); break;
    case RecordClass::ProgressBar:
      showProgressBar(qobject_cast<QProgressBar*>(widget), name, value);
      break;
    default: break;
  }
}

}  // namespace corvalta::platform::qt
