#pragma once

namespace corvalta::platform::qt {

// The windows are drawn as their descriptions give them: black text on light ground. Under a
// dark desktop theme that text would vanish, so the program brings its own light look (Qt's
// Fusion style with its standard palette) and takes no colours from the desktop.
void useLightLook();

}  // namespace corvalta::platform::qt
