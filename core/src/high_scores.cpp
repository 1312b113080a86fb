// The score table: ten rows of name, level and score, kept in the cells of HighScores, and
// the file that is their copy, one tab-separated line a row.
#include <corvalta/platform/controls.h>
#include <corvalta/platform/dialogs.h>
#include <corvalta/platform/text.h>

#include <corvalta/core/window1.h>
#include <corvalta/store/text_stream.h>

namespace corvalta::core {
namespace {

using platform::Listbox;
using platform::NthField;
using store::TextInputStream;
using store::TextOutputStream;

constexpr std::int32_t kRows = 10;
constexpr std::int32_t kColumns = 3;
constexpr const char* kTab = "\t";

}  // namespace

void Window1::getScores() {
  TextOutputStream defaults;
  for (std::int32_t row = 0; row < kRows; ++row) {
    defaults.WriteLine(" \t \t0");
  }
  TextInputStream in = highScoresFile_.OpenCreatingWith(defaults.text());
  auto& table = control<Listbox>("HighScores");
  for (std::int32_t row = 0; row < kRows; ++row) {
    const std::string line = in.ReadLine();
    table.AddRow(NthField(line, kTab, 1));
    table.setCell(table.LastIndex(), 1, NthField(line, kTab, 2));
    table.setCell(table.LastIndex(), 2, NthField(line, kTab, 3));
  }
}

void Window1::saveScores() {
  const auto& table = control<Listbox>("HighScores");
  TextOutputStream out;
  for (std::int32_t row = 0; row < kRows; ++row) {
    out.WriteLine(table.Cell(row, 0) + kTab + table.Cell(row, 1) + kTab + table.Cell(row, 2));
  }
  highScoresFile_.Replace(out.text());
}

void Window1::HighScores_CellTextChange(std::int32_t /*row*/, std::int32_t /*column*/) { saveScores(); }

void Window1::HighScores_Open() {
  auto& table = control<Listbox>("HighScores");
  for (std::int32_t column = 0; column < kColumns; ++column) {
    table.setColumnAlignment(column, 2);
  }
}

void Window1::ClearScores_Action() {
  if (platform::MsgBox("Last chance - I'm going to clear the scores!", 305, "") != platform::kMsgBoxOK) {
    return;
  }
  auto& table = control<Listbox>("HighScores");
  for (std::int32_t row = 0; row < kRows; ++row) {
    table.setCell(row, 0, "");
    table.setCell(row, 1, "");
    table.setCell(row, 2, "0");
  }
  saveScores();
}

}  // namespace corvalta::core
