// The settings file: line 1 the sound setting, line 2 the level as the radio buttons show it.
#include <corvalta/core/module1.h>
#include <corvalta/core/sound_switch.h>
#include <corvalta/core/window1.h>
#include <corvalta/platform/controls.h>
#include <corvalta/store/text_stream.h>

namespace corvalta::core {
namespace {

using platform::RadioButton;
using platform::StaticText;
using store::TextInputStream;
using store::TextOutputStream;

}  // namespace

void Window1::getPlist() {
  TextOutputStream defaults;
  defaults.WriteLine("True");
  defaults.WriteLine("Easy");
  TextInputStream in = settingsFile_.OpenCreatingWith(defaults.text());

  setSound(in.ReadLine() == "True");

  // Whatever is not one of the first three words is Very Hard. Turning a button on runs its
  // level handler, which is what sets High and Difficulty.
  const std::string level = in.ReadLine();
  control<RadioButton>("Easy").setValue(level == "Easy");
  control<RadioButton>("Medium").setValue(level == "Medium");
  control<RadioButton>("Hard").setValue(level == "Hard");
  const bool veryHard = level != "Easy" && level != "Medium" && level != "Hard";
  control<RadioButton>("VeryHard").setValue(veryHard);
  control<StaticText>("Op3").setText(veryHard ? "/" : "+");
}

void Window1::savePlist() {
  TextOutputStream out;
  out.WriteLine(Module1.SoundFlag ? "True" : "False");
  if (control<RadioButton>("Easy").Value()) {
    out.WriteLine("Easy");
  } else if (control<RadioButton>("Medium").Value()) {
    out.WriteLine("Medium");
  } else if (control<RadioButton>("Hard").Value()) {
    out.WriteLine("Hard");
  } else {
    out.WriteLine("Very Hard");
  }
  settingsFile_.Replace(out.text());
}

}  // namespace corvalta::core
