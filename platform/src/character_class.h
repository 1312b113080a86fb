#pragma once

#include <string_view>

namespace corvalta::platform {

// Classes of one character of UTF-8 text, by the C library's Unicode tables, so that a field
// for names takes the letters and digits of every script. Bytes that are no whole character
// are in no class.
[[nodiscard]] bool isLetterOrDigit(std::string_view character);
[[nodiscard]] bool isDigit(std::string_view character);
[[nodiscard]] bool isPrintable(std::string_view character);
// A mark that combines with the character before it into what a reader sees as one: an accent,
// a vowel sign, a virama.
[[nodiscard]] bool isCombiningMark(std::string_view character);

}  // namespace corvalta::platform
