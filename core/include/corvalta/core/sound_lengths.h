#pragma once

#include <corvalta/core/sounds.h>

#include <chrono>
#include <cstdint>
#include <map>

// How long each of the game's sounds plays. The build makes them this long, and the headless
// view lets them play this long on its virtual clock, so that a scripted game keeps the
// desktop game's timing.
namespace corvalta::core {

inline constexpr std::chrono::milliseconds kOK3Length{240};
inline constexpr std::chrono::milliseconds kMicrowaveLength{1200};
inline constexpr std::chrono::milliseconds kApplauseLength{2500};

// The lengths by sound number, as the headless view takes them.
inline std::map<std::int32_t, std::chrono::milliseconds> soundLengths() {
  return {{kOK3Sound, kOK3Length}, {kApplauseSound, kApplauseLength}, {kMicrowaveSound, kMicrowaveLength}};
}

}  // namespace corvalta::core
