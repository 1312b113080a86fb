#pragma once

#include <QString>

namespace corvalta::platform {
class PaneChild;
class Window;
}  // namespace corvalta::platform

namespace corvalta::platform::qt {

// The name that a screen reader speaks for a control that shows no caption of its own (a
// field, a list, a progress bar), found in the window's description as a sighted player finds
// it: the nearest label with words in it that stands just before the control, to its left on
// the same line or just above it; else the control's own name in words ("SubAnswer1" is
// "Sub Answer 1"); else, for a control that bears only a numbered class name ("EditField1"),
// its window's. Empty for the other controls: Qt speaks their captions and texts.
QString spokenName(const Window& window, const PaneChild& control);

}  // namespace corvalta::platform::qt
