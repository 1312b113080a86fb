#pragma once

namespace corvalta::core {

// The sound switch, as the Sound menu and the settings file set it: SoundFlag, then the check
// mark of the item that says so, then the other item's. The marks are those of the
// application's menu bar; without one, only the flag changes.
void setSound(bool on);

}  // namespace corvalta::core
