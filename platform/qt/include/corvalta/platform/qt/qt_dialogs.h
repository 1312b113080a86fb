#pragma once

#include <corvalta/platform/dialogs.h>
#include <corvalta/platform/url_opener.h>

namespace corvalta::platform::qt {

// Message boxes and message dialogs as QMessageBox, each run in its own modal loop.
class QtDialogs final : public Dialogs {
 public:
  MsgBoxResult showMsgBox(const std::string& text, const MsgBoxStyle& style,
                          const std::string& title) override;
  MessageDialogChoice showMessageDialog(const MessageDialog& dialog) override;
};

// Hands addresses to the desktop's browser or mail program.
class QtUrlOpener final : public UrlOpener {
 public:
  void open(const std::string& url) override;
};

}  // namespace corvalta::platform::qt
