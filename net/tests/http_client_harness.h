#pragma once

#include <corvalta/net/http_socket.h>
#include <corvalta/testing/fake_tcp_socket.h>
#include <corvalta/testing/virtual_time_loop.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace corvalta::net {

// Whether an event line ends a request: a page, a download or an error.
bool endsRequest(const std::string& line);

// Writes each event of an HTTPSocket as one line with its arguments.
class EventLog {
 public:
  void attach(HTTPSocket& http);
  [[nodiscard]] std::ptrdiff_t endings() const {
    return std::ranges::count_if(lines, endsRequest);
  }
  std::vector<std::string> lines;
  // Each AuthenticationRequired answers with the next name and password, then false.
  std::vector<std::pair<std::string, std::string>> answers;
  // Called after each event's line is written.
  std::function<void()> onEvent;

 private:
  void add(std::string line);
};

// An HTTPSocket on a fake socket and a virtual clock, with its events logged.
struct FakeClient {
  FakeClient();
  testing::VirtualTimeLoop loop;
  testing::FakeTCPSocket* socket = nullptr;  // owned by http
  std::shared_ptr<const std::vector<testing::FakeTCPSocket::Connection>> connections;
  std::unique_ptr<HTTPSocket> http;
  EventLog log;

  // Accepts the connection and plays the server's side: each piece is sent in turn, then the
  // server closes.
  void answer(const std::vector<std::string>& pieces, bool close = true);
};

}  // namespace corvalta::net
