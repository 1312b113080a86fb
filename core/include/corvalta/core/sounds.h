#pragma once

#include <corvalta/platform/sound.h>

#include <cstdint>
#include <memory>

namespace corvalta::core {

// The three sound effects, each fetched from the application's sounds at its first use and
// kept; a sound that could not be had is asked for again at the next use.
constexpr std::int32_t kOK3Sound = 168;
constexpr std::int32_t kApplauseSound = 169;
constexpr std::int32_t kMicrowaveSound = 170;

std::shared_ptr<platform::Sound> OK3();
std::shared_ptr<platform::Sound> Applause();
std::shared_ptr<platform::Sound> Microwave();

// Lets go of the three sounds, in the order OK3, Applause, Microwave.
void releaseSounds();

}  // namespace corvalta::core
