#pragma once

#include <cstdint>
#include <functional>
#include <memory>

namespace corvalta::platform {

// One sound of the application's resources.
class Sound {
 public:
  virtual ~Sound() = default;
  // Starts playing and returns at once. Playing a sound that still plays starts it over.
  virtual void Play() = 0;
  // True while the sound plays. An implementation calls EventLoop::wake() when it stops,
  // so that a wait for its end wakes without polling.
  [[nodiscard]] virtual bool IsPlaying() const = 0;
};

// The application's store of numbered sounds.
class SoundSystem {
 public:
  virtual ~SoundSystem() = default;
  // The sound of that number, or no object when there is none.
  virtual std::shared_ptr<Sound> GetSound(std::int32_t number) = 0;
  // The desktop's alert sound; returns at once.
  virtual void Beep() = 0;
};

// Sounds the desktop's alert, as the update check does before it reports a failure.
void Beep();

// Plays the sound that `accessor` gives and waits until it has ended: the wait sleeps in the
// event loop with input held back, and a timer tick that falls due meanwhile is delivered
// after the running handler returns. The accessor is asked again at each look, as the game
// asks its sound accessors; no sound raises NilObjectException before anything plays.
void playAndWait(const std::function<std::shared_ptr<Sound>()>& accessor);

}  // namespace corvalta::platform
