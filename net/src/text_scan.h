#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string_view>

namespace corvalta::net::detail {

// The line end a text uses: CR LF if it occurs anywhere, else LF, else CR, else CR LF.
inline std::string_view lineEndOf(std::string_view text) {
  if (text.find("\r\n") != std::string_view::npos) {
    return "\r\n";
  }
  if (text.find('\n') != std::string_view::npos) {
    return "\n";
  }
  if (text.find('\r') != std::string_view::npos) {
    return "\r";
  }
  return "\r\n";
}

// The integer that leads the text (an optional sign, then digits), 0 when none leads. Values
// beyond the type's range stop at its ends: a server can't make the client overflow.
template <typename Integer>
Integer leadingInteger(std::string_view text) {
  std::size_t at = 0;
  const bool negative = !text.empty() && text[0] == '-';
  if (!text.empty() && (text[0] == '-' || text[0] == '+')) {
    at = 1;
  }
  constexpr Integer kMax = std::numeric_limits<Integer>::max();
  Integer value = 0;
  for (; at < text.size() && text[at] >= '0' && text[at] <= '9'; ++at) {
    const auto digit = static_cast<Integer>(text[at] - '0');
    value = value > (kMax - digit) / 10 ? kMax : static_cast<Integer>(value * 10 + digit);
  }
  return negative ? static_cast<Integer>(-value) : value;
}

}  // namespace corvalta::net::detail
