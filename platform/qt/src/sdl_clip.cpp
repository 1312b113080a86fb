#include "sdl_clip.h"

#include "sdl_library.h"

#include <algorithm>
#include <cstdio>

namespace corvalta::platform::qt {
namespace {

// The format every clip is converted to; SDL converts it further to what the device takes.
SDL_AudioSpec clipFormat() {
  SDL_AudioSpec audioFormat{};
  audioFormat.freq = 44100;
  audioFormat.format = AUDIO_S16SYS;
  audioFormat.channels = 1;
  audioFormat.samples = 1024;
  return audioFormat;
}

std::int64_t bytesPerSecond() { return std::int64_t{clipFormat().freq} * clipFormat().channels * 2; }

SdlClip::Duration durationOf(std::int64_t bytes) {
  return SdlClip::Duration(bytes * 1'000'000 / bytesPerSecond());
}

// Starts the subsystem on `drivers` (a driver named in SDL_AUDIODRIVER by the user still
// wins) and opens the default device; 0 and no subsystem left running when that fails.
SDL_AudioDeviceID openOn(const SdlLibrary& sdl, const char* drivers) {
  sdl.SetHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1");
  sdl.SetHintWithPriority(SDL_HINT_AUDIODRIVER, drivers, SDL_HINT_DEFAULT);
  if (sdl.InitSubSystem(SDL_INIT_AUDIO) != 0) {
    return 0;
  }
  const SDL_AudioSpec wanted = clipFormat();
  const SDL_AudioDeviceID device = sdl.OpenAudioDevice(nullptr, 0, &wanted, nullptr, 0);
  if (device == 0) {
    sdl.QuitSubSystem(SDL_INIT_AUDIO);
  }
  return device;
}

}  // namespace

SdlOutput::SdlOutput(ClockService& clock) : clock_(clock) {}

SdlOutput::~SdlOutput() {
  if (closing_) {
    clock_.cancel(*closing_);
  }
  close();
}

bool SdlOutput::open() {
  if (device_ != 0) {
    return true;
  }
  const SdlLibrary* sdl = SdlLibrary::get();
  if (sdl == nullptr) {
    return false;
  }
  // Without /dev/snd no ALSA device can open, and trying only fills standard error.
  const bool alsa = std::filesystem::exists("/dev/snd");
  device_ = openOn(*sdl, alsa ? "pipewire,pulseaudio,alsa" : "pipewire,pulseaudio");
  if (device_ == 0) {
    device_ = openOn(*sdl, "dummy");
  }
  if (device_ == 0) {
    std::fprintf(stderr, "corvalta: no sound: %s\n", sdl->GetError());
  }
  return device_ != 0;
}

void SdlOutput::close() {
  if (device_ == 0) {
    return;
  }
  const SdlLibrary& sdl = *SdlLibrary::get();
  sdl.CloseAudioDevice(device_);
  sdl.QuitSubSystem(SDL_INIT_AUDIO);
  device_ = 0;
  playing_ = nullptr;
}

// Closes the device once `wait` has passed, unless a sound starts meanwhile; a queue that
// has not drained by then puts it off.
void SdlOutput::closeAfter(Duration wait) {
  if (closing_) {
    clock_.cancel(*closing_);
  }
  closing_ = clock_.callAt(clock_.now() + wait, [this] {
    closing_.reset();
    const auto left = durationOf(SdlLibrary::get()->GetQueuedAudioSize(device_));
    if (left > Duration::zero()) {
      closeAfter(left + SdlClip::buffer() + kIdleTime);
    } else {
      close();
    }
  });
}

bool SdlOutput::play(const SdlClip& clip, const std::vector<std::uint8_t>& samples) {
  if (!open()) {
    return false;
  }
  const SdlLibrary& sdl = *SdlLibrary::get();
  sdl.ClearQueuedAudio(device_);
  sdl.QueueAudio(device_, samples.data(), static_cast<std::uint32_t>(samples.size()));
  playing_ = &clip;
  sdl.PauseAudioDevice(device_, 0);
  closeAfter(clip.length() + SdlClip::buffer() + kIdleTime);
  return true;
}

SdlOutput::Duration SdlOutput::queued(const SdlClip& clip) const {
  if (playing_ != &clip) {
    return Duration::zero();
  }
  return durationOf(SdlLibrary::get()->GetQueuedAudioSize(device_));
}

void SdlOutput::stop(const SdlClip& clip) {
  if (playing_ == &clip) {
    SdlLibrary::get()->ClearQueuedAudio(device_);
    playing_ = nullptr;
  }
}

std::unique_ptr<SdlClip> SdlClip::load(const std::filesystem::path& file,
                                       std::shared_ptr<SdlOutput> output) {
  const SdlLibrary* sdl = SdlLibrary::get();
  if (sdl == nullptr) {
    return nullptr;
  }
  SDL_AudioSpec audioFormat{};
  std::uint8_t* data = nullptr;
  std::uint32_t size = 0;
  if (sdl->LoadWAV_RW(sdl->RWFromFile(file.c_str(), "rb"), 1, &audioFormat, &data, &size) == nullptr) {
    std::fprintf(stderr, "corvalta: cannot read %s: %s\n", file.c_str(), sdl->GetError());
    return nullptr;
  }
  const SDL_AudioSpec target = clipFormat();
  SDL_AudioCVT cvt{};
  if (sdl->BuildAudioCVT(&cvt, audioFormat.format, audioFormat.channels, audioFormat.freq,
                         target.format, target.channels, target.freq) < 0) {
    std::fprintf(stderr, "corvalta: cannot convert %s: %s\n", file.c_str(), sdl->GetError());
    sdl->FreeWAV(data);
    return nullptr;
  }
  std::vector<std::uint8_t> samples(std::size_t(size) * std::size_t(std::max(cvt.len_mult, 1)));
  std::copy(data, data + size, samples.begin());
  sdl->FreeWAV(data);
  cvt.buf = samples.data();
  cvt.len = static_cast<int>(size);
  if (cvt.needed != 0 && sdl->ConvertAudio(&cvt) != 0) {
    std::fprintf(stderr, "corvalta: cannot convert %s: %s\n", file.c_str(), sdl->GetError());
    return nullptr;
  }
  samples.resize(cvt.needed != 0 ? std::size_t(cvt.len_cvt) : size);
  return std::unique_ptr<SdlClip>(new SdlClip(std::move(output), std::move(samples)));
}

SdlClip::SdlClip(std::shared_ptr<SdlOutput> output, std::vector<std::uint8_t> samples)
    : output_(std::move(output)), samples_(std::move(samples)) {}

SdlClip::~SdlClip() { output_->stop(*this); }

bool SdlClip::play() { return output_->play(*this, samples_); }

SdlClip::Duration SdlClip::queued() const { return output_->queued(*this); }

SdlClip::Duration SdlClip::buffer() {
  return Duration(std::int64_t{clipFormat().samples} * 1'000'000 / clipFormat().freq);
}

SdlClip::Duration SdlClip::length() const { return durationOf(std::int64_t(samples_.size())); }

}  // namespace corvalta::platform::qt
