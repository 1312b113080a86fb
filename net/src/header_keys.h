#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace corvalta::net::detail {

// Header names compare without regard to ASCII case; bytes above 127 compare as they are.
inline std::string foldCase(std::string_view text) {
  std::string folded(text);
  for (char& c : folded) {
    if (c >= 'A' && c <= 'Z') {
      c = static_cast<char>(c - 'A' + 'a');
    }
  }
  return folded;
}

// The key of value number `number` of a name: the name itself for 0, else "name:number".
inline std::string keyOf(std::string_view name, std::int32_t number) {
  std::string key(name);
  if (number != 0) {
    key += ':';
    key += std::to_string(number);
  }
  return key;
}

// The text before the first colon.
inline std::string_view baseName(std::string_view key) { return key.substr(0, key.find(':')); }

}  // namespace corvalta::net::detail
