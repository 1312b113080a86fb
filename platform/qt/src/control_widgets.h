#pragma once

#include <corvalta/platform/property.h>

#include <QString>

#include <string>
#include <string_view>

class QWidget;

namespace corvalta::platform::qt {

// Makes the widget that shows a control of the record class `className` ("StaticText",
// "Listbox", ...) as a child of `content`, with every property applied; nullptr for a class
// that has nothing to show (a timer, a socket).
QWidget* makeControlWidget(std::string_view className, const PropertyList& properties,
                           QWidget* content);

// Shows one property of a control on its widget. Properties that change nothing on the screen
// are ignored, and so are the colours, which are shown together (showColors).
void showControlProperty(QWidget* widget, std::string_view className, std::string_view name,
                         const PropertyValue& value);

// Qt leaves the Tab key only the radio button of a group that last took the focus, and takes
// it from the others then; each level is a Tab stop of its own, in the order of creation, so
// this gives it back to them once `focused` has the focus.
void keepRadioButtonsTabStops(QWidget* focused);

// Text of the view state (UTF-8, carriage return as line break) for Qt, and back.
QString toDisplayText(const std::string& text);
std::string fromDisplayText(const QString& text);

}  // namespace corvalta::platform::qt
