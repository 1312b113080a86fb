#pragma once

#include <corvalta/platform/application.h>

#include <functional>

class QMenuBar;

namespace corvalta::platform::qt {

// The application's menu tree as a QMenuBar. An item whose Name has a handler runs it as a
// menu command through the dispatcher; the Edit items act on the focused text field; the
// QuitMenuItem runs `quit`. Each menu takes Text, Checked and Enabled from the tree as it
// opens, so a check mark set by a command shows the next time. "Cmd+X" shortcuts become the
// platform's standard keys (Ctrl on Linux and Windows, Command on macOS).
QMenuBar* makeMenuBar(Application& app, std::function<void()> quit);

// Brings every menu up to date with the tree, as if each were opened, so that what a screen
// reader finds in closed menus holds too.
void refreshMenuBar(Application& app, QMenuBar* bar);

}  // namespace corvalta::platform::qt
