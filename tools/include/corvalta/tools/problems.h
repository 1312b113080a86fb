#pragma once

#include <corvalta/tools/session.h>

#include <array>
#include <cstdint>
#include <iosfwd>
#include <limits>
#include <string>

namespace corvalta::tools {

// One problem as getRandomNumbers leaves it in Module1 and the operator labels.
struct Problem {
  std::int32_t First, Second, Third;
  std::string Op1, Op2;
  std::int32_t X, Y;
  double MyAnswer;
};

// Draws problems at one level on a session's main window.
class ProblemDrawer {
 public:
  // Turns the level's radio button on; std::invalid_argument for a level that isn't one of
  // "Easy", "Medium", "Hard", "VeryHard".
  ProblemDrawer(Session& session, const std::string& level);
  Problem next();

 private:
  Session& session_;
};

// The smallest and largest value seen in each numeric column, and the problems that broke
// an invariant: First > Second > Third, X and Y at least 1, MyAnswer above 0.
class ProblemRanges {
 public:
  static constexpr std::array<const char*, 6> kColumns = {"First", "Second", "Third", "X", "Y", "MyAnswer"};

  void observe(const Problem& problem);
  [[nodiscard]] double min(std::size_t column) const { return min_[column]; }
  [[nodiscard]] double max(std::size_t column) const { return max_[column]; }
  [[nodiscard]] std::int64_t count() const { return count_; }
  [[nodiscard]] std::int64_t broken() const { return broken_; }
  // "First 5..10 Second 3..9 ... MyAnswer 2..36"
  void print(std::ostream& out) const;

 private:
  std::array<double, 6> min_ = filled(std::numeric_limits<double>::infinity());
  std::array<double, 6> max_ = filled(-std::numeric_limits<double>::infinity());
  std::int64_t count_ = 0;
  std::int64_t broken_ = 0;
  static constexpr std::array<double, 6> filled(double value) { return {value, value, value, value, value, value}; }
};

// Shortest text that reads back as the same double.
[[nodiscard]] std::string shortest(double value);

// Writes `count` problems as CSV lines First,Second,Third,Op1,Op2,X,Y,MyAnswer after a
// header line.
void writeProblems(std::ostream& out, ProblemDrawer& drawer, ProblemRanges& ranges, std::int64_t count);

}  // namespace corvalta::tools
