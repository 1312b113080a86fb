#include "sounds/synth.h"
#include "sounds/wav_file.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace corvalta::shell::sounds {
namespace {

// The file is a canonical little-endian PCM WAV that any player reads.
TEST(SoundFiles, WavBytesAreCanonicalPcm) {
  const std::vector<std::uint8_t> expected = {
      'R', 'I', 'F', 'F', 40, 0, 0, 0, 'W', 'A', 'V', 'E',        //
      'f', 'm', 't', ' ', 16, 0, 0, 0, 1, 0, 1, 0,                //
      0x44, 0xAC, 0, 0, 0x88, 0x58, 0x01, 0, 2, 0, 16, 0,         //
      'd', 'a', 't', 'a', 4, 0, 0, 0, 0x01, 0x00, 0xFE, 0xFF,
  };
  EXPECT_EQ(wavBytes({1, -2}), expected);
}

// Each effect has the length its moment needs, is loud but never clips, and starts
// and ends at rest so that it does not click.
TEST(SoundFiles, EffectsHaveTheirLengthsAndLevels) {
  struct Row {
    const char* name;
    Samples samples;
    double shortest, longest;
  };
  const Row rows[] = {{"OK3", makeOK3(), 0.1, 0.3},
                      {"Microwave", makeMicrowave(), 1.0, 1.5},
                      {"Applause", makeApplause(), 2.0, 3.0}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    const double seconds = static_cast<double>(row.samples.size()) / sampleRate;
    EXPECT_GE(seconds, row.shortest);
    EXPECT_LE(seconds, row.longest);
    int peak = 0;
    for (const auto sample : row.samples) {
      peak = std::max(peak, std::abs(static_cast<int>(sample)));
    }
    EXPECT_GT(peak, 16000);
    EXPECT_LT(peak, 32000);
    EXPECT_LT(std::abs(row.samples.front()), 330);
    EXPECT_LT(std::abs(row.samples.back()), 330);
  }
}

}  // namespace
}  // namespace corvalta::shell::sounds
