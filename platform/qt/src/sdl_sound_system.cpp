#include <corvalta/platform/qt/sdl_sound_system.h>

#include "sdl_clip.h"

#include <QApplication>
#include <QCoreApplication>

#include <optional>

namespace corvalta::platform::qt {
namespace {

// One sound: plays its clip and, since SDL reports no end, looks again when the end is due.
// The queue drained plus the one buffer the device still plays marks the end.
class SdlSound final : public Sound {
 public:
  SdlSound(std::unique_ptr<SdlClip> clip, EventLoop& loop, ClockService& clock)
      : clip_(std::move(clip)), loop_(loop), clock_(clock) {}

  ~SdlSound() override { cancelCheck(); }
  SdlSound(const SdlSound&) = delete;
  SdlSound& operator=(const SdlSound&) = delete;

  void Play() override {
    if (!clip_) {
      return;
    }
    cancelCheck();
    if (!clip_->play()) {
      playing_ = false;
      return;
    }
    playing_ = true;
    draining_ = false;
    checkAfter(clip_->length());
  }

  [[nodiscard]] bool IsPlaying() const override { return playing_; }

 private:
  void checkAfter(SdlClip::Duration wait) {
    check_ = clock_.callAt(clock_.now() + wait, [this] {
      check_.reset();
      look();
    });
  }

  void look() {
    if (const auto left = clip_->queued(); left > SdlClip::Duration::zero()) {
      checkAfter(left);
    } else if (!draining_) {
      draining_ = true;
      checkAfter(clip_->buffer());
    } else {
      playing_ = false;
      loop_.wake();
    }
  }

  void cancelCheck() {
    if (check_) {
      clock_.cancel(*check_);
      check_.reset();
    }
  }

  std::unique_ptr<SdlClip> clip_;
  EventLoop& loop_;
  ClockService& clock_;
  std::optional<ClockService::CallId> check_;
  bool playing_ = false;
  bool draining_ = false;
};

const std::map<std::int32_t, const char*>& soundFiles() {
  static const std::map<std::int32_t, const char*> files = {
      {168, "OK3.wav"}, {169, "Applause.wav"}, {170, "Microwave.wav"}};
  return files;
}

}  // namespace

SdlSoundSystem::SdlSoundSystem(std::filesystem::path resourceFolder, EventLoop& loop,
                               ClockService& clock)
    : folder_(std::move(resourceFolder)),
      loop_(loop),
      clock_(clock),
      output_(std::make_shared<SdlOutput>(clock)) {}

SdlSoundSystem::~SdlSoundSystem() = default;

std::shared_ptr<Sound> SdlSoundSystem::GetSound(std::int32_t number) {
  const auto file = soundFiles().find(number);
  if (file == soundFiles().end()) {
    return nullptr;
  }
  return std::make_shared<SdlSound>(SdlClip::load(folder_ / file->second, output_), loop_, clock_);
}

std::filesystem::path SdlSoundSystem::defaultResourceFolder() {
  const std::filesystem::path executableFolder =
      QCoreApplication::applicationDirPath().toStdString();
  return executableFolder.parent_path() / "share" / "corvalta";
}

void SdlSoundSystem::Beep() { QApplication::beep(); }

}  // namespace corvalta::platform::qt
