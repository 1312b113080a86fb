#pragma once

#include <corvalta/net/http_socket.h>

namespace corvalta::net {

class HTTPSocket::Guard {
 public:
  explicit Guard(const HTTPSocket& socket)
      : socket_(socket), alive_(socket.alive_), attempt_(socket.attempt_) {}

  [[nodiscard]] bool alive() const { return !alive_.expired(); }
  // Alive, and no other request (nor Close) has started since.
  [[nodiscard]] bool holds() const { return alive() && socket_.attempt_ == attempt_; }

 private:
  const HTTPSocket& socket_;
  std::weak_ptr<char> alive_;
  std::uint64_t attempt_;
};

template <typename Handler, typename... Args>
bool HTTPSocket::fire(const Handler& handler, const Args&... args) {
  if (!handler) {
    return true;
  }
  const Guard guard(*this);
  Handler copy = handler;
  copy(args...);
  return guard.holds();
}

}  // namespace corvalta::net
