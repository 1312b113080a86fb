// corvalta-driver: the game on the headless view, driven by a script on standard input, or
// problems of one level as CSV.
#include <corvalta/tools/problems.h>
#include <corvalta/tools/session.h>

#include <charconv>
#include <cstring>
#include <iostream>
#include <optional>
#include <random>
#include <string>

namespace {

const char* const kUsage =
    "usage: corvalta-driver [--seed N] [--config FOLDER] < script\n"
    "       corvalta-driver [--seed N] --csv LEVEL COUNT\n"
    "LEVEL is Easy, Medium, Hard or VeryHard. With --config the game reads and writes its\n"
    "settings and high scores in FOLDER, as it does in the configuration folder; without it\n"
    "they are kept in memory.\n";

bool parse(const char* text, std::uint64_t& value) {
  const auto* end = text + std::strlen(text);
  const auto result = std::from_chars(text, end, value);
  return result.ec == std::errc() && result.ptr == end;
}

}  // namespace

int main(int argc, char** argv) {
  std::uint64_t seed = std::random_device{}();
  std::string level;
  std::uint64_t count = 0;
  bool csv = false;
  std::optional<std::string> configurationFolder;
  for (int i = 1; i < argc; ++i) {
    const std::string arg = argv[i];
    if (arg == "--seed" && i + 1 < argc && parse(argv[i + 1], seed)) {
      ++i;
    } else if (arg == "--config" && i + 1 < argc) {
      configurationFolder = argv[++i];
    } else if (arg == "--csv" && i + 2 < argc && parse(argv[i + 2], count)) {
      csv = true;
      level = argv[i + 1];
      i += 2;
    } else {
      std::cerr << kUsage;
      return 2;
    }
  }
  std::ios::sync_with_stdio(false);
  corvalta::tools::Session session(seed, std::cout, std::cerr, configurationFolder);
  if (!csv) return session.run(std::cin) == 0 ? 0 : 1;
  try {
    corvalta::tools::ProblemDrawer drawer(session, level);
    corvalta::tools::ProblemRanges ranges;
    corvalta::tools::writeProblems(std::cout, drawer, ranges, static_cast<std::int64_t>(count));
    ranges.print(std::cerr);
    std::cerr << '\n';
    return ranges.broken() == 0 ? 0 : 1;
  } catch (const std::invalid_argument& e) {
    std::cerr << e.what() << '\n' << kUsage;
    return 2;
  }
}
