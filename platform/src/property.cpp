#include <corvalta/platform/property.h>

#include <algorithm>

namespace corvalta::platform {

const PropertyValue* findProperty(const PropertyList& properties, std::string_view name) {
  const auto found = std::find_if(properties.begin(), properties.end(),
                                  [&](const Property& p) { return p.name == name; });
  return found == properties.end() ? nullptr : &found->value;
}

bool assignProperty(PropertyList& properties, std::string_view name, PropertyValue value) {
  auto found = std::find_if(properties.begin(), properties.end(),
                            [&](const Property& p) { return p.name == name; });
  if (found == properties.end()) {
    properties.push_back({std::string(name), std::move(value)});
    return true;
  }
  if (found->value == value) return false;
  found->value = std::move(value);
  return true;
}

}  // namespace corvalta::platform
