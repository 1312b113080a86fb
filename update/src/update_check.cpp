#include <corvalta/update/self_test.h>
#include <corvalta/update/update_check.h>
#include <corvalta/update/update_window.h>

namespace corvalta::update {

void installUpdateCheck(platform::Application& app, UpdateCheckSetup setup) {
  app.registerWindowClass("selfTest", [description = setup.selfTestDescription] {
    return std::make_unique<selfTest>(description);
  });
  app.registerWindowClass("updateWindow", [setup = std::move(setup)] {
    return std::make_unique<updateWindow>(setup.updateWindowDescription, setup.newSocket,
                                          setup.manifestURL);
  });
  app.addMenuHandler("CheckForUpdateCheckNow", [] {
    CheckForUpdateCheckNow();
    return true;
  });
}

void CheckForUpdateCheckNow() { selfTest::instance().Show(); }

}  // namespace corvalta::update
