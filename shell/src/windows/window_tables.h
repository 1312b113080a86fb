#pragma once

#include <corvalta/platform/window_description.h>

// One function per window class, each building its description from its table.
namespace corvalta::shell::windows {

platform::WindowDescription mainWindow();
platform::WindowDescription congratulationsWindow();
platform::WindowDescription aboutBox();
platform::WindowDescription helpWindow();
platform::WindowDescription selfTestWindow();
platform::WindowDescription updateWindow();

}  // namespace corvalta::shell::windows
