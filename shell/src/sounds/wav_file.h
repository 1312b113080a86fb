#pragma once

#include "synth.h"

#include <cstdint>
#include <vector>

namespace corvalta::shell::sounds {

// The bytes of a canonical WAV file: RIFF, one PCM format chunk (mono, 16 bits, sampleRate),
// one data chunk, little-endian throughout.
std::vector<std::uint8_t> wavBytes(const Samples& samples);

}  // namespace corvalta::shell::sounds
