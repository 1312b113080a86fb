#include <corvalta/core/congratulations.h>
#include <corvalta/core/module1.h>
#include <corvalta/core/window1.h>
#include <corvalta/platform/controls.h>
#include <corvalta/platform/text.h>

#include <array>
#include <string>

namespace corvalta::core {
namespace {

using platform::EditField;
using platform::Listbox;
using platform::Val;

Listbox& highScores() { return Window1::instance().control<Listbox>("HighScores"); }

}  // namespace

Congratulations::Congratulations(const platform::WindowDescription& description)
    : Window("Congratulations") {
  build(description);
}

platform::Handler Congratulations::handlerFor(std::string_view control, std::string_view event) {
  if (control == "Enter" && event == "Action") {
    return [this](const platform::EventArgs&) { Enter_Action(); };
  }
  return {};
}

void Congratulations::Event_Open() { control<EditField>("NameField").setText(Module1.Name); }

void Congratulations::Enter_Action() {
  auto& m = Module1;
  Window1& main = Window1::instance();
  Listbox& table = highScores();
  m.Name = control<EditField>("NameField").Text();
  table.AddRow(m.Name);
  table.setCell(table.LastIndex(), 1, m.Difficulty);
  table.setCell(table.LastIndex(), 2, platform::Str(m.Points));
  table.Refresh(true);
  sortScores();
  // Rows 0 to 9 go to the file, so the row that fell to 10 is gone from disk before it is
  // gone from the list.
  main.saveScores();
  table.RemoveRow(10);
  m.NewHighScoreFlag = false;
  main.control<EditField>("SubAnswer1").setText("");
  main.control<EditField>("SubAnswer2").setText("");
  main.control<EditField>("Answer").setText("");
  main.control<EditField>("SubAnswer1").SetFocus();
  Hide();
}

// Each pass runs upward and carries a higher score over every lower one above it, so a new
// row in a sorted table reaches its place in the first pass. Only strictly lower scores are
// passed, which keeps equal scores in their order.
void Congratulations::sortScores() {
  Listbox& table = highScores();
  bool swapped = true;
  while (swapped) {
    swapped = false;
    for (std::int32_t i = 10; i >= 1; --i) {
      if (Val(table.Cell(i - 1, 2)) < Val(table.Cell(i, 2))) {
        const std::array<std::string, 3> upper = {table.Cell(i - 1, 0), table.Cell(i - 1, 1),
                                                  table.Cell(i - 1, 2)};
        for (std::int32_t column = 0; column < 3; ++column) {
          table.setCell(i - 1, column, table.Cell(i, column));
        }
        for (std::int32_t column = 0; column < 3; ++column) {
          table.setCell(i, column, upper[static_cast<std::size_t>(column)]);
        }
        swapped = true;
      }
    }
  }
}

}  // namespace corvalta::core
