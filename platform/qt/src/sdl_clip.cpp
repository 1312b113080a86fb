#include "sdl_clip.h"

#include <SDL.h>

#include <cstdio>

namespace corvalta::platform::qt {

class SdlAudioSession {
 public:
  // The running session, or a new one; null when SDL's audio cannot start at all.
  static std::shared_ptr<SdlAudioSession> get() {
    static std::weak_ptr<SdlAudioSession> current;
    auto session = current.lock();
    if (session) {
      return session;
    }
    // Without /dev/snd no ALSA device can open, and trying only fills standard error.
    const bool alsa = std::filesystem::exists("/dev/snd");
    if (start(alsa ? "pipewire,pulseaudio,alsa" : "pipewire,pulseaudio") || start("dummy")) {
      session = std::shared_ptr<SdlAudioSession>(new SdlAudioSession);
      current = session;
    } else {
      std::fprintf(stderr, "corvalta: no sound: %s\n", SDL_GetError());
    }
    return session;
  }

  ~SdlAudioSession() { SDL_QuitSubSystem(SDL_INIT_AUDIO); }
  SdlAudioSession(const SdlAudioSession&) = delete;
  SdlAudioSession& operator=(const SdlAudioSession&) = delete;

  // Opens a device for `wanted`; SDL converts to what the device takes. Falls back to the
  // dummy driver once, while no device of the session is open yet.
  SDL_AudioDeviceID open(const SDL_AudioSpec& wanted) {
    auto device = SDL_OpenAudioDevice(nullptr, 0, &wanted, nullptr, 0);
    if (device == 0 && openDevices_ == 0 && std::string(driver()) != "dummy") {
      SDL_QuitSubSystem(SDL_INIT_AUDIO);
      if (start("dummy")) {
        device = SDL_OpenAudioDevice(nullptr, 0, &wanted, nullptr, 0);
      }
    }
    if (device == 0) {
      std::fprintf(stderr, "corvalta: no sound: %s\n", SDL_GetError());
      return 0;
    }
    ++openDevices_;
    return device;
  }

  void close(SDL_AudioDeviceID device) {
    SDL_CloseAudioDevice(device);
    --openDevices_;
  }

  static const char* driver() {
    const char* name = SDL_GetCurrentAudioDriver();
    return name == nullptr ? "" : name;
  }

 private:
  SdlAudioSession() = default;

  // A driver named in SDL_AUDIODRIVER by the user still wins over ours.
  static bool start(const char* drivers) {
    SDL_SetHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1");
    SDL_SetHintWithPriority(SDL_HINT_AUDIODRIVER, drivers, SDL_HINT_DEFAULT);
    return SDL_InitSubSystem(SDL_INIT_AUDIO) == 0;
  }

  int openDevices_ = 0;
};

std::unique_ptr<SdlClip> SdlClip::load(const std::filesystem::path& file) {
  auto session = SdlAudioSession::get();
  if (!session) {
    return nullptr;
  }
  SDL_AudioSpec spec{};
  std::uint8_t* samples = nullptr;
  std::uint32_t size = 0;
  if (SDL_LoadWAV(file.c_str(), &spec, &samples, &size) == nullptr) {
    std::fprintf(stderr, "corvalta: cannot read %s: %s\n", file.c_str(), SDL_GetError());
    return nullptr;
  }
  spec.samples = 1024;
  const auto device = session->open(spec);
  if (device == 0) {
    SDL_FreeWAV(samples);
    return nullptr;
  }
  const int bytesPerFrame = SDL_AUDIO_BITSIZE(spec.format) / 8 * spec.channels;
  const Duration buffer(std::int64_t{spec.samples} * 1'000'000 / spec.freq);
  return std::unique_ptr<SdlClip>(
      new SdlClip(std::move(session), device, samples, size, bytesPerFrame * spec.freq, buffer));
}

SdlClip::SdlClip(std::shared_ptr<SdlAudioSession> session, std::uint32_t device,
                 std::uint8_t* samples, std::uint32_t size, int bytesPerSecond, Duration buffer)
    : session_(std::move(session)),
      device_(device),
      samples_(samples),
      size_(size),
      bytesPerSecond_(bytesPerSecond),
      buffer_(buffer),
      length_(std::int64_t{size} * 1'000'000 / bytesPerSecond) {}

SdlClip::~SdlClip() {
  session_->close(device_);
  SDL_FreeWAV(samples_);
}

void SdlClip::play() {
  SDL_ClearQueuedAudio(device_);
  SDL_QueueAudio(device_, samples_, size_);
  SDL_PauseAudioDevice(device_, 0);
}

SdlClip::Duration SdlClip::queued() const {
  return Duration(std::int64_t{SDL_GetQueuedAudioSize(device_)} * 1'000'000 / bytesPerSecond_);
}

std::string SdlClip::driver() const { return SdlAudioSession::driver(); }

}  // namespace corvalta::platform::qt
