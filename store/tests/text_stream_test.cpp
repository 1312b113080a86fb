#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "corvalta/store/text_stream.h"

namespace corvalta::store {
namespace {

// ReadLine gives each line without its end, whichever of LF, CR LF or CR ends it, and the
// empty string from the end on.
TEST(TextInputStream, ReadsLinesOfEveryEndingAndEmptyPastTheEnd) {
  struct Case {
    std::string text;
    std::vector<std::string> lines;  // as many reads as given, the last ones past the end
  };
  const std::vector<Case> cases = {
      {"True\nEasy\n", {"True", "Easy", "", ""}},
      {"True\r\nEasy\r\n", {"True", "Easy", "", ""}},
      {"True\rEasy\r", {"True", "Easy", "", ""}},
      {"True\nEasy", {"True", "Easy", ""}},
      {"", {"", ""}},
      {"\n\nx\n", {"", "", "x", ""}},
      {"a\r\r\nb\n\rc", {"a", "", "b", "", "c", ""}},
      {" \t \t0\n\t\t0\n", {" \t \t0", "\t\t0", ""}},
      {"True \n", {"True ", ""}},
      {"Zo\xc3\xab \xe6\x9d\x8e\nx", {"Zo\xc3\xab \xe6\x9d\x8e", "x"}},
  };
  for (const Case& c : cases) {
    TextInputStream in(c.text);
    for (std::size_t i = 0; i < c.lines.size(); ++i) {
      EXPECT_EQ(in.ReadLine(), c.lines[i]) << "read " << i << " of " << testing::PrintToString(c.text);
    }
  }
}

}  // namespace
}  // namespace corvalta::store
