#pragma once

#include <corvalta/platform/clock_service.h>

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <vector>

namespace corvalta::platform::qt {

class SdlClip;

// SDL's audio: the subsystem and one output device, which all clips share. It opens when a
// clip starts and closes again once nothing has played for kIdleTime: an open device keeps
// SDL's audio thread waking at every buffer, some forty times a second, and holds a stream
// open on the sound server, silence or not. The driver order is pipewire, pulseaudio, alsa;
// where none of them starts or opens a device, SDL's dummy driver takes over, which consumes
// sound at the speed of playing it, so that a sound still takes its time where nobody hears
// it. (The dummy driver has one device only, which is why all clips share one.)
class SdlOutput {
 public:
  using Duration = std::chrono::microseconds;
  // Long enough that a game's sounds, a few seconds apart, find the device open: closing
  // it stalls the loop for two buffers (about 50 ms) while SDL lets the device drain.
  static constexpr Duration kIdleTime = std::chrono::seconds(5);

  explicit SdlOutput(ClockService& clock);
  ~SdlOutput();
  SdlOutput(const SdlOutput&) = delete;
  SdlOutput& operator=(const SdlOutput&) = delete;

 private:
  friend class SdlClip;

  bool play(const SdlClip& clip, const std::vector<std::uint8_t>& samples);
  [[nodiscard]] Duration queued(const SdlClip& clip) const;
  void stop(const SdlClip& clip);

  bool open();
  void close();
  void closeAfter(Duration wait);

  ClockService& clock_;
  std::uint32_t device_ = 0;
  const SdlClip* playing_ = nullptr;
  std::optional<ClockService::CallId> closing_;
};

// One sound, read from a WAV file and converted to the device's format. Clips share the
// device: playing one stops the one that was playing. SDL's queued audio has no "finished"
// signal: what is left to play is the queue plus the buffer the device is playing.
class SdlClip {
 public:
  using Duration = SdlOutput::Duration;

  // Null when SDL2 cannot be loaded or the file cannot be read.
  static std::unique_ptr<SdlClip> load(const std::filesystem::path& file,
                                       std::shared_ptr<SdlOutput> output);
  ~SdlClip();
  SdlClip(const SdlClip&) = delete;
  SdlClip& operator=(const SdlClip&) = delete;

  // Starts the sound from its beginning, in place of whatever the device was playing; false
  // when no device can be had.
  bool play();
  // How long the queue still takes to drain; zero once the device has taken all of it, or
  // when another clip has taken the device.
  [[nodiscard]] Duration queued() const;
  // One buffer of the device: what still plays after the queue has drained.
  [[nodiscard]] static Duration buffer();
  [[nodiscard]] Duration length() const;

 private:
  SdlClip(std::shared_ptr<SdlOutput> output, std::vector<std::uint8_t> samples);

  std::shared_ptr<SdlOutput> output_;
  std::vector<std::uint8_t> samples_;
};

}  // namespace corvalta::platform::qt
