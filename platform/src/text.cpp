#include <corvalta/platform/text.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <string>

namespace corvalta::platform {
namespace {

// Byte length of the UTF-8 character that begins with `lead`; an invalid lead byte or a cut
// sequence counts as a character of one byte.
std::size_t charLength(std::string_view text, std::size_t at) {
  const auto lead = static_cast<unsigned char>(text[at]);
  std::size_t length = 1;
  if (lead >= 0xF0 && lead <= 0xF4) {
    length = 4;
  } else if (lead >= 0xE0) {
    length = lead <= 0xEF ? 3 : 1;
  } else if (lead >= 0xC2) {
    length = 2;
  }
  if (at + length > text.size()) return 1;
  for (std::size_t i = 1; i < length; ++i) {
    if ((static_cast<unsigned char>(text[at + i]) & 0xC0) != 0x80) return 1;
  }
  return length;
}

// Byte offset of character `index` (from 0); text.size() when the text is shorter.
std::size_t byteOffset(std::string_view text, std::int32_t index) {
  std::size_t at = 0;
  for (std::int32_t i = 0; i < index && at < text.size(); ++i) at += charLength(text, at);
  return at;
}

std::int32_t charCount(std::string_view text, std::size_t bytes) {
  std::int32_t count = 0;
  for (std::size_t at = 0; at < bytes; at += charLength(text, at)) ++count;
  return count;
}

bool isDigit(char c) { return c >= '0' && c <= '9'; }

// The digits of |value| rounded to `decimals` places, half away from zero on the shortest
// decimal text of the value, as the integer part and the fraction part.
struct Rounded {
  std::string integer;
  std::string fraction;
};

Rounded roundDecimal(double magnitude, std::size_t decimals) {
  std::array<char, 64> buffer{};
  const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), magnitude,
                                    std::chars_format::fixed);
  const std::string text(buffer.data(), result.ptr);
  const auto point = text.find('.');
  std::string integer = text.substr(0, point);
  std::string fraction = point == std::string::npos ? "" : text.substr(point + 1);
  const bool roundUp = fraction.size() > decimals && fraction[decimals] >= '5';
  fraction.resize(decimals, '0');
  std::string digits = integer + fraction;
  if (roundUp) {
    auto i = digits.size();
    while (i > 0 && digits[i - 1] == '9') digits[--i] = '0';
    if (i == 0) {
      digits.insert(digits.begin(), '1');
    } else {
      ++digits[i - 1];
    }
  }
  const auto integerLength = digits.size() - decimals;
  return {digits.substr(0, integerLength), digits.substr(integerLength)};
}

}  // namespace

double Val(std::string_view text) {
  std::size_t at = 0;
  while (at < text.size() && (text[at] == ' ' || text[at] == '\t')) ++at;
  const std::size_t start = at;
  if (at < text.size() && (text[at] == '-' || text[at] == '+')) ++at;
  std::size_t digits = 0;
  while (at < text.size() && isDigit(text[at])) ++at, ++digits;
  if (at < text.size() && text[at] == '.') {
    ++at;
    while (at < text.size() && isDigit(text[at])) ++at, ++digits;
  }
  if (digits == 0) return 0.0;
  if (at < text.size() && (text[at] == 'e' || text[at] == 'E')) {
    std::size_t exponent = at + 1;
    if (exponent < text.size() && (text[exponent] == '-' || text[exponent] == '+')) ++exponent;
    if (exponent < text.size() && isDigit(text[exponent])) {
      at = exponent;
      while (at < text.size() && isDigit(text[at])) ++at;
    }
  }
  std::string number(text.substr(start, at - start));
  if (number.front() == '+') number.erase(0, 1);
  double value = 0.0;
  const auto result = std::from_chars(number.data(), number.data() + number.size(), value);
  if (result.ec == std::errc::result_out_of_range) {
    // Too large or too small to hold: give the nearest that a double holds.
    const bool negative = number.front() == '-';
    const auto exponentAt = number.find_first_of("eE");
    const bool tiny = exponentAt != std::string::npos && number.find('-', exponentAt) != std::string::npos;
    value = tiny ? 0.0 : HUGE_VAL;
    if (negative) value = -value;
  }
  return value;
}

std::string Str(std::int32_t value) { return std::to_string(value); }

std::string Format(double value, std::string_view mask) {
  if (!std::isfinite(value)) return std::isnan(value) ? "NaN" : (value > 0 ? "INF" : "-INF");
  const auto point = mask.find('.');
  const std::string_view before = mask.substr(0, point);
  const std::string_view after = point == std::string_view::npos ? "" : mask.substr(point + 1);
  const auto isPlace = [](char c) { return c == '#' || c == '0'; };
  const auto decimals = static_cast<std::size_t>(std::count_if(after.begin(), after.end(), isPlace));
  const auto minInteger = static_cast<std::size_t>(std::count(before.begin(), before.end(), '0'));

  Rounded digits = roundDecimal(std::fabs(value), decimals);
  // Leading zeros of the integer part are dropped, then filled up to the '0' places.
  const auto firstNonZero = digits.integer.find_first_not_of('0');
  digits.integer = firstNonZero == std::string::npos ? "" : digits.integer.substr(firstNonZero);
  if (digits.integer.size() < minInteger) {
    digits.integer.insert(0, minInteger - digits.integer.size(), '0');
  }
  // Trailing zeros of the fraction go as far as '#' places allow.
  std::size_t keep = digits.fraction.size();
  std::size_t place = after.size();
  while (keep > 0 && place > 0) {
    --place;
    if (!isPlace(after[place])) continue;
    if (after[place] == '0' || digits.fraction[keep - 1] != '0') break;
    --keep;
  }
  digits.fraction.resize(keep);
  const bool zero = (digits.integer + digits.fraction).find_first_not_of('0') == std::string::npos;

  // The integer part goes where the mask's first digit place before the point stands, whole;
  // the fraction fills the places after the point from the left.
  std::string out;
  bool integerWritten = false;
  for (char c : before) {
    if (!isPlace(c)) {
      out += c;
    } else if (!integerWritten) {
      out += digits.integer;
      integerWritten = true;
    }
  }
  if (!integerWritten) out += digits.integer;
  if (point != std::string_view::npos) {
    out += '.';
    std::size_t taken = 0;
    for (char c : after) {
      if (!isPlace(c)) {
        out += c;
      } else if (taken < digits.fraction.size()) {
        out += digits.fraction[taken++];
      }
    }
  }
  if (value < 0 && !zero) out.insert(0, 1, '-');
  return out;
}

std::int32_t Len(std::string_view text) { return charCount(text, text.size()); }

std::int32_t LenB(std::string_view text) { return static_cast<std::int32_t>(text.size()); }

std::string Mid(std::string_view text, std::int32_t start, std::int32_t length) {
  const std::size_t from = byteOffset(text, std::max(start, 1) - 1);
  if (length < 0) return std::string(text.substr(from));
  const std::size_t to = from + byteOffset(text.substr(from), length);
  return std::string(text.substr(from, to - from));
}

std::int32_t InStr(std::int32_t start, std::string_view text, std::string_view find) {
  if (find.empty()) return 0;
  const std::size_t from = byteOffset(text, std::max(start, 1) - 1);
  const auto found = text.find(find, from);
  if (found == std::string_view::npos) return 0;
  return charCount(text, found) + 1;
}

std::int32_t InStr(std::string_view text, std::string_view find) { return InStr(0, text, find); }

std::string NthField(std::string_view text, std::string_view separator, std::int32_t n) {
  if (n < 1) return {};
  if (separator.empty()) return n == 1 ? std::string(text) : std::string();
  std::size_t from = 0;
  for (std::int32_t field = 1; field < n; ++field) {
    const auto found = text.find(separator, from);
    if (found == std::string_view::npos) return {};
    from = found + separator.size();
  }
  const auto end = text.find(separator, from);
  return std::string(text.substr(from, end == std::string_view::npos ? end : end - from));
}

std::string ReplaceAll(std::string_view text, std::string_view find,
                       std::string_view replacement) {
  if (find.empty()) return std::string(text);
  std::string out;
  std::size_t from = 0;
  for (auto found = text.find(find); found != std::string_view::npos;
       found = text.find(find, from)) {
    out.append(text.substr(from, found - from)).append(replacement);
    from = found + find.size();
  }
  return out.append(text.substr(from));
}

std::vector<std::string> Split(std::string_view text, std::string_view separator) {
  if (separator.empty()) return {std::string(text)};
  std::vector<std::string> pieces;
  std::size_t from = 0;
  for (auto found = text.find(separator); found != std::string_view::npos;
       found = text.find(separator, from)) {
    pieces.emplace_back(text.substr(from, found - from));
    from = found + separator.size();
  }
  pieces.emplace_back(text.substr(from));
  return pieces;
}

std::string LTrim(std::string_view text) {
  const auto first = text.find_first_not_of(" \t\r\n\v\f");
  return first == std::string_view::npos ? std::string() : std::string(text.substr(first));
}

std::string Chr(std::int32_t code) {
  if (code < 0 || code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF)) return {};
  const auto c = static_cast<std::uint32_t>(code);
  std::string out;
  if (c < 0x80) {
    out += static_cast<char>(c);
  } else if (c < 0x800) {
    out += static_cast<char>(0xC0 | (c >> 6));
    out += static_cast<char>(0x80 | (c & 0x3F));
  } else if (c < 0x10000) {
    out += static_cast<char>(0xE0 | (c >> 12));
    out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (c & 0x3F));
  } else {
    out += static_cast<char>(0xF0 | (c >> 18));
    out += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
    out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (c & 0x3F));
  }
  return out;
}

}  // namespace corvalta::platform
