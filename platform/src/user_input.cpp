#include <corvalta/platform/application.h>
#include <corvalta/platform/controls.h>
#include <corvalta/platform/user_input.h>

namespace corvalta::platform {
namespace {

template <class C>
C* find(Application& app, const std::string& windowClass, const std::string& control) {
  Window* window = app.liveWindow(windowClass);
  return window == nullptr ? nullptr : dynamic_cast<C*>(window->controlByName(control));
}

}  // namespace

Dispatcher::Delivery pressControl(Application& app, std::string windowClass, std::string control) {
  return app.dispatcher().input(windowClass, [&app, windowClass, control] {
    if (auto* target = find<Control>(app, windowClass, control)) target->userPress();
  });
}

Dispatcher::Delivery typeText(Application& app, std::string windowClass, std::string control,
                              std::string text) {
  return app.dispatcher().input(windowClass, [&app, windowClass, control, text] {
    if (auto* field = find<EditField>(app, windowClass, control)) {
      if (field->acceptsInput()) field->SetFocus();
      field->userType(text);
    }
  });
}

Dispatcher::Delivery pressReturn(Application& app, std::string windowClass) {
  return app.dispatcher().input(windowClass, [&app, windowClass] {
    Window* window = app.liveWindow(windowClass);
    if (Control* button = window != nullptr ? window->defaultButton() : nullptr) {
      button->userPress();
    }
  });
}

Dispatcher::Delivery editCell(Application& app, std::string windowClass, std::string control,
                              std::int32_t row, std::int32_t column, std::string text) {
  return app.dispatcher().input(windowClass, [&app, windowClass, control, row, column, text] {
    if (auto* list = find<Listbox>(app, windowClass, control)) list->userEditCell(row, column, text);
  });
}

Dispatcher::Delivery closeWindow(Application& app, std::string windowClass) {
  return app.dispatcher().input(windowClass, [&app, windowClass] {
    if (Window* window = app.liveWindow(windowClass)) window->Close();
  });
}

Dispatcher::Delivery chooseMenuItem(Application& app, std::string itemName) {
  return app.dispatcher().input({}, [&app, itemName] { app.runMenuHandler(itemName); });
}

}  // namespace corvalta::platform
