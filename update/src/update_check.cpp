#include <corvalta/update/update_check.h>
#include <corvalta/update/update_window.h>

namespace corvalta::update {

void registerUpdateWindow(platform::Application& app, UpdateWindowSetup setup) {
  app.registerWindowClass("updateWindow", [setup = std::move(setup)] {
    return std::make_unique<updateWindow>(setup.description, setup.newSocket, setup.manifestURL);
  });
}

}  // namespace corvalta::update
