#pragma once

#include <corvalta/net/http_socket.h>

namespace corvalta::net {

template <typename Handler, typename... Args>
bool HTTPSocket::fire(const Handler& handler, const Args&... args) {
  if (!handler) {
    return true;
  }
  const auto guard = liveness_.token();
  Handler copy = handler;
  copy(args...);
  return guard.holds();
}

}  // namespace corvalta::net
