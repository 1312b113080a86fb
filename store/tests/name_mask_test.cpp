#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "corvalta/store/name_mask.h"

namespace corvalta::store {
namespace {

// The name field keeps letters and digits of every script with their marks, at most ten
// positions, and never a blank, tab, line end or broken byte.
TEST(NameMask, TakesLettersAndDigitsOfAnyScriptInTenPositions) {
  struct Case {
    std::string typed;
    std::string held;
  };
  const std::vector<Case> cases = {
      {"Ann", "Ann"},
      {"", ""},
      {"Ann Marie", "AnnMarie"},
      {"a\tb\nc\rd\r\ne", "abcde"},
      {"ABCDEFGHIJKL", "ABCDEFGHIJ"},
      {"12345678901", "1234567890"},
      {"Zo\xc3\xab", "Zo\xc3\xab"},                                   // precomposed e diaeresis
      {"Jose\xcc\x81", "Jose\xcc\x81"},                               // e and a combining acute
      {"\xe0\xa4\x95\xe0\xa5\x83\xe0\xa4\xb7\xe0\xa5\x8d\xe0\xa4\xa3",  // Devanagari with virama
       "\xe0\xa4\x95\xe0\xa5\x83\xe0\xa4\xb7\xe0\xa5\x8d\xe0\xa4\xa3"},
      {"\xe6\x9d\x8e\xe5\xb0\x8f\xe9\xbe\x8d", "\xe6\x9d\x8e\xe5\xb0\x8f\xe9\xbe\x8d"},  // Han
      {"\xd9\xa3\xd9\xa4", "\xd9\xa3\xd9\xa4"},                       // Arabic-Indic digits
      {"\xcc\x81" "abc", "abc"},                                       // a mark with no letter
      {"\xff\xfe" "Ann\xc3", "Ann"},                                  // bytes that are no UTF-8
      {"\xf0\x9f\x98\x80" "Ann", "Ann"},                              // an emoji
      {"\xc3\x85sa\xe2\x80\xa8x", "\xc3\x85sax"},                     // a Unicode line separator
      {std::string("a\0b", 3), "ab"},
      {"\xc3\xa9\xc3\xa9\xc3\xa9\xc3\xa9\xc3\xa9\xc3\xa9\xc3\xa9\xc3\xa9\xc3\xa9\xc3\xa9\xc3\xa9",
       "\xc3\xa9\xc3\xa9\xc3\xa9\xc3\xa9\xc3\xa9\xc3\xa9\xc3\xa9\xc3\xa9\xc3\xa9\xc3\xa9"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(obeyMask("AAAAAAAAAA", c.typed), c.held) << testing::PrintToString(c.typed);
  }
}

}  // namespace
}  // namespace corvalta::store
