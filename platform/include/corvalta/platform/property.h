#pragma once

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

namespace corvalta::platform {

struct Color {
  std::uint8_t red = 0;
  std::uint8_t green = 0;
  std::uint8_t blue = 0;
  friend bool operator==(const Color&, const Color&) = default;
};

// The value of one property of a window or control, as a description record carries it.
using PropertyValue = std::variant<bool, std::int32_t, std::string, Color>;

struct Property {
  std::string name;
  PropertyValue value;
  friend bool operator==(const Property&, const Property&) = default;
};

// The properties of one object in the order in which they are applied.
using PropertyList = std::vector<Property>;

}  // namespace corvalta::platform
