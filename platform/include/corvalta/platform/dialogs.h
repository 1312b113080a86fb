#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace corvalta::platform {

// What MsgBox gives back: the button pressed.
enum MsgBoxResult : std::int32_t {
  kMsgBoxOK = 1,
  kMsgBoxCancel = 2,
  kMsgBoxAbort = 3,
  kMsgBoxRetry = 4,
  kMsgBoxIgnore = 5,
  kMsgBoxYes = 6,
  kMsgBoxNo = 7,
};

enum class MsgBoxIcon { None, Stop, Question, Caution, Note };

// The `buttons` code of MsgBox taken apart: its low digits choose the buttons (0 OK, 1 OK
// Cancel, 2 Abort Retry Ignore, 3 Yes No Cancel, 4 Yes No, 5 Retry Cancel), 16, 32, 48 or 64
// the icon, 256 or 512 make the second or third button the default. 305 is OK and Cancel,
// the caution icon, Cancel as default. A code outside these gives OK alone.
struct MsgBoxStyle {
  std::vector<MsgBoxResult> buttons;
  MsgBoxIcon icon = MsgBoxIcon::None;
  std::size_t defaultButton = 0;  // index into buttons
};
[[nodiscard]] MsgBoxStyle decodeMsgBoxButtons(std::int32_t code);

struct MessageDialogButton {
  std::string Caption;
  bool Visible = false;
  bool Default = false;
  bool Cancel = false;
};

// A modal dialog with a message, an explanation and up to three buttons, made for one use.
class MessageDialog {
 public:
  std::string Title;
  std::string Message;
  std::string Explanation;
  std::int32_t Icon = 0;
  MessageDialogButton ActionButton{"OK", true, true, false};
  MessageDialogButton CancelButton{"Cancel", false, false, true};
  MessageDialogButton AlternateActionButton{"", false, false, false};

  // Shows the dialog and gives the button pressed: one of the three members above.
  MessageDialogButton* ShowModal();
};

enum class MessageDialogChoice { Action, Cancel, Alternate };

// How the view shows modal boxes. Both calls return when the user has answered.
class Dialogs {
 public:
  virtual ~Dialogs() = default;
  virtual MsgBoxResult showMsgBox(const std::string& text, const MsgBoxStyle& style,
                                  const std::string& title) = 0;
  virtual MessageDialogChoice showMessageDialog(const MessageDialog& dialog) = 0;
};

// Shows a modal message box and gives the number of the button pressed. Timer ticks go on
// meanwhile; input to the windows is refused.
std::int32_t MsgBox(const std::string& text, std::int32_t buttons = 0, const std::string& title = "");

}  // namespace corvalta::platform
