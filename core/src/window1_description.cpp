#include <corvalta/core/window1.h>
#include <corvalta/platform/description_builder.h>

namespace corvalta::core {

using namespace platform::description;
using platform::Color;
using platform::PropertyList;

// The main window and its 29 controls in the order of creation, which is also the order of
// the Tab key; the level group comes before its four radio buttons, which name it as parent.
platform::WindowDescription window1Description() {
  const auto big = arial(20);
  const auto label = arial(12, true);
  constexpr std::int32_t left = 0;
  constexpr std::int32_t centred = 1;
  const PropertyList answerField = {{property::Alignment, std::int32_t{2}},
                                    {property::Enabled, false}};
  const PropertyList inLevelGroup = {{property::InitialParent, std::string("GroupBox1")}};
  const Events action = {"Action"};
  return window(
      "Window1", "Corvalta", 600, 325, {},
      {
          staticText("Afield", {20, 20, 35, 20}, "", big, centred),
          editField("SubAnswer1", {44, 93, 50, 24}, big, answerField),
          editField("SubAnswer2", {112, 93, 50, 24}, big, answerField),
          editField("Answer", {73, 181, 60, 24}, big, answerField, {"TextChange"}),
          pushButton("Enter", {73, 228, 60, 20}, "Enter", label, {{property::Enabled, false}},
                     action),
          staticText("Bfield", {86, 20, 35, 20}, "", big, centred),
          staticText("Cfield", {152, 20, 35, 20}, "", big, centred),
          staticText("Op1", {59, 52, 20, 20}, "+", big, centred),
          staticText("Op2", {127, 52, 20, 20}, "+", big, centred),
          staticText("Op3", {93, 140, 20, 20}, "", big, centred),
          staticText("Time", {243, 243, 40, 30}, "0", arial(26), centred),
          groupBox("GroupBox1", {208, 20, 110, 127}, "Difficulty Level", label),
          radioButton("Easy", {216, 40, 88, 20}, "Easy", label, inLevelGroup, action),
          radioButton("Medium", {216, 66, 88, 20}, "Medium", label, inLevelGroup, action),
          radioButton("Hard", {216, 92, 88, 20}, "Hard", label, inLevelGroup, action),
          staticText("Banner", {20, 275, 298, 30}, "Game Over", arial(30, true), centred,
                     {{property::TextColor, Color{0xFF, 0x00, 0x12}}, {property::Visible, false}}),
          listbox("HighScores", {370, 38, 210, 157}, arial(12),
                  {
                      {property::ColumnCount, std::int32_t{3}},
                      {property::ColumnWidths, std::string("40% 30%\t30%")},
                      {property::HasHeading, true},
                      {property::UseFocusRing, true},
                      {property::InitialValue, std::string("Name\tDifficulty\tScore")},
                      {property::HeadingIndex, std::int32_t{-1}},
                      {property::ScrollBarHorizontal, false},
                      {property::ScrollBarVertical, false},
                      {property::GridLinesHorizontal, std::int32_t{3}},
                      {property::GridLinesVertical, std::int32_t{3}},
                      {property::DefaultRowHeight, std::int32_t{-1}},
                      {property::ScrollWidth, std::int32_t{-1}},
                      {property::ScrollOffset, std::int32_t{0}},
                      {property::Hierarchical, false},
                      {property::EnableDrag, false},
                      {property::EnableDragReorder, false},
                      {property::RequiresSelection, false},
                      {property::SelectionType, std::int32_t{0}},
                      {property::ColumnsResizable, false},
                      {property::AutoHideScrollbars, true},
                  },
                  {"CellTextChange", "Open"}),
          pushButton("ClearScores", {425, 211, 100, 20}, "Clear Scores", label, {}, action),
          pushButton("Start", {224, 159, 80, 20}, "Start", label, {{property::Default, true}},
                     action),
          staticText("StaticText1", {370, 16, 210, 20}, "High Scores", label, centred),
          timer("Timer1",
                {{property::Mode, std::int32_t{0}}, {property::Period, std::int32_t{1000}}},
                action),
          separator("Separator1", {341, 20, 5, 285}),
          staticText("StaticText2", {405, 275, 175, 30}, "Points This Game", arial(20, true), left),
          staticText("GamePoints", {358, 279, 42, 20}, "0", arial(20, true), centred),
          staticText("StaticText3", {208, 224, 110, 20}, "Countdown", arial(16, true), centred),
          pushButton("Stop", {224, 195, 80, 20}, "Stop", label, {}, action),
          pushButton("Kagi1", {418, 247, 115, 20}, "Support Dunmere", label, {}, action),
          radioButton("VeryHard", {216, 118, 88, 20}, "Very Hard", label, inLevelGroup, action),
          // Below the bottom edge: never seen, though written to.
          staticText("Hint", {146, 346, 50, 20}, "", systemFont(true), centred),
      },
      {"Open", "Close"});
}

}  // namespace corvalta::core
