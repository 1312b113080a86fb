#include <corvalta/platform/app_info.h>
#include <corvalta/platform/application.h>
#include <corvalta/platform/controls.h>
#include <corvalta/platform/dialogs.h>
#include <corvalta/platform/sound.h>
#include <corvalta/platform/text.h>
#include <corvalta/platform/url_opener.h>
#include <corvalta/update/manifest.h>
#include <corvalta/update/update_window.h>
#include <corvalta/update/upgrade_message.h>

namespace corvalta::update {

using platform::EventArgs;
using platform::ProgressBar;
using platform::StaticText;

namespace {

std::string textArg(const EventArgs& args, std::size_t i) {
  const auto* value = i < args.size() ? std::get_if<std::string>(&args[i]) : nullptr;
  return value != nullptr ? *value : std::string();
}

std::int32_t numberArg(const EventArgs& args, std::size_t i) {
  const auto* value = i < args.size() ? std::get_if<std::int32_t>(&args[i]) : nullptr;
  return value != nullptr ? *value : 0;
}

}  // namespace

updateWindow::updateWindow(const platform::WindowDescription& description, SocketFactory newSocket,
                           std::string manifestURL)
    : Window("updateWindow"), newSocket_(std::move(newSocket)), manifestURL_(std::move(manifestURL)) {
  build(description);
}

updateWindow& updateWindow::instance() {
  return platform::implicitInstance<updateWindow>("updateWindow");
}

platform::Handler updateWindow::handlerFor(std::string_view control, std::string_view event) {
  if (control == "hp" && event == "PageReceived") {
    return [this](const EventArgs& args) {
      hp_PageReceived(textArg(args, 0), numberArg(args, 1),
                      this->control<HTTPSocketChild>("hp").socket().PageHeaders(), textArg(args, 2));
    };
  }
  if (control == "hp" && event == "Error") {
    return [this](const EventArgs& args) { hp_Error(numberArg(args, 0)); };
  }
  if (control == "PushButton1" && event == "Action") {
    return [this](const EventArgs&) { PushButton1_Action(); };
  }
  return {};
}

std::unique_ptr<platform::PaneChild> updateWindow::makeChild(std::string_view className) {
  if (className != "HTTPSocket") return nullptr;
  return std::make_unique<HTTPSocketChild>(newSocket_());
}

void updateWindow::Event_Open() {
  control<ProgressBar>("ProgressBar1").setMaximum(0);
  control<HTTPSocketChild>("hp").socket().Get(manifestURL_);
  // Only a live selfTest: asking the accessor would make a new one just to close it.
  if (Window* door = application().liveWindow("selfTest")) door->Close();
}

void updateWindow::hp_PageReceived(const std::string& /*url*/, std::int32_t /*status*/,
                                   const net::HTTPSocket::Headers& /*headers*/,
                                   const std::string& content) {
  if (content.empty()) {
    Close();
    return;
  }
  const Manifest manifest = readManifest(content);
  control<ProgressBar>("ProgressBar1").setVisible(false);
  const bool current =
      isRunningVersion(manifest.CurrentVersion, platform::app_info::MajorVersion(),
                       platform::app_info::MinorVersion(), platform::app_info::BugVersion());
  if (current) {
    auto& label = control<StaticText>("StaticText1");
    label.setText("This version is current.");
    label.Refresh(true);
    if (!automaticCheck) platform::MsgBox("You are using the current version. No update is available.");
    Close();
  } else {
    askUpgrade(manifest.CurrentVersion, manifest.Description, manifest.DownloadURLOSX, manifest.Free);
  }
}

void updateWindow::hp_Error(std::int32_t code) {
  platform::Beep();
  platform::MsgBox(std::string("There was a communication error ") + "with the website. Please try " +
                   "again later. (Code: " + platform::Str(code) + ")");
  Close();
}

void updateWindow::PushButton1_Action() { Close(); }

void updateWindow::askUpgrade(const std::string& version, const std::string& description,
                              const std::string& downloadURL, bool free) {
  platform::MessageDialog dialog;
  dialog.Title = "New version available!";
  dialog.Message = upgradeMessage(version, platform::app_info::ShortVersion(), free);
  dialog.Explanation = description;
  dialog.CancelButton.Visible = true;
  dialog.AlternateActionButton.Caption = "Go to Website";
  dialog.AlternateActionButton.Visible = true;
  dialog.Icon = 3;
  const platform::MessageDialogButton* pressed = dialog.ShowModal();
  if (pressed == &dialog.CancelButton) {
    Close();
  } else if (pressed == &dialog.ActionButton) {
    platform::ShowURL(downloadURL);
    Close();
  } else if (pressed == &dialog.AlternateActionButton) {
    platform::ShowURL(std::string(platform::app_info::makerWebSite()));
  }
}

}  // namespace corvalta::update
