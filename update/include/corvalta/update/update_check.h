#pragma once

#include <corvalta/platform/app_info.h>
#include <corvalta/platform/application.h>
#include <corvalta/platform/window_description.h>
#include <corvalta/update/http_socket_child.h>

#include <string>

namespace corvalta::update {

struct UpdateWindowSetup {
  platform::WindowDescription description;
  SocketFactory newSocket;
  // Where the manifest is fetched: the build's update server unless a test names another.
  std::string manifestURL = std::string(platform::app_info::updateManifestURL());
};

// Makes the window class updateWindow known to the application; selfTest's button shows it.
void registerUpdateWindow(platform::Application& app, UpdateWindowSetup setup);

}  // namespace corvalta::update
