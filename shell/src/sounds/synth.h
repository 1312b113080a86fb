#pragma once

#include <cstdint>
#include <vector>

// The game's three sound effects, made from nothing but arithmetic so that the repository
// carries no recorded sound. The same build makes the same samples, bit for bit.
namespace corvalta::shell::sounds {

inline constexpr int sampleRate = 44100;

// Mono, signed 16-bit samples at sampleRate.
using Samples = std::vector<std::int16_t>;

// A bright two-note chime for a right answer. Short, since every right answer waits for it.
Samples makeOK3();
// Three beeps that say the time is up.
Samples makeMicrowave();
// A crowd clapping, for a new high score.
Samples makeApplause();

}  // namespace corvalta::shell::sounds
