#include <corvalta/core/module1.h>
#include <corvalta/core/window1.h>
#include <corvalta/platform/controls.h>
#include <corvalta/tools/problems.h>

#include <charconv>
#include <ostream>
#include <stdexcept>

namespace corvalta::tools {

ProblemDrawer::ProblemDrawer(Session& session, const std::string& level) : session_(session) {
  if (level != "Easy" && level != "Medium" && level != "Hard" && level != "VeryHard") {
    throw std::invalid_argument("no level " + level);
  }
  session_.app().dispatcher().call(
      [&] { core::Window1::instance().control<platform::RadioButton>(level).setValue(true); });
}

Problem ProblemDrawer::next() {
  auto& window = core::Window1::instance();
  window.getRandomNumbers();
  const auto& m = core::Module1;
  return {m.First, m.Second, m.Third,
          window.control<platform::StaticText>("Op1").Text(),
          window.control<platform::StaticText>("Op2").Text(),
          m.X, m.Y, m.MyAnswer};
}

void ProblemRanges::observe(const Problem& p) {
  const std::array<double, 6> values = {double(p.First), double(p.Second), double(p.Third),
                                        double(p.X), double(p.Y), p.MyAnswer};
  for (std::size_t i = 0; i < values.size(); ++i) {
    min_[i] = std::min(min_[i], values[i]);
    max_[i] = std::max(max_[i], values[i]);
  }
  ++count_;
  if (!(p.First > p.Second && p.Second > p.Third && p.X >= 1 && p.Y >= 1 && p.MyAnswer > 0)) ++broken_;
}

void ProblemRanges::print(std::ostream& out) const {
  for (std::size_t i = 0; i < kColumns.size(); ++i) {
    out << (i == 0 ? "" : " ") << kColumns[i] << ' ' << shortest(min_[i]) << ".." << shortest(max_[i]);
  }
}

std::string shortest(double value) {
  char buffer[32];
  const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
  return {buffer, result.ptr};
}

void writeProblems(std::ostream& out, ProblemDrawer& drawer, ProblemRanges& ranges, std::int64_t count) {
  out << "First,Second,Third,Op1,Op2,X,Y,MyAnswer\n";
  for (std::int64_t i = 0; i < count; ++i) {
    const Problem p = drawer.next();
    ranges.observe(p);
    out << p.First << ',' << p.Second << ',' << p.Third << ',' << p.Op1 << ',' << p.Op2 << ','
        << p.X << ',' << p.Y << ',' << shortest(p.MyAnswer) << '\n';
  }
}

}  // namespace corvalta::tools
