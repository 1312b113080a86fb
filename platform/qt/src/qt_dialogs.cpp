#include <corvalta/platform/qt/qt_dialogs.h>

#include "control_widgets.h"

#include <QAbstractButton>
#include <QDesktopServices>
#include <QMessageBox>
#include <QPushButton>
#include <QUrl>

namespace corvalta::platform::qt {
namespace {

QMessageBox::StandardButton standardButton(MsgBoxResult result) {
  switch (result) {
    case kMsgBoxOK: return QMessageBox::Ok;
    case kMsgBoxCancel: return QMessageBox::Cancel;
    case kMsgBoxAbort: return QMessageBox::Abort;
    case kMsgBoxRetry: return QMessageBox::Retry;
    case kMsgBoxIgnore: return QMessageBox::Ignore;
    case kMsgBoxYes: return QMessageBox::Yes;
    case kMsgBoxNo: return QMessageBox::No;
  }
  return QMessageBox::Ok;
}

QMessageBox::Icon boxIcon(MsgBoxIcon icon) {
  switch (icon) {
    case MsgBoxIcon::Stop: return QMessageBox::Critical;
    case MsgBoxIcon::Question: return QMessageBox::Question;
    case MsgBoxIcon::Caution: return QMessageBox::Warning;
    case MsgBoxIcon::Note: return QMessageBox::Information;
    case MsgBoxIcon::None: break;
  }
  return QMessageBox::NoIcon;
}

// The numbers of a message dialog's pictures: 0 note, 1 caution, 2 stop, 3 question.
QMessageBox::Icon dialogIcon(std::int32_t icon) {
  switch (icon) {
    case 0: return QMessageBox::Information;
    case 1: return QMessageBox::Warning;
    case 2: return QMessageBox::Critical;
    case 3: return QMessageBox::Question;
    default: return QMessageBox::NoIcon;
  }
}

// A box with no title shows none: Qt would put the application's name there instead.
QString boxTitle(const std::string& title) {
  return title.empty() ? QStringLiteral(" ") : toDisplayText(title);
}

// The desktop's other dialogs carry words on their buttons and no pictures.
void withoutButtonIcons(QMessageBox& box) {
  for (QAbstractButton* button : box.buttons()) {
    button->setIcon({});
  }
}

}  // namespace

MsgBoxResult QtDialogs::showMsgBox(const std::string& text, const MsgBoxStyle& style,
                                   const std::string& title) {
  QMessageBox box(boxIcon(style.icon), boxTitle(title), toDisplayText(text), QMessageBox::NoButton,
                  owner());
  for (std::size_t index = 0; index < style.buttons.size(); ++index) {
    auto* button = box.addButton(standardButton(style.buttons[index]));
    if (index == style.defaultButton) {
      box.setDefaultButton(button);
    }
  }
  withoutButtonIcons(box);
  box.exec();
  const auto pressed = box.standardButton(box.clickedButton());
  for (const auto result : style.buttons) {
    if (standardButton(result) == pressed) {
      return result;
    }
  }
  // Closed by the window's close box: what Escape would have pressed.
  const bool hasCancel = std::find(style.buttons.begin(), style.buttons.end(), kMsgBoxCancel) !=
                         style.buttons.end();
  return hasCancel ? kMsgBoxCancel : style.buttons.front();
}

MessageDialogChoice QtDialogs::showMessageDialog(const MessageDialog& dialog) {
  QMessageBox box(dialogIcon(dialog.Icon), boxTitle(dialog.Title), toDisplayText(dialog.Message),
                  QMessageBox::NoButton, owner());
  box.setInformativeText(toDisplayText(dialog.Explanation));
  struct Choice {
    const MessageDialogButton& button;
    QMessageBox::ButtonRole role;
    MessageDialogChoice choice;
  };
  const Choice choices[] = {
      {dialog.ActionButton, QMessageBox::AcceptRole, MessageDialogChoice::Action},
      {dialog.AlternateActionButton, QMessageBox::ActionRole, MessageDialogChoice::Alternate},
      {dialog.CancelButton, QMessageBox::RejectRole, MessageDialogChoice::Cancel},
  };
  std::vector<std::pair<QAbstractButton*, MessageDialogChoice>> shown;
  for (const auto& choice : choices) {
    if (!choice.button.Visible) {
      continue;
    }
    auto* button = box.addButton(toDisplayText(choice.button.Caption), choice.role);
    if (choice.button.Default) {
      box.setDefaultButton(button);
    }
    if (choice.button.Cancel) {
      box.setEscapeButton(button);
    }
    shown.emplace_back(button, choice.choice);
  }
  withoutButtonIcons(box);
  box.exec();
  for (const auto& [button, choice] : shown) {
    if (button == box.clickedButton()) {
      return choice;
    }
  }
  return MessageDialogChoice::Cancel;
}

void QtUrlOpener::open(const std::string& url) {
  QDesktopServices::openUrl(QUrl(QString::fromStdString(url)));
}

}  // namespace corvalta::platform::qt
