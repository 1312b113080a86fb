#include <corvalta/platform/text.h>

#include <gtest/gtest.h>

#include <cmath>

#include <string>
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
      {"12", 12.0, "12."},
      {"12.00", 12.0, "12."},
      {"12.001", 12.001, "12."},
      {"12.5", 12.5, "12.5"},
      {"0.27", 0.27, ".27"},
      {"0.2749", 0.2749, ".27"},
      {"0.275", 0.275, ".28"},    // half away from zero, as the text reads
      {"0.125", 0.125, ".13"},    // exactly half in binary too: still away from zero
      {"1.005", 1.005, "1.01"},   // below half in binary, half as typed: rounds up
      {"0.005", 0.005, ".01"},
      {"0.004", 0.004, "."},
      {"-3", -3.0, "-3."},
      {"-0.001", -0.001, "."},    // rounds to zero: no sign
      {" 7", 7.0, "7."},
      {"\t7", 7.0, "7."},
      {"+7", 7.0, "7."},
      {"1e3", 1000.0, "1000."},
      {"1E-2", 0.01, ".01"},
      {"2e", 2.0, "2."},          // an exponent without digits is not part of the number
      {"abc", 0.0, "."},
      {"", 0.0, "."},
      {".5", 0.5, ".5"},
      {"5.", 5.0, "5."},
      {"12abc", 12.0, "12."},
      {"- 3", 0.0, "."},
      {"99.999", 99.999, "100."},
      {"123456.789", 123456.789, "123456.79"},
      {"1e400", HUGE_VAL, "INF"},
      {"1e-400", 0.0, "."},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.input);
    EXPECT_EQ(Val(c.input), c.val);
    EXPECT_EQ(Format(Val(c.input), "###.##"), c.formatted);
  }
}

// The "0" mask gives whole numbers with at least one digit; '0' places after the point keep
// their zeros; literals stand where the mask has them.
TEST(Text, FormatMasks) {
  struct Case {
    double value;
    std::string mask;
    std::string expected;
  };
  const std::vector<Case> cases = {
      {0.0, "0", "0"},        {7.0, "0", "7"},          {7.5, "0", "8"},
      {-7.5, "0", "-8"},      {1234.0, "0", "1234"},    {0.4, "0", "0"},
      {3.1, "0.00", "3.10"},  {0.27, "0.##", "0.27"},   {5.0, "#.0#", "5.0"},
      {42.0, "$###", "$42"},  {0.5, "##%", "1%"},        {12.345, ".##", "12.35"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.mask + " " + std::to_string(c.value));
    EXPECT_EQ(Format(c.value, c.mask), c.expected);
  }
}

// Positions count characters of UTF-8 text from 1; invalid bytes count as one character.
TEST(Text, PositionsCountCharacters) {
  const std::string text = "Gr\xC3\xBC\xC3\x9F" "e!";  // "Grüße!"
  EXPECT_EQ(Len(text), 6);
  EXPECT_EQ(LenB(text), 8);
  EXPECT_EQ(Len("\xFF\xC3"), 2);
  EXPECT_EQ(Mid(text, 3, 2), "\xC3\xBC\xC3\x9F");
  EXPECT_EQ(Mid(text, 0, 2), "Gr");
  EXPECT_EQ(Mid(text, 5), "e!");
  EXPECT_EQ(Mid(text, 9), "");
  EXPECT_EQ(InStr(text, "e"), 5);
  EXPECT_EQ(InStr(0, "abcabc", "c"), 3);
  EXPECT_EQ(InStr(4, "abcabc", "c"), 6);
  EXPECT_EQ(InStr(7, "abcabc", "c"), 0);
  EXPECT_EQ(InStr("abc", "C"), 0);
  EXPECT_EQ(InStr("abc", ""), 0);
}

// Fields and pieces: empty fields between separators count, missing fields are empty.
TEST(Text, FieldsAndPieces) {
  const std::string row = "Ann\t Very Hard\t30";
  EXPECT_EQ(NthField(row, "\t", 1), "Ann");
  EXPECT_EQ(NthField(row, "\t", 2), " Very Hard");
  EXPECT_EQ(NthField(row, "\t", 3), "30");
  EXPECT_EQ(NthField(row, "\t", 4), "");
  EXPECT_EQ(NthField(row, "\t", 0), "");
  EXPECT_EQ(NthField("\t\t0", "\t", 1), "");
  EXPECT_EQ(NthField("\t\t0", "\t", 3), "0");
  EXPECT_EQ(NthField("2.1.1", ".", 2), "1");
  EXPECT_EQ(NthField("whole", ",", 1), "whole");
  EXPECT_EQ(Split("a\r\nb\r\n", "\r\n"), (std::vector<std::string>{"a", "b", ""}));
  EXPECT_EQ(Split("", ","), (std::vector<std::string>{""}));
  EXPECT_EQ(Split("a,b", ""), (std::vector<std::string>{"a,b"}));
  EXPECT_EQ(ReplaceAll("a-b-c", "-", "+-"), "a+-b+-c");
  EXPECT_EQ(ReplaceAll("aaa", "aa", "b"), "ba");
  EXPECT_EQ(ReplaceAll("abc", "", "x"), "abc");
  EXPECT_EQ(LTrim(" \t\r\n value "), "value ");
  EXPECT_EQ(LTrim("   "), "");
  EXPECT_EQ(Chr(9), "\t");
  EXPECT_EQ(Chr(13), "\r");
  EXPECT_EQ(Chr(0xFC), "\xC3\xBC");
  EXPECT_EQ(Chr(0x1F600), "\xF0\x9F\x98\x80");
  EXPECT_EQ(Chr(-1), "");
  EXPECT_EQ(Chr(0xD800), "");
  EXPECT_EQ(Str(-2147483647 - 1), "-2147483648");
}

}  // namespace
}  // namespace corvalta::platform
