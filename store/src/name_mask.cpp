#include "corvalta/store/name_mask.h"

#include <locale.h>
#include <wchar.h>
#include <wctype.h>

#include <algorithm>
#include <cstddef>

namespace corvalta::store {
namespace {

// The C library classifies every script, not ASCII alone, under its built-in UTF-8 locale.
// The locale is put in force for this thread only while a text is masked.
class Utf8LocaleInForce {
 public:
  Utf8LocaleInForce() : previous_(::uselocale(utf8Locale())) {}
  ~Utf8LocaleInForce() { ::uselocale(previous_); }
  Utf8LocaleInForce(const Utf8LocaleInForce&) = delete;
  Utf8LocaleInForce& operator=(const Utf8LocaleInForce&) = delete;

 private:
  static locale_t utf8Locale() {
    static const locale_t locale = ::newlocale(LC_CTYPE_MASK, "C.UTF-8", locale_t{});
    return locale;
  }
  locale_t previous_;
};

// A mark or joiner: no width of its own, it belongs to the character before it.
bool belongsToPrevious(wchar_t c) { return c != L'\0' && ::wcwidth(c) == 0; }

}  // namespace

std::string obeyMask(std::string_view mask, std::string_view typed) {
  const Utf8LocaleInForce inForce;
  const auto positions = static_cast<std::size_t>(std::count(mask.begin(), mask.end(), 'A'));
  std::string text;
  std::size_t taken = 0;
  bool previousTaken = false;
  std::mbstate_t state{};
  while (!typed.empty() && taken < positions) {
    wchar_t c = 0;
    const std::size_t length = std::mbrtowc(&c, typed.data(), typed.size(), &state);
    if (length == static_cast<std::size_t>(-1) || length == static_cast<std::size_t>(-2) ||
        length == 0) {
      state = {};
      typed.remove_prefix(1);
      previousTaken = false;
      continue;
    }
    const bool takes = ::iswalnum(static_cast<wint_t>(c)) != 0 || (previousTaken && belongsToPrevious(c));
    if (takes) {
      text.append(typed.substr(0, length));
      ++taken;
    }
    previousTaken = takes;
    typed.remove_prefix(length);
  }
  return text;
}

}  // namespace corvalta::store
