#include <corvalta/core/module1.h>
#include <corvalta/core/sound_switch.h>
#include <corvalta/platform/application.h>

namespace corvalta::core {
namespace {

void setChecked(platform::MenuItem* bar, const char* item, bool checked) {
  if (platform::MenuItem* found = bar != nullptr ? bar->Lookup(item) : nullptr) {
    found->Checked = checked;
  }
}

}  // namespace

void setSound(bool on) {
  Module1.SoundFlag = on;
  platform::MenuItem* bar = platform::Application::current().MenuBar();
  setChecked(bar, on ? "SoundSoundOn" : "SoundSoundOff", true);
  setChecked(bar, on ? "SoundSoundOff" : "SoundSoundOn", false);
}

}  // namespace corvalta::core
