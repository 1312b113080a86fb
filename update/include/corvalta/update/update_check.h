#pragma once

#include <corvalta/platform/app_info.h>
#include <corvalta/platform/application.h>
#include <corvalta/platform/window_description.h>
#include <corvalta/update/http_socket_child.h>

#include <string>

namespace corvalta::update {

struct UpdateCheckSetup {
  platform::WindowDescription selfTestDescription;
  platform::WindowDescription updateWindowDescription;
  SocketFactory newSocket;
  // Where the manifest is fetched: the build's update server unless a test names another.
  std::string manifestURL = std::string(platform::app_info::updateManifestURL());
};

// Registers the window classes selfTest and updateWindow and the menu command
// "CheckForUpdateCheckNow" ("Check Now"), which shows selfTest.
void installUpdateCheck(platform::Application& app, UpdateCheckSetup setup);

// What "Check Now" does: shows the one selfTest window, made when there is none.
void CheckForUpdateCheckNow();

}  // namespace corvalta::update
