#include "character_class.h"

#include <locale.h>

#include <cwchar>
#include <cwctype>
#include <optional>

namespace corvalta::platform {
namespace {

// A locale object of its own, so that classifying never depends on or changes the locale
// that the program as a whole runs in. glibc has C.UTF-8 built in.
locale_t unicodeLocale() {
  static const locale_t locale = newlocale(LC_CTYPE_MASK, "C.UTF-8", locale_t{});
  return locale;
}

std::optional<wint_t> decode(std::string_view character) {
  const locale_t locale = unicodeLocale();
  if (locale == locale_t{} || character.empty()) return std::nullopt;
  const locale_t previous = uselocale(locale);
  wchar_t wide = 0;
  std::mbstate_t state{};
  const std::size_t used = std::mbrtowc(&wide, character.data(), character.size(), &state);
  uselocale(previous);
  if (used != character.size()) return std::nullopt;
  return static_cast<wint_t>(wide);
}

}  // namespace

bool isLetterOrDigit(std::string_view character) {
  const auto code = decode(character);
  return code && iswalnum_l(*code, unicodeLocale()) != 0;
}

bool isCombiningMark(std::string_view character) {
  static const wctype_t combining = wctype_l("combining", unicodeLocale());
  const auto code = decode(character);
  return code && combining != 0 && iswctype_l(*code, combining, unicodeLocale()) != 0;
}

bool isDigit(std::string_view character) {
  return character.size() == 1 && character.front() >= '0' && character.front() <= '9';
}

bool isPrintable(std::string_view character) {
  const auto code = decode(character);
  return code && iswprint_l(*code, unicodeLocale()) != 0;
}

}  // namespace corvalta::platform
