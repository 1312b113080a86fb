#pragma once

#include <corvalta/platform/application.h>
#include <corvalta/platform/window.h>
#include <corvalta/platform/window_description.h>

namespace corvalta::shell {

// The About box: the program's name and version, and buttons that write to the author and
// visit the maker's web site. Neither button closes it.
class AboutBox final : public platform::Window {
 public:
  AboutBox();
  void PushButton1_Action();
  void PushButton2_Action();
  void StaticText4_Open();

 protected:
  platform::Handler handlerFor(std::string_view control, std::string_view event) override;
};

// The rules of the game in one field that the user may edit; nothing keeps the edits.
class Help final : public platform::Window {
 public:
  Help();
};

// The door to the update check: the running version and the button that starts a check in
// updateWindow, after which no selfTest window remains.
class selfTest final : public platform::Window {
 public:
  selfTest();
  void StaticText2_Open();
  void PushButton1_Action();

 protected:
  platform::Handler handlerFor(std::string_view control, std::string_view event) override;
};

// Their descriptions, each built from its table.
[[nodiscard]] platform::WindowDescription aboutBoxDescription();
[[nodiscard]] platform::WindowDescription helpDescription();
[[nodiscard]] platform::WindowDescription selfTestDescription();

// Makes the three window classes known to the application, each by its class name.
void registerInfoWindows(platform::Application& app);

}  // namespace corvalta::shell
