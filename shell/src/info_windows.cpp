#include <corvalta/shell/info_windows.h>

#include <corvalta/platform/app_info.h>
#include <corvalta/platform/controls.h>
#include <corvalta/platform/url_opener.h>

namespace corvalta::shell {
namespace {

using platform::Handler;

template <class W>
Handler bind(W* window, void (W::*method)()) {
  return [window, method](const platform::EventArgs&) { (window->*method)(); };
}

}  // namespace

AboutBox::AboutBox() : Window("AboutBox") { build(aboutBoxDescription()); }

Handler AboutBox::handlerFor(std::string_view control, std::string_view event) {
  if (event == "Action" && control == "PushButton1") return bind(this, &AboutBox::PushButton1_Action);
  if (event == "Action" && control == "PushButton2") return bind(this, &AboutBox::PushButton2_Action);
  if (event == "Open" && control == "StaticText4") return bind(this, &AboutBox::StaticText4_Open);
  return {};
}

void AboutBox::PushButton1_Action() {
  platform::ShowURL(std::string(platform::app_info::authorMailAddress));
}

void AboutBox::PushButton2_Action() {
  platform::ShowURL(std::string(platform::app_info::makerWebSite()));
}

void AboutBox::StaticText4_Open() {
  control<platform::StaticText>("StaticText4").setText(std::string(platform::app_info::LongVersion()));
}

Help::Help() : Window("Help") { build(helpDescription()); }

selfTest::selfTest() : Window("selfTest") { build(selfTestDescription()); }

Handler selfTest::handlerFor(std::string_view control, std::string_view event) {
  if (event == "Open" && control == "StaticText2") return bind(this, &selfTest::StaticText2_Open);
  if (event == "Action" && control == "PushButton1") return bind(this, &selfTest::PushButton1_Action);
  return {};
}

void selfTest::StaticText2_Open() {
  control<platform::StaticText>("StaticText2").setText(std::string(platform::app_info::LongVersion()));
}

void selfTest::PushButton1_Action() {
  auto& app = application();
  app.implicitInstance("updateWindow").ShowModal();
  if (platform::Window* self = app.liveWindow("selfTest")) {
    self->Close();
  }
}

void registerInfoWindows(platform::Application& app) {
  app.registerWindowClass("AboutBox", [] { return std::make_unique<AboutBox>(); });
  app.registerWindowClass("Help", [] { return std::make_unique<Help>(); });
  app.registerWindowClass("selfTest", [] { return std::make_unique<selfTest>(); });
}

}  // namespace corvalta::shell
