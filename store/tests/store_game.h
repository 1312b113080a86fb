#pragma once

#include <corvalta/core/module1.h>
#include <corvalta/core/window1.h>
#include <corvalta/platform/controls.h>
#include <corvalta/tools/session.h>
#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

namespace corvalta::store::testing {

using Rows = std::vector<std::vector<std::string>>;

// One run of the program on the headless view with its files in `folder`, driven by script
// lines. The run starts when the object is made and ends when it goes.
class StoreGame {
 public:
  explicit StoreGame(const std::string& folder, std::uint64_t seed = 7)
      : session(seed, out, err, folder) {}

  // Runs the lines; a failing line fails the test.
  void run(const std::string& script) {
    std::istringstream in(script);
    EXPECT_EQ(session.run(in), 0) << err.str();
  }

  core::Window1& window() { return core::Window1::instance(); }
  platform::Listbox& table() { return window().control<platform::Listbox>("HighScores"); }
  Rows rows() { return table().rows(); }
  bool selected(const char* level) { return window().control<platform::RadioButton>(level).Value(); }
  std::string text(const char* control) {
    auto* child = window().controlByName(control);
    if (auto* label = dynamic_cast<platform::StaticText*>(child)) return label->Text();
    return window().control<platform::EditField>(control).Text();
  }

  std::ostringstream out;
  std::ostringstream err;
  tools::Session session;
};

// The file of ten rows, each ending in LF.
inline std::string tableText(const Rows& rows) {
  std::string text;
  for (const auto& row : rows) text += row[0] + "\t" + row[1] + "\t" + row[2] + "\n";
  return text;
}

inline Rows defaultRows() { return Rows(10, {" ", " ", "0"}); }

// A right answer at Easy worth 1 point: the problem 9 - 4, 4 + 3, answered 12.
inline const char* const kRightAnswerAtEasy = "queue 9 4 3 10 5\npress Start\ntype Answer 12\nkey Return\n";
// A right answer at Very Hard worth 10 points: (10 - 7) / (7 + 4), answered 0.27.
inline const char* const kRightAnswerAtVeryHard = "queue 10 7 4 6 1\npress Start\ntype Answer 0.27\nkey Return\n";

}  // namespace corvalta::store::testing
