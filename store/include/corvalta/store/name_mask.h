#pragma once

#include <string>
#include <string_view>

namespace corvalta::store {

// What a field whose mask is `mask` holds when the user has typed or pasted `typed` into it.
// Every mask position "A" takes one letter or digit of any script; a mark or joiner that
// belongs to the letter before it (an accent, a vowel sign, a virama) takes a position of its
// own. Characters that a position does not take are dropped, so blanks, tabs, line ends and
// bytes that are no UTF-8 never get in, and input beyond the last position is cut off.
std::string obeyMask(std::string_view mask, std::string_view typed);

}  // namespace corvalta::store
