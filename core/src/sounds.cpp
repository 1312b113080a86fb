#include <corvalta/core/sounds.h>
#include <corvalta/platform/application.h>

namespace corvalta::core {
namespace {

std::shared_ptr<platform::Sound> OK3Sound;
std::shared_ptr<platform::Sound> ApplauseSound;
std::shared_ptr<platform::Sound> MicrowaveSound;

std::shared_ptr<platform::Sound> cached(std::shared_ptr<platform::Sound>& sound, std::int32_t number) {
  if (!sound) sound = platform::Application::current().sounds().GetSound(number);
  return sound;
}

}  // namespace

std::shared_ptr<platform::Sound> OK3() { return cached(OK3Sound, kOK3Sound); }
std::shared_ptr<platform::Sound> Applause() { return cached(ApplauseSound, kApplauseSound); }
std::shared_ptr<platform::Sound> Microwave() { return cached(MicrowaveSound, kMicrowaveSound); }

void releaseSounds() {
  OK3Sound.reset();
  ApplauseSound.reset();
  MicrowaveSound.reset();
}

}  // namespace corvalta::core
