#include "sdl_clip.h"

#include <SDL.h>

#include <cstdio>

namespace corvalta::platform::qt {

class SdlAudioSession {
 public:
  // The running session, or a new one; null when SDL's audio cannot be had at all.
  static std::shared_ptr<SdlAudioSession> get() {
    static std::weak_ptr<SdlAudioSession> current;
    auto session = current.lock();
    if (session) {
      return session;
    }
    // Without /dev/snd no ALSA device can open, and trying only fills standard error.
    const bool alsa = std::filesystem::exists("/dev/snd");
    SDL_AudioDeviceID device = open(alsa ? "pipewire,pulseaudio,alsa" : "pipewire,pulseaudio");
    if (device == 0) {
      device = open("dummy");
    }
    if (device == 0) {
      std::fprintf(stderr, "corvalta: no sound: %s\n", SDL_GetError());
      return nullptr;
    }
    session = std::shared_ptr<SdlAudioSession>(new SdlAudioSession(device));
    current = session;
    return session;
  }

  ~SdlAudioSession() {
    SDL_CloseAudioDevice(device_);
    SDL_QuitSubSystem(SDL_INIT_AUDIO);
  }
  SdlAudioSession(const SdlAudioSession&) = delete;
  SdlAudioSession& operator=(const SdlAudioSession&) = delete;

  [[nodiscard]] SDL_AudioDeviceID device() const { return device_; }
  // The format every clip is converted to; SDL converts it further to what the device takes.
  static SDL_AudioSpec format() {
    SDL_AudioSpec audioFormat{};
    audioFormat.freq = 44100;
    audioFormat.format = AUDIO_S16SYS;
    audioFormat.channels = 1;
    audioFormat.samples = 1024;
    return audioFormat;
  }
  static int bytesPerSecond() { return format().freq * format().channels * 2; }

  const SdlClip* playing = nullptr;

 private:
  explicit SdlAudioSession(SDL_AudioDeviceID device) : device_(device) {}

  // Starts the subsystem on `drivers` (a driver named in SDL_AUDIODRIVER by the user still
  // wins) and opens the default device; 0 and no subsystem left running when that fails.
  static SDL_AudioDeviceID open(const char* drivers) {
    SDL_SetHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1");
    SDL_SetHintWithPriority(SDL_HINT_AUDIODRIVER, drivers, SDL_HINT_DEFAULT);
    if (SDL_InitSubSystem(SDL_INIT_AUDIO) != 0) {
      return 0;
    }
    const SDL_AudioSpec wanted = format();
    const SDL_AudioDeviceID device = SDL_OpenAudioDevice(nullptr, 0, &wanted, nullptr, 0);
    if (device == 0) {
      SDL_QuitSubSystem(SDL_INIT_AUDIO);
    }
    return device;
  }

  SDL_AudioDeviceID device_;
};

std::unique_ptr<SdlClip> SdlClip::load(const std::filesystem::path& file) {
  auto session = SdlAudioSession::get();
  if (!session) {
    return nullptr;
  }
  SDL_AudioSpec audioFormat{};
  std::uint8_t* data = nullptr;
  std::uint32_t size = 0;
  if (SDL_LoadWAV(file.c_str(), &audioFormat, &data, &size) == nullptr) {
    std::fprintf(stderr, "corvalta: cannot read %s: %s\n", file.c_str(), SDL_GetError());
    return nullptr;
  }
  const SDL_AudioSpec target = SdlAudioSession::format();
  SDL_AudioCVT cvt{};
  if (SDL_BuildAudioCVT(&cvt, audioFormat.format, audioFormat.channels, audioFormat.freq, target.format,
                        target.channels, target.freq) < 0) {
    std::fprintf(stderr, "corvalta: cannot convert %s: %s\n", file.c_str(), SDL_GetError());
    SDL_FreeWAV(data);
    return nullptr;
  }
  std::vector<std::uint8_t> samples(std::size_t(size) * std::size_t(std::max(cvt.len_mult, 1)));
  std::copy(data, data + size, samples.begin());
  SDL_FreeWAV(data);
  cvt.buf = samples.data();
  cvt.len = static_cast<int>(size);
  if (cvt.needed != 0 && SDL_ConvertAudio(&cvt) != 0) {
    std::fprintf(stderr, "corvalta: cannot convert %s: %s\n", file.c_str(), SDL_GetError());
    return nullptr;
  }
  samples.resize(cvt.needed != 0 ? std::size_t(cvt.len_cvt) : size);
  return std::unique_ptr<SdlClip>(new SdlClip(std::move(session), std::move(samples)));
}

SdlClip::SdlClip(std::shared_ptr<SdlAudioSession> session, std::vector<std::uint8_t> samples)
    : session_(std::move(session)), samples_(std::move(samples)) {}

SdlClip::~SdlClip() {
  if (session_->playing == this) {
    SDL_ClearQueuedAudio(session_->device());
    session_->playing = nullptr;
  }
}

void SdlClip::play() {
  const auto device = session_->device();
  SDL_ClearQueuedAudio(device);
  SDL_QueueAudio(device, samples_.data(), static_cast<std::uint32_t>(samples_.size()));
  session_->playing = this;
  SDL_PauseAudioDevice(device, 0);
}

SdlClip::Duration SdlClip::queued() const {
  if (session_->playing != this) {
    return Duration::zero();
  }
  return Duration(std::int64_t{SDL_GetQueuedAudioSize(session_->device())} * 1'000'000 /
                  SdlAudioSession::bytesPerSecond());
}

SdlClip::Duration SdlClip::buffer() const {
  const auto format = SdlAudioSession::format();
  return Duration(std::int64_t{format.samples} * 1'000'000 / format.freq);
}

SdlClip::Duration SdlClip::length() const {
  return Duration(std::int64_t(samples_.size()) * 1'000'000 / SdlAudioSession::bytesPerSecond());
}

}  // namespace corvalta::platform::qt
