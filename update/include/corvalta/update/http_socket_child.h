#pragma once

#include <corvalta/net/http_socket.h>
#include <corvalta/platform/liveness.h>
#include <corvalta/platform/pane_child.h>
#include <corvalta/platform/tcp_socket.h>

#include <functional>
#include <memory>

namespace corvalta::update {

// Makes the TCP socket under a window's HTTPSocket: the Qt one on the desktop, one that holds
// the headless loop in real time there, a fake in tests.
using SocketFactory = std::function<std::unique_ptr<platform::TCPSocket>()>;

// An HTTPSocket as a window owns it: found by name, not a control. Its PageReceived and Error
// reach the window's handlers through the dispatcher like any other event, as
// PageReceived(url, status, content) and Error(code); the headers stay with the socket
// (PageHeaders). When the window closes, the request in flight is dropped, and nothing of it,
// not even an event already held back, reaches the window afterwards.
class HTTPSocketChild final : public platform::PaneChild {
 public:
  explicit HTTPSocketChild(std::unique_ptr<platform::TCPSocket> socket);

  [[nodiscard]] net::HTTPSocket& socket() { return socket_; }

  void closing() override;

 private:
  void deliver(std::function<void()> event);

  net::HTTPSocket socket_;
  platform::Liveness liveness_;
};

}  // namespace corvalta::update
