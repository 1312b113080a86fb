#pragma once

#include <corvalta/platform/application.h>

#include <functional>

namespace corvalta::app {

// Called once the game stands (Window1 open) and before the loop runs.
using DesktopReady = std::function<void(platform::Application& app)>;

// The desktop game from start to end: a QApplication with the light look, the Qt services,
// the view, then the program's start-up, the loop and its shutdown.
// Returns the exit status. A start on the configuration folder of a game that runs brings that
// game to the front and returns 0 at once. The environment variable CORVALTA_SEED, for tests,
// fixes the seed of the game's random source.
int runDesktop(int argc, char** argv, const DesktopReady& ready = {});

}  // namespace corvalta::app
