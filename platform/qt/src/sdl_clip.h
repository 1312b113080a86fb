#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <vector>

namespace corvalta::platform::qt {

// SDL's audio for as long as any clip lives: the subsystem and one output device, opened at
// the first clip. The driver order is pipewire, pulseaudio, alsa; where none of them starts or
// opens a device, SDL's dummy driver takes over, which consumes sound at the speed of playing
// it, so that a sound still takes its time where nobody hears it. (The dummy driver has one
// device only, which is why all clips share one.)
class SdlAudioSession;

// One sound, read from a WAV file and converted to the device's format. Clips share the
// device: playing one stops the one that was playing. SDL's queued audio has no "finished"
// signal: what is left to play is the queue plus the buffer the device is playing.
class SdlClip {
 public:
  using Duration = std::chrono::microseconds;

  // Null when the file cannot be read or no audio at all can be had.
  static std::unique_ptr<SdlClip> load(const std::filesystem::path& file);
  ~SdlClip();
  SdlClip(const SdlClip&) = delete;
  SdlClip& operator=(const SdlClip&) = delete;

  // Starts the sound from its beginning, in place of whatever the device was playing.
  void play();
  // How long the queue still takes to drain; zero once the device has taken all of it, or
  // when another clip has taken the device.
  [[nodiscard]] Duration queued() const;
  // One buffer of the device: what still plays after the queue has drained.
  [[nodiscard]] Duration buffer() const;
  [[nodiscard]] Duration length() const;

 private:
  SdlClip(std::shared_ptr<SdlAudioSession> session, std::vector<std::uint8_t> samples);

  std::shared_ptr<SdlAudioSession> session_;
  std::vector<std::uint8_t> samples_;
};

}  // namespace corvalta::platform::qt
