#include <corvalta/platform/app_info.h>
#include <corvalta/platform/application.h>
#include <corvalta/platform/controls.h>
#include <corvalta/update/self_test.h>
#include <corvalta/update/update_window.h>

namespace corvalta::update {

selfTest::selfTest(const platform::WindowDescription& description) : Window("selfTest") {
  build(description);
}

selfTest& selfTest::instance() { return platform::implicitInstance<selfTest>("selfTest"); }

platform::Handler selfTest::handlerFor(std::string_view control, std::string_view event) {
  if (control == "StaticText2" && event == "Open") {
    return [this](const platform::EventArgs&) { StaticText2_Open(); };
  }
  if (control == "PushButton1" && event == "Action") {
    return [this](const platform::EventArgs&) { PushButton1_Action(); };
  }
  return {};
}

void selfTest::StaticText2_Open() {
  control<platform::StaticText>("StaticText2").setText(std::string(platform::app_info::LongVersion()));
}

void selfTest::PushButton1_Action() {
  // updateWindow's Open closes this window; it still runs this handler to its end.
  updateWindow::instance().ShowModal();
  // Only a live selfTest: asking the accessor would make a new one just to close it.
  if (Window* door = application().liveWindow("selfTest")) door->Close();
}

}  // namespace corvalta::update
