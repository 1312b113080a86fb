#include "menu_bar_widget.h"

#include <corvalta/platform/menu_item_classes.h>
#include <corvalta/platform/user_input.h>

#include <QActionGroup>
#include <QApplication>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>

#include <algorithm>
#include <map>
#include <optional>

namespace corvalta::platform::qt {
namespace {

enum class EditCommand { Undo, Cut, Copy, Paste, Clear, SelectAll };

// The framework serves the Edit menu by the items' names.
std::optional<EditCommand> editCommandNamed(const std::string& name) {
  static const std::map<std::string, EditCommand> commands = {
      {"EditUndo", EditCommand::Undo},   {"EditCut", EditCommand::Cut},
      {"EditCopy", EditCommand::Copy},   {"EditPaste", EditCommand::Paste},
      {"EditClear", EditCommand::Clear}, {"EditSelectAll", EditCommand::SelectAll},
  };
  const auto found = commands.find(name);
  return found == commands.end() ? std::nullopt : std::optional(found->second);
}

bool canEdit(EditCommand command, QWidget* focus) {
  if (auto* line = qobject_cast<QLineEdit*>(focus)) {
    switch (command) {
      case EditCommand::Undo: return line->isUndoAvailable();
      case EditCommand::Cut:
      case EditCommand::Clear: return line->hasSelectedText() && !line->isReadOnly();
      case EditCommand::Copy: return line->hasSelectedText();
      case EditCommand::Paste: return !line->isReadOnly();
      case EditCommand::SelectAll: return !line->text().isEmpty();
    }
  }
  if (auto* text = qobject_cast<QPlainTextEdit*>(focus)) {
    const bool selected = text->textCursor().hasSelection();
    switch (command) {
      case EditCommand::Undo: return text->document()->isUndoAvailable();
      case EditCommand::Cut:
      case EditCommand::Clear: return selected && !text->isReadOnly();
      case EditCommand::Copy: return selected;
      case EditCommand::Paste: return text->canPaste();
      case EditCommand::SelectAll: return !text->document()->isEmpty();
    }
  }
  return false;
}

// The field's own edits: the field reports the change to the view state as the user's typing.
void edit(EditCommand command, QWidget* focus) {
  if (auto* line = qobject_cast<QLineEdit*>(focus)) {
    switch (command) {
      case EditCommand::Undo: line->undo(); break;
      case EditCommand::Cut: line->cut(); break;
      case EditCommand::Copy: line->copy(); break;
      case EditCommand::Paste: line->paste(); break;
      case EditCommand::Clear: line->del(); break;
      case EditCommand::SelectAll: line->selectAll(); break;
    }
  } else if (auto* text = qobject_cast<QPlainTextEdit*>(focus)) {
    switch (command) {
      case EditCommand::Undo: text->undo(); break;
      case EditCommand::Cut: text->cut(); break;
      case EditCommand::Copy: text->copy(); break;
      case EditCommand::Paste: text->paste(); break;
      case EditCommand::Clear: text->textCursor().removeSelectedText(); break;
      case EditCommand::SelectAll: text->selectAll(); break;
    }
  }
}

// "Cmd+Q" and the like: the platform's standard key where there is one, else Ctrl with the
// key, which Qt shows as Command on macOS.
QKeySequence shortcutOf(const std::string& text) {
  const auto shortcut = QString::fromStdString(text);
  if (!shortcut.startsWith(QLatin1String("Cmd+"))) {
    return QKeySequence(shortcut);
  }
  const auto key = shortcut.mid(4);
  static const std::map<QString, QKeySequence::StandardKey> standard = {
      {"Q", QKeySequence::Quit}, {"Z", QKeySequence::Undo},  {"X", QKeySequence::Cut},
      {"C", QKeySequence::Copy}, {"V", QKeySequence::Paste}, {"A", QKeySequence::SelectAll},
  };
  const auto found = standard.find(key.toUpper());
  return found != standard.end() ? QKeySequence(found->second) : QKeySequence("Ctrl+" + key);
}

const MenuItem* itemOf(Application& app, const QAction* action) {
  if (action->isSeparator() || app.MenuBar() == nullptr) {
    return nullptr;
  }
  return app.MenuBar()->Lookup(action->objectName().toStdString());
}

// A menu that holds a checked item is a choice among its items, as Sound On and Sound Off
// are: each can be checked, and checking one clears the others, also for a screen reader.
bool offersChoice(Application& app, QMenu* menu) {
  const auto actions = menu->actions();
  const bool choice = std::any_of(actions.begin(), actions.end(), [&app](const QAction* action) {
    const MenuItem* item = itemOf(app, action);
    return item != nullptr && item->Checked;
  });
  if (choice && menu->findChild<QActionGroup*>() == nullptr) {
    auto* group = new QActionGroup(menu);
    for (QAction* action : actions) {
      if (!action->isSeparator()) group->addAction(action);
    }
  }
  return choice;
}

// Each menu's items are brought up to date with the tree as the menu opens.
void refreshMenu(Application& app, QMenu* menu) {
  const bool choice = offersChoice(app, menu);
  for (QAction* action : menu->actions()) {
    const MenuItem* item = itemOf(app, action);
    if (item == nullptr) {
      continue;
    }
    const auto& name = item->Name;
    action->setText(QString::fromStdString(item->Text));
    action->setCheckable(choice);
    action->setChecked(item->Checked);
    action->setVisible(item->Visible);
    if (const auto command = editCommandNamed(name)) {
      action->setEnabled(canEdit(*command, QApplication::focusWidget()));
    } else {
      // An item with a handler is enabled whenever its menu is shown.
      action->setEnabled(item->Enabled || app.hasMenuHandler(name) ||
                         dynamic_cast<const QuitMenuItem*>(item) != nullptr);
    }
  }
}

QAction* makeAction(Application& app, const MenuItem& item, const std::function<void()>& quit,
                    QMenu* menu) {
  if (item.Text == "-") {
    return menu->addSeparator();
  }
  auto* action = menu->addAction(QString::fromStdString(item.Text));
  action->setObjectName(QString::fromStdString(item.Name));
  action->setShortcut(shortcutOf(item.KeyboardShortcut));
  // The keys work from every window of the program, not only the one with the menu bar.
  action->setShortcutContext(Qt::ApplicationShortcut);
  action->setMenuRole(QAction::NoRole);
  const std::string name = item.Name;
  if (dynamic_cast<const QuitMenuItem*>(&item) != nullptr) {
    action->setMenuRole(QAction::QuitRole);
  } else if (dynamic_cast<const AppleMenuItem*>(&item) != nullptr) {
    action->setMenuRole(QAction::AboutRole);
  }
  if (const auto command = editCommandNamed(name)) {
    QObject::connect(action, &QAction::triggered, action,
                     [command = *command] { edit(command, QApplication::focusWidget()); });
  } else {
    // A command with a handler runs it; the quit item without one runs the platform's quit.
    const bool quits = dynamic_cast<const QuitMenuItem*>(&item) != nullptr;
    QObject::connect(action, &QAction::triggered, action, [&app, name, quits, quit] {
      if (quits && !app.hasMenuHandler(name)) {
        quit();
      } else {
        chooseMenuItem(app, name);
      }
    });
  }
  return action;
}

}  // namespace

QMenuBar* makeMenuBar(Application& app, std::function<void()> quit) {
  auto* bar = new QMenuBar;
  const MenuItem* root = app.MenuBar();
  for (std::size_t index = 0; root != nullptr && index < root->Count(); ++index) {
    const MenuItem* entry = root->Item(index);
    QMenu* menu = bar->addMenu(QString::fromStdString(entry->Text));
    menu->setObjectName(QString::fromStdString(entry->Name));
    for (std::size_t child = 0; child < entry->Count(); ++child) {
      makeAction(app, *entry->Item(child), quit, menu);
    }
    QObject::connect(menu, &QMenu::aboutToShow, menu, [&app, menu] { refreshMenu(app, menu); });
  }
  refreshMenuBar(app, bar);
  return bar;
}

void refreshMenuBar(Application& app, QMenuBar* bar) {
  for (QAction* entry : bar->actions()) {
    if (QMenu* menu = entry->menu()) refreshMenu(app, menu);
  }
}

}  // namespace corvalta::platform::qt
