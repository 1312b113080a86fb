#include <corvalta/platform/random.h>

#include <algorithm>
#include <cstdint>

namespace corvalta::platform {

Random::Random() : engine_(std::random_device{}()) {}

Random::Random(std::uint64_t seed) : engine_(seed) {}

std::int32_t Random::InRange(std::int32_t min, std::int32_t max) {
  std::uniform_int_distribution<std::int32_t> draw(std::min(min, max), std::max(min, max));
  return draw(engine_);
}

}  // namespace corvalta::platform
