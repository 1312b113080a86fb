#include <corvalta/platform/application.h>
#include <corvalta/platform/dialogs.h>
#include <corvalta/platform/sound.h>
#include <corvalta/platform/url_opener.h>

namespace corvalta::platform {

void playAndWait(const std::function<std::shared_ptr<Sound>()>& accessor) {
  const auto sound = accessor();
  if (!sound) throw NilObjectException("no sound to play");
  sound->Play();
  Application::current().dispatcher().waitUntil(
      [&accessor] {
        const auto playing = accessor();
        if (!playing) throw NilObjectException("no sound to wait for");
        return !playing->IsPlaying();
      },
      {.deliverInput = false, .deadline = std::nullopt});
}

void Beep() { Application::current().sounds().Beep(); }

MsgBoxStyle decodeMsgBoxButtons(std::int32_t code) {
  MsgBoxStyle style;
  switch (code & 7) {
    case 1: style.buttons = {kMsgBoxOK, kMsgBoxCancel}; break;
    case 2: style.buttons = {kMsgBoxAbort, kMsgBoxRetry, kMsgBoxIgnore}; break;
    case 3: style.buttons = {kMsgBoxYes, kMsgBoxNo, kMsgBoxCancel}; break;
    case 4: style.buttons = {kMsgBoxYes, kMsgBoxNo}; break;
    case 5: style.buttons = {kMsgBoxRetry, kMsgBoxCancel}; break;
    default: style.buttons = {kMsgBoxOK}; break;
  }
  switch (code & 0x70) {
    case 16: style.icon = MsgBoxIcon::Stop; break;
    case 32: style.icon = MsgBoxIcon::Question; break;
    case 48: style.icon = MsgBoxIcon::Caution; break;
    case 64: style.icon = MsgBoxIcon::Note; break;
    default: break;
  }
  const std::size_t wanted = (code & 0x300) == 0x100 ? 1 : (code & 0x300) == 0x200 ? 2 : 0;
  style.defaultButton = wanted < style.buttons.size() ? wanted : 0;
  return style;
}

std::int32_t MsgBox(const std::string& text, std::int32_t buttons, const std::string& title) {
  auto& app = Application::current();
  MsgBoxResult result = kMsgBoxOK;
  app.dispatcher().runModal(
      [&] { result = app.dialogs().showMsgBox(text, decodeMsgBoxButtons(buttons), title); });
  return result;
}

MessageDialogButton* MessageDialog::ShowModal() {
  auto& app = Application::current();
  MessageDialogChoice choice = MessageDialogChoice::Cancel;
  app.dispatcher().runModal([&] { choice = app.dialogs().showMessageDialog(*this); });
  switch (choice) {
    case MessageDialogChoice::Action: return &ActionButton;
    case MessageDialogChoice::Alternate: return &AlternateActionButton;
    case MessageDialogChoice::Cancel: break;
  }
  return &CancelButton;
}

void ShowURL(const std::string& url) { Application::current().urls().open(url); }

}  // namespace corvalta::platform
