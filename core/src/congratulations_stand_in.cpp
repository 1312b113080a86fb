#include <corvalta/core/congratulations_stand_in.h>
#include <corvalta/core/module1.h>
#include <corvalta/platform/controls.h>

namespace corvalta::core {

CongratulationsStandIn::CongratulationsStandIn(const platform::WindowDescription& description)
    : Window("Congratulations") {
  build(description);
}

platform::Handler CongratulationsStandIn::handlerFor(std::string_view control,
                                                     std::string_view event) {
  if (control != "Enter" || event != "Action") return {};
  return [this](const platform::EventArgs&) {
    Module1.Name = this->control<platform::EditField>("NameField").Text();
    Module1.NewHighScoreFlag = false;
    Hide();
  };
}

void CongratulationsStandIn::Event_Open() {
  control<platform::EditField>("NameField").setText(Module1.Name);
}

}  // namespace corvalta::core
