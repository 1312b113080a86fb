#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// The framework's text functions. Text is UTF-8; positions count characters from 1, and an
// invalid byte counts as one character of its own, so no input makes these functions fail.
namespace corvalta::platform {

// The number at the start of `text`, after leading blanks and tabs: an optional sign, digits
// with an optional decimal point and fraction, and an optional exponent ("1e3" is 1000).
// 0 when no number leads, the empty text included.
[[nodiscard]] double Val(std::string_view text);

// Decimal digits, with a minus sign for a negative value.
[[nodiscard]] std::string Str(std::int32_t value);

// `value` laid out by `mask`. '#' is a digit that is left out when it would be a leading zero
// (or, after the point, a trailing zero), '0' a digit that is always written, '.' the decimal
// point, which is always written; other characters stand as they are. Digits before the point
// are never cut: the integer part grows to the left of the mask. A value halfway between two
// representable values rounds away from zero, judged on the shortest decimal text of the
// value, so 0.125 and 1.005 round up as they read. Format(12, "###.##") is "12." and
// Format(0.2749, "###.##") is ".27".
[[nodiscard]] std::string Format(double value, std::string_view mask);

[[nodiscard]] std::int32_t Len(std::string_view text);   // characters
[[nodiscard]] std::int32_t LenB(std::string_view text);  // bytes

// `length` characters from the `start`th (from 1); a start below 1 counts as 1, a negative
// length takes all that is left.
[[nodiscard]] std::string Mid(std::string_view text, std::int32_t start, std::int32_t length = -1);

// The character position of the first `find` at or after character `start` (0 or 1: from the
// beginning), or 0. Letter case counts; an empty `find` is found nowhere.
[[nodiscard]] std::int32_t InStr(std::int32_t start, std::string_view text, std::string_view find);
[[nodiscard]] std::int32_t InStr(std::string_view text, std::string_view find);

// Field `n` (from 1) of `text` cut at each `separator`; the empty text past the last field or
// for n below 1. Without the separator in the text, field 1 is the whole text.
[[nodiscard]] std::string NthField(std::string_view text, std::string_view separator,
                                   std::int32_t n);

[[nodiscard]] std::string ReplaceAll(std::string_view text, std::string_view find,
                                     std::string_view replacement);

// The pieces between separators: n separators give n + 1 pieces, so "" gives one empty piece.
// An empty separator gives the whole text as the one piece.
[[nodiscard]] std::vector<std::string> Split(std::string_view text, std::string_view separator);

// Without leading white space (blank, tab, CR, LF, vertical tab, form feed).
[[nodiscard]] std::string LTrim(std::string_view text);

// The character with code point `code` as UTF-8; the empty text for a code that no character
// has.
[[nodiscard]] std::string Chr(std::int32_t code);

}  // namespace corvalta::platform
