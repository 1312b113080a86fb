#pragma once

#include <chrono>
#include <filesystem>
#include <memory>
#include <string>

namespace corvalta::platform::qt {

// SDL's audio subsystem for as long as any clip lives. Started on first use with the driver
// order pipewire, pulseaudio, alsa; where none of them starts or opens a device it starts
// again on the dummy driver, which consumes sound at the speed of playing it, so that a sound
// still takes its time where nobody hears it.
class SdlAudioSession;

// One sound, read from a WAV file and played on a device of its own, so that two sounds mix
// rather than queue behind each other. SDL's queued audio has no "finished" signal: what is
// left to play is the queue plus the buffer the device is playing.
class SdlClip {
 public:
  using Duration = std::chrono::microseconds;

  // Null when the file cannot be read or no audio driver and device at all can be opened.
  static std::unique_ptr<SdlClip> load(const std::filesystem::path& file);
  ~SdlClip();
  SdlClip(const SdlClip&) = delete;
  SdlClip& operator=(const SdlClip&) = delete;

  // Starts the sound from its beginning, dropping what is left of an earlier play.
  void play();
  // How long the queue still takes to drain; zero once the device has taken all of it.
  [[nodiscard]] Duration queued() const;
  // One buffer of the device: what still plays after the queue has drained.
  [[nodiscard]] Duration buffer() const { return buffer_; }
  [[nodiscard]] Duration length() const { return length_; }
  [[nodiscard]] std::string driver() const;

 private:
  SdlClip(std::shared_ptr<SdlAudioSession> session, std::uint32_t device, std::uint8_t* samples,
          std::uint32_t size, int bytesPerSecond, Duration buffer);

  std::shared_ptr<SdlAudioSession> session_;
  std::uint32_t device_;
  std::uint8_t* samples_;
  std::uint32_t size_;
  int bytesPerSecond_;
  Duration buffer_;
  Duration length_;
};

}  // namespace corvalta::platform::qt
