#pragma once

#include <corvalta/platform/dialogs.h>
#include <corvalta/platform/url_opener.h>

#include <functional>

class QWidget;

namespace corvalta::platform::qt {

// Message boxes and message dialogs as QMessageBox, each run in its own modal loop, centred
// over their owner and transient for it.
class QtDialogs final : public Dialogs {
 public:
  // The window that the boxes belong to: the main window, or none while it is not up.
  void setOwner(std::function<QWidget*()> owner) { owner_ = std::move(owner); }

  MsgBoxResult showMsgBox(const std::string& text, const MsgBoxStyle& style,
                          const std::string& title) override;
  MessageDialogChoice showMessageDialog(const MessageDialog& dialog) override;

 private:
  [[nodiscard]] QWidget* owner() const { return owner_ ? owner_() : nullptr; }

  std::function<QWidget*()> owner_;
};

// Hands addresses to the desktop's browser or mail program.
class QtUrlOpener final : public UrlOpener {
 public:
  void open(const std::string& url) override;
};

}  // namespace corvalta::platform::qt
