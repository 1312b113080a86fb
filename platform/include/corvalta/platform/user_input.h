#pragma once

#include <corvalta/platform/dispatcher.h>

#include <cstdint>
#include <string>

namespace corvalta::platform {

class Application;

// What a user does, addressed by window class and control name and handed to the
// dispatcher, which delivers it now or later or refuses it (a modal window is up). The
// window and control are looked up when the input is delivered; if either is gone by then,
// the input does nothing. A control that does not accept input ignores it.

// A click: a push button raises Action, a radio button turns on, a field takes the focus.
Dispatcher::Delivery pressControl(Application& app, std::string windowClass, std::string control);
// Selects all of a field's text and types `text` in its place, character by character.
Dispatcher::Delivery typeText(Application& app, std::string windowClass, std::string control,
                              std::string text);
// The Return key: presses the window's default button, if it has one that accepts input.
Dispatcher::Delivery pressReturn(Application& app, std::string windowClass);
// A cell of a list edited by the user: raises CellTextChange.
Dispatcher::Delivery editCell(Application& app, std::string windowClass, std::string control,
                              std::int32_t row, std::int32_t column, std::string text);
// The window's close box.
Dispatcher::Delivery closeWindow(Application& app, std::string windowClass);
// A menu command: runs the handler registered under the item's name.
Dispatcher::Delivery chooseMenuItem(Application& app, std::string itemName);

}  // namespace corvalta::platform
