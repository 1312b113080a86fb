#pragma once

#include <cstdint>
#include <string>
#include <string_view>
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

// The value of the named property, or nullptr when the list has none.
[[nodiscard]] const PropertyValue* findProperty(const PropertyList& properties, std::string_view name);

// What `value` holds when it is there and of type T, else `fallback`.
template <class T>
[[nodiscard]] T valueOr(const PropertyValue* value, T fallback) {
  const auto* held = value != nullptr ? std::get_if<T>(value) : nullptr;
  return held != nullptr ? *held : fallback;
}

// Gives the named property this value, appending it when the list has none; false when it
// held that value already, so that callers announce only real changes.
bool assignProperty(PropertyList& properties, std::string_view name, PropertyValue value);

}  // namespace corvalta::platform
