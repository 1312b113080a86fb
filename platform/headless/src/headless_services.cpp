#include <corvalta/platform/headless/headless_services.h>

#include <algorithm>
#include <stdexcept>

namespace corvalta::platform::headless {
namespace {

using std::chrono::duration_cast;
using std::chrono::milliseconds;

std::string msgBoxCaption(MsgBoxResult button) {
  switch (button) {
    case kMsgBoxOK: return "OK";
    case kMsgBoxCancel: return "Cancel";
    case kMsgBoxAbort: return "Abort";
    case kMsgBoxRetry: return "Retry";
    case kMsgBoxIgnore: return "Ignore";
    case kMsgBoxYes: return "Yes";
    case kMsgBoxNo: return "No";
  }
  return "OK";
}

}  // namespace

class HeadlessSoundSystem::HeadlessSound : public Sound {
 public:
  HeadlessSound(HeadlessSoundSystem& system, std::int32_t number, milliseconds length)
      : system_(system), number_(number), length_(length) {}

  void Play() override {
    auto& loop = system_.loop_;
    end_ = loop.now() + length_;
    system_.played_.push_back({number_, loop.elapsed(), loop.elapsed() + length_});
    loop.callAt(end_, [&loop] { loop.wake(); });
  }

  [[nodiscard]] bool IsPlaying() const override { return system_.loop_.now() < end_; }

 private:
  HeadlessSoundSystem& system_;
  std::int32_t number_;
  milliseconds length_;
  ClockService::TimePoint end_{};
};

HeadlessSoundSystem::HeadlessSoundSystem(HeadlessEventLoop& loop,
                                         std::map<std::int32_t, milliseconds> lengths)
    : loop_(loop), lengths_(std::move(lengths)) {}

std::shared_ptr<Sound> HeadlessSoundSystem::GetSound(std::int32_t number) {
  const auto found = lengths_.find(number);
  if (found == lengths_.end()) return nullptr;
  return std::make_shared<HeadlessSound>(*this, number, found->second);
}

std::string ScriptedDialogs::nextAnswer() {
  if (answers_.empty()) return {};
  std::string answer = std::move(answers_.front());
  answers_.pop_front();
  return answer;
}

MsgBoxResult ScriptedDialogs::showMsgBox(const std::string& text, const MsgBoxStyle& style,
                                         const std::string& title) {
  const std::string answer = nextAnswer();
  MsgBoxResult chosen = style.buttons.at(style.defaultButton);
  for (MsgBoxResult button : style.buttons) {
    if (answer == msgBoxCaption(button) || answer == std::to_string(button)) chosen = button;
  }
  shown_.push_back({title, text, msgBoxCaption(chosen)});
  return chosen;
}

MessageDialogChoice ScriptedDialogs::showMessageDialog(const MessageDialog& dialog) {
  struct Option {
    MessageDialogChoice choice;
    const char* role;
    const MessageDialogButton& button;
  };
  const Option options[] = {
      {MessageDialogChoice::Action, "Action", dialog.ActionButton},
      {MessageDialogChoice::Cancel, "Cancel", dialog.CancelButton},
      {MessageDialogChoice::Alternate, "Alternate", dialog.AlternateActionButton},
  };
  const std::string answer = nextAnswer();
  const Option* chosen = nullptr;
  for (const auto& option : options) {
    if (option.button.Visible && (answer == option.role || answer == option.button.Caption)) {
      chosen = &option;
      break;
    }
  }
  for (const auto& option : options) {
    if (chosen == nullptr && option.button.Visible && option.button.Default) chosen = &option;
  }
  if (chosen == nullptr) chosen = &options[1];
  shown_.push_back({dialog.Title, dialog.Message, chosen->button.Caption});
  return chosen->choice;
}

std::int32_t ScriptedRandom::InRange(std::int32_t min, std::int32_t max) {
  if (queued_.empty()) return Random::InRange(min, max);
  const std::int32_t value = queued_.front();
  queued_.pop_front();
  if (value < std::min(min, max) || value > std::max(min, max)) {
    throw std::invalid_argument("queued draw " + std::to_string(value) + " lies outside " +
                                std::to_string(min) + " to " + std::to_string(max));
  }
  return value;
}

HeadlessServices::HeadlessServices(std::uint64_t seed,
                                   std::map<std::int32_t, milliseconds> soundLengths)
    : sounds(loop, std::move(soundLengths)), random(std::make_shared<ScriptedRandom>(seed)) {}

Services HeadlessServices::services() {
  return {loop, loop, sounds, dialogs, urls, [random = random] { return random; }};
}

}  // namespace corvalta::platform::headless
