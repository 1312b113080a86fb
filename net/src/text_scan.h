#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
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

// Where a header block ends: the first line end directly followed by an empty line, written
// as CR LF CR LF, LF LF or CR CR. `position` is where that last line end starts, `lineEnd` its
// length, so the block's text is bytes[0, position) and 2 * lineEnd bytes follow it.
struct HeaderBlockEnd {
  std::size_t position = 0;
  std::size_t lineEnd = 0;
};

// Searches bytes[from, end). The earliest match wins whatever kind it is, so the answer never
// depends on how the bytes were cut into pieces: a caller that saw no end in a prefix may go on
// from three bytes before that prefix's end.
inline std::optional<HeaderBlockEnd> findHeaderBlockEnd(std::string_view bytes, std::size_t from) {
  for (std::size_t at = bytes.find_first_of("\r\n", from); at != std::string_view::npos;
       at = bytes.find_first_of("\r\n", at + 1)) {
    const std::string_view rest = bytes.substr(at);
    if (rest.starts_with("\n\n") || rest.starts_with("\r\r")) {
      return HeaderBlockEnd{at, 1};
    }
    if (rest.starts_with("\r\n\r\n")) {
      return HeaderBlockEnd{at, 2};
    }
  }
  return std::nullopt;
}

}  // namespace corvalta::net::detail
