#pragma once

#include <corvalta/platform/application.h>
#include <corvalta/platform/dialogs.h>
#include <corvalta/platform/headless/headless_event_loop.h>
#include <corvalta/platform/random.h>
#include <corvalta/platform/sound.h>
#include <corvalta/platform/url_opener.h>

#include <chrono>
#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace corvalta::platform::headless {

// Sounds that play in silence for their length on the virtual clock and are logged.
class HeadlessSoundSystem : public SoundSystem {
 public:
  struct Playback {
    std::int32_t number;
    std::chrono::milliseconds start;  // virtual time since the loop began
    std::chrono::milliseconds end;
  };

  // Numbers without a length have no sound: GetSound gives no object for them.
  HeadlessSoundSystem(HeadlessEventLoop& loop,
                      std::map<std::int32_t, std::chrono::milliseconds> lengths);

  std::shared_ptr<Sound> GetSound(std::int32_t number) override;
  void Beep() override { beeps_.push_back(loop_.elapsed()); }
  [[nodiscard]] const std::vector<Playback>& played() const { return played_; }
  // The virtual times at which the alert sounded.
  [[nodiscard]] const std::vector<std::chrono::milliseconds>& beeps() const { return beeps_; }

 private:
  class HeadlessSound;
  HeadlessEventLoop& loop_;
  std::map<std::int32_t, std::chrono::milliseconds> lengths_;
  std::vector<Playback> played_;
  std::vector<std::chrono::milliseconds> beeps_;
};

// Dialogs answered from a queue, each shown one logged. An answer names a button: for a
// message box its caption ("OK", "Cancel", "Yes", ...) or its number; for a message dialog
// "Action", "Cancel", "Alternate" or a button's caption. A dialog with no fitting answer
// queued gets its default button.
class ScriptedDialogs : public Dialogs {
 public:
  struct Shown {
    std::string title;
    std::string text;
    std::string answer;  // the caption of the button that was pressed
  };

  void queueAnswer(std::string answer) { answers_.push_back(std::move(answer)); }
  [[nodiscard]] const std::vector<Shown>& shown() const { return shown_; }

  MsgBoxResult showMsgBox(const std::string& text, const MsgBoxStyle& style,
                          const std::string& title) override;
  MessageDialogChoice showMessageDialog(const MessageDialog& dialog) override;

 private:
  std::string nextAnswer();
  std::deque<std::string> answers_;
  std::vector<Shown> shown_;
};

class RecordingUrlOpener : public UrlOpener {
 public:
  void open(const std::string& url) override { opened_.push_back(url); }
  [[nodiscard]] const std::vector<std::string>& opened() const { return opened_; }

 private:
  std::vector<std::string> opened_;
};

// A seeded random source that first hands out queued values. A queued value outside the
// range asked for throws std::invalid_argument: the script asked for a draw that can't be.
class ScriptedRandom : public Random {
 public:
  explicit ScriptedRandom(std::uint64_t seed) : Random(seed) {}
  void queue(std::int32_t value) { queued_.push_back(value); }
  [[nodiscard]] std::size_t queuedCount() const { return queued_.size(); }
  std::int32_t InRange(std::int32_t min, std::int32_t max) override;

 private:
  std::deque<std::int32_t> queued_;
};

// Every service of the headless view, ready to hand to an Application.
struct HeadlessServices {
  explicit HeadlessServices(std::uint64_t seed,
                            std::map<std::int32_t, std::chrono::milliseconds> soundLengths = {});

  [[nodiscard]] Services services();

  HeadlessEventLoop loop;
  HeadlessSoundSystem sounds;
  ScriptedDialogs dialogs;
  RecordingUrlOpener urls;
  std::shared_ptr<ScriptedRandom> random;
};

}  // namespace corvalta::platform::headless
