#include <corvalta/platform/text.h>

#include <gtest/gtest.h>

#include <cmath>

#include <vector>

namespace corvalta::platform {
namespace {

// Val, Format and their round trip decide once how odd input reads and how halves round.
TEST(Text, ValAndFormatDecideOddInput) {
  struct Case {
    std::string input;
    double val;
    std::string formatted;  // Format(Val(input), "###.##")
  };
  const std::vector<Case> cases = {
      {"0.275", 0.275, ".28"},    // half away from zero, as the text reads
      {"0.125", 0.125, ".13"},    // exactly half in binary too: still away from zero
      {"1.005", 1.005, "1.01"},   // below half in binary, half as typed: rounds up
      {"-0.001", -0.001, "."},    // rounds to zero: no sign
      {" 7", 7.0, "7."},
      {"1e3", 1000.0, "1000."},
      {"2e", 2.0, "2."},          // an exponent without digits is not part of the number
      {".5", 0.5, ".5"},
      {"12abc", 12.0, "12."},
      {"- 3", 0.0, "."},
      {"99.999", 99.999, "100."},
      {"123456.789", 123456.789, "123456.79"},
      {"1e400", HUGE_VAL, "INF"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.input);
    EXPECT_EQ(Val(c.input), c.val);
    EXPECT_EQ(Format(Val(c.input), "###.##"), c.formatted);
  }
}

// The "0" mask gives whole numbers with at least one digit, halves away from zero; '0' places
// after the point keep their zeros; literals stand where the mask has them.
TEST(Text, FormatMasks) {
  EXPECT_EQ((std::vector<std::string>{Format(0.0, "0"), Format(-7.5, "0"), Format(3.1, "0.00"),
                                      Format(5.0, "#.0#"), Format(0.5, "##%")}),
            (std::vector<std::string>{"0", "-8", "3.10", "5.0", "1%"}));
}

// Positions count characters of UTF-8 text from 1, invalid bytes as one character each; numbers
// print whole.
TEST(Text, PositionsCountCharacters) {
  const std::string text = "Gr\xC3\xBC\xC3\x9F" "e!";  // "Grüße!"
  EXPECT_EQ(Len(text), 6);
  EXPECT_EQ(Len("\xFF\xC3"), 2);
  EXPECT_EQ(Mid(text, 3, 2), "\xC3\xBC\xC3\x9F");
  EXPECT_EQ(Mid(text, 0, 2), "Gr");
  EXPECT_EQ(InStr(text, "e"), 5);
  EXPECT_EQ(InStr(0, "abcabc", "c"), 3);
  EXPECT_EQ(InStr(4, "abcabc", "c"), 6);
  EXPECT_EQ(Str(-2147483647 - 1), "-2147483648");
}

}  // namespace
}  // namespace corvalta::platform
