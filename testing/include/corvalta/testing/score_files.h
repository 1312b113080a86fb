#pragma once

#include <corvalta/testing/temporary_folder.h>
#include <sys/stat.h>

#include <string>
#include <vector>

namespace corvalta::testing {

using Rows = std::vector<std::vector<std::string>>;

inline const std::string kSettings = "corvalta.plist";
inline const std::string kScores = "corvalta-highscores.plist";

// The score file of these rows, each line ending in LF.
inline std::string tableText(const Rows& rows) {
  std::string text;
  for (const auto& row : rows) text += row[0] + "\t" + row[1] + "\t" + row[2] + "\n";
  return text;
}

inline Rows defaultRows() { return Rows(10, {" ", " ", "0"}); }

// The rows with a new one at `at` and the last one gone, as a score enters the table.
inline Rows entered(Rows rows, std::ptrdiff_t at, std::vector<std::string> row) {
  rows.insert(rows.begin() + at, std::move(row));
  rows.pop_back();
  return rows;
}

// The file's inode number: a replaced file has a new one. 0 when there is no file.
inline unsigned long inodeOf(const std::string& path) {
  struct stat status {};
  return ::stat(path.c_str(), &status) == 0 ? static_cast<unsigned long>(status.st_ino) : 0;
}

// A right answer at Easy worth 1 point: the problem 9 - 4, 4 + 3, answered 12.
inline const char* const kRightAnswerAtEasy = "queue 9 4 3 10 5\npress Start\ntype Answer 12\nkey Return\n";

}  // namespace corvalta::testing
