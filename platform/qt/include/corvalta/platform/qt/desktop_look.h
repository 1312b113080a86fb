#pragma once

class QString;

namespace corvalta::platform::qt {

// Qt's Fusion style, whose controls fit the windows' fixed places in pixels whatever the
// desktop, in the desktop's own colours, light or dark. A fixed light palette would keep the
// records' black text readable more simply, but would give a player who chose a dark desktop
// the one glaring window on it; the view turns the records' colours over instead
// (platform/qt/src/record_colors.h).
void useDesktopLook();

// Gives every window the application's icon `name`: the icon theme's when the icon is installed
// there, which the desktop may restyle, else the pictures built into the program under
// ":/icons/", so that a game started from its build tree is no generic window either.
void useApplicationIcon(const QString& name);

}  // namespace corvalta::platform::qt
