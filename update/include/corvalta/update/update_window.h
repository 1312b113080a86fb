#pragma once

#include <corvalta/net/http_socket.h>
#include <corvalta/platform/window.h>
#include <corvalta/platform/window_description.h>
#include <corvalta/update/http_socket_child.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace corvalta::update {

// updateWindow's description: its record, the label, the bar, the socket and Cancel.
[[nodiscard]] platform::WindowDescription updateWindowDescription();

// The window that carries one update check. Opening it fetches the manifest with its own
// HTTPSocket, hp, and closes selfTest; the check then ends in one of these ways: an empty page
// (the window closes), the current version (a message, unless automaticCheck), a version on
// offer (the upgrade prompt), a failure to reach the server (a beep and a message with the
// code), or the user's Cancel. Closing the window drops the request in flight.
class updateWindow : public platform::Window {
 public:
  updateWindow(const platform::WindowDescription& description, SocketFactory newSocket,
               std::string manifestURL);

  // The one live instance, made when there is none.
  static updateWindow& instance();

  // Checks without the closing message of the current-version case.
  bool automaticCheck = false;

  void hp_PageReceived(const std::string& url, std::int32_t status,
                       const net::HTTPSocket::Headers& headers, const std::string& content);
  void hp_Error(std::int32_t code);
  void PushButton1_Action();
  // Offers the published version; the user downloads it through the browser, leaves, or
  // visits the maker's web site, which leaves this window open.
  void askUpgrade(const std::string& version, const std::string& description,
                  const std::string& downloadURL, bool free);

 protected:
  platform::Handler handlerFor(std::string_view control, std::string_view event) override;
  std::unique_ptr<platform::PaneChild> makeChild(std::string_view className) override;
  void Event_Open() override;

 private:
  SocketFactory newSocket_;
  std::string manifestURL_;
};

}  // namespace corvalta::update
