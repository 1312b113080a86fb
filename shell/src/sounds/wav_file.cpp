#include "wav_file.h"

#include <string_view>

namespace corvalta::shell::sounds {
namespace {

void putLittle(std::vector<std::uint8_t>& out, std::uint32_t value, int bytes) {
  for (int k = 0; k < bytes; ++k) {
    out.push_back(static_cast<std::uint8_t>(value >> (8 * k)));
  }
}

void putTag(std::vector<std::uint8_t>& out, std::string_view tag) {
  out.insert(out.end(), tag.begin(), tag.end());
}

}  // namespace

std::vector<std::uint8_t> wavBytes(const Samples& samples) {
  constexpr std::uint32_t bytesPerSample = 2;
  const auto dataSize = static_cast<std::uint32_t>(samples.size() * bytesPerSample);
  std::vector<std::uint8_t> out;
  out.reserve(44 + dataSize);
  putTag(out, "RIFF");
  putLittle(out, 36 + dataSize, 4);
  putTag(out, "WAVE");
  putTag(out, "fmt ");
  putLittle(out, 16, 4);                               // size of the format chunk
  putLittle(out, 1, 2);                                // PCM
  putLittle(out, 1, 2);                                // mono
  putLittle(out, sampleRate, 4);
  putLittle(out, sampleRate * bytesPerSample, 4);      // bytes per second
  putLittle(out, bytesPerSample, 2);                   // bytes per frame
  putLittle(out, 16, 2);                               // bits per sample
  putTag(out, "data");
  putLittle(out, dataSize, 4);
  for (const auto sample : samples) {
    putLittle(out, static_cast<std::uint16_t>(sample), 2);
  }
  return out;
}

}  // namespace corvalta::shell::sounds
