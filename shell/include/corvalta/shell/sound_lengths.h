#pragma once

#include <chrono>

// How long each of the game's sounds plays. The build makes them this long, and the headless
// view lets them play this long on its virtual clock, so that a scripted game keeps the
// desktop game's timing.
namespace corvalta::shell {

inline constexpr std::chrono::milliseconds kOK3Length{240};
inline constexpr std::chrono::milliseconds kMicrowaveLength{1200};
inline constexpr std::chrono::milliseconds kApplauseLength{2500};

}  // namespace corvalta::shell
