#pragma once

#include <corvalta/platform/property.h>

#include <QColor>
#include <QPalette>

#include <string_view>

class QWidget;

// The records give their colours for a light desktop: black text, white fields, a red banner.
// Under a dark desktop style the windows go dark with it rather than keep a light look of their
// own: a player who chose dark windows, for the eyes or for a dark room, would otherwise get
// the one bright window on the screen, half of it (menus, buttons, the score list) in the
// desktop's colours and half in the records'. So under a dark palette a record's colour is
// turned over, its lightness mirrored and its hue kept: black text turns white, a white field
// black, and the banner stays red; text that still would not stand out from its ground is
// lightened until it does.
namespace corvalta::platform::qt {

// Contrast of two colours as WCAG measures it: from 1 (alike) to 21 (black on white).
double contrastRatio(const QColor& a, const QColor& b);

// Whether the palette puts light text on a dark ground.
bool isDark(const QPalette& palette);

// A ground colour of a record (a field's or a window's BackColor) as shown under `palette`.
QColor shownGround(const Color& recorded, const QPalette& palette);

// A text colour of a record as shown on `ground` under `palette`.
QColor shownText(const Color& recorded, const QPalette& palette, const QColor& ground);

// Shows the TextColor and BackColor of a control of the record class `className` among
// `properties` on its widget, under the palette of the widget's window.
void showColors(QWidget* widget, std::string_view className, const PropertyList& properties);

}  // namespace corvalta::platform::qt
