#pragma once

#include <corvalta/platform/window_description.h>

#include <span>
#include <string_view>

namespace corvalta::app {

// The descriptions of the program's six window classes, built once on first use.
[[nodiscard]] std::span<const platform::WindowDescription> windowDescriptions();

// The description of a window class by its name ("Window1", "AboutBox", ...), or nullptr.
[[nodiscard]] const platform::WindowDescription* findWindowDescription(std::string_view className);
// The same for a class that must be there: a missing one throws NilObjectException.
[[nodiscard]] const platform::WindowDescription& windowDescription(std::string_view className);

}  // namespace corvalta::app
