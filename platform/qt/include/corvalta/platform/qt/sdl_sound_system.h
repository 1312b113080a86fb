#pragma once

#include <corvalta/platform/clock_service.h>
#include <corvalta/platform/event_loop.h>
#include <corvalta/platform/sound.h>

#include <filesystem>
#include <map>
#include <memory>

namespace corvalta::platform::qt {

class SdlOutput;

// The application's sounds as WAV files in a resource folder, played through SDL2. Each
// number stands for a named file (168 "OK3.wav", 169 "Applause.wav", 170 "Microwave.wav"),
// read when the number is first asked for. SDL2 itself is loaded then too, never before, and
// the audio device opens as a sound starts and closes when sounds have stopped for a while.
// A sound whose file cannot be read, or that finds no audio device, plays in silence and ends
// at once: the game never waits on what cannot play.
class SdlSoundSystem final : public SoundSystem {
 public:
  SdlSoundSystem(std::filesystem::path resourceFolder, EventLoop& loop, ClockService& clock);
  ~SdlSoundSystem() override;

  std::shared_ptr<Sound> GetSound(std::int32_t number) override;
  // The desktop's own alert, not SDL's: it follows the user's settings for alerts.
  void Beep() override;

  // The game's data folder, share/corvalta beside the folder that holds the running
  // executable: bin/../share/corvalta when installed, the same inside a build tree.
  static std::filesystem::path defaultResourceFolder();

 private:
  std::filesystem::path folder_;
  EventLoop& loop_;
  ClockService& clock_;
  std::shared_ptr<SdlOutput> output_;
};

}  // namespace corvalta::platform::qt
