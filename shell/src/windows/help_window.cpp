#include <corvalta/shell/info_windows.h>

#include <corvalta/platform/description_builder.h>

namespace corvalta::shell {

using namespace platform::description;

namespace {

// The rules of the game, nine paragraphs apart by two carriage returns, none at the end.
constexpr const char* helpText =
    "Corvalta was developed to help you have fun while exercising your brain."
    "\r\r"
    "There are four levels of difficulty (Easy, Medium, Hard and Very Hard).  Each game lasts "
    "for 90 seconds.  When you start a game, three random numbers are displayed at the top.  "
    "Your challenge is to fill in the fields below the numbers as follows:"
    "\r\r"
    "     a.  The top left field is the sum or difference of the left and middle numbers (see "
    "+/- sign)."
    "\r\r"
    "     b.  The top right field is the sum or difference of the middle and right numbers (see "
    "+/- sign)."
    "\r\r"
    "     c.  If you are playing difficulty levels of Simple, Medium or Hard, the bottom field is "
    "the sum of the top fields.  If you are playing the difficulty level of Very Hard, the "
    "bottom field is the top left field divided by the top right field to two decimals with "
    "rounding.  For example, if the top left field is 100 and the top right field is 70, the "
    "correct answer to two decimal places is 1.43 (remember to round; x.565 becomes x.57; x.564 "
    "becomes x.56).  You do not need to fill in the upper fields if you enter the correct answer "
    "in the bottom field.  The upper fields are just intermediate steps."
    "\r\r"
    "Click on the \"Enter\" button or press the Enter/Return key when you have entered the "
    "answer in the bottom field.  The Tab key may be used to move between the fields."
    "\r\r"
    "For each correct answer you will be awarded one point with Easy selected, three points "
    "with Medium selected, five points with Hard selected and ten points with Very Hard "
    "selected."
    "\r\r"
    "If your score is in the top ten high scores, your name, level of difficulty and score will "
    "be placed in the High Scores Table."
    "\r\r"
    "Sound is supported.  You can turn sound on/off from the menu bar.  High scores and "
    "settings for sound and difficulty level are saved between sessions.";

}  // namespace

// One large field with the rules; what the user types into it is never stored.
platform::WindowDescription helpDescription() {
  return window(
      "Help", "Corvalta", 400, 300, {},
      {
          editField("EditField1", {20, 20, 360, 260}, arial(12),
                    {{property::MultiLine, true}, {property::Text, std::string(helpText)}}),
      });
}

}  // namespace corvalta::shell
