#pragma once

#include <cstdint>
#include <random>

namespace corvalta::platform {

// The framework's random source. A new one is seeded by the platform (see
// Application::newRandom); tests and the headless driver give a fixed seed or queue values.
class Random {
 public:
  Random();  // seeded from std::random_device
  explicit Random(std::uint64_t seed);
  virtual ~Random() = default;
  Random(const Random&) = delete;
  Random& operator=(const Random&) = delete;

  // A whole number from `min` to `max`, both included. The ends may come in either order.
  virtual std::int32_t InRange(std::int32_t min, std::int32_t max);

 private:
  std::mt19937_64 engine_;
};

}  // namespace corvalta::platform
