#pragma once

#include <corvalta/net/http_socket.h>
#include <corvalta/testing/fake_tcp_socket.h>
#include <corvalta/testing/virtual_time_loop.h>

#include <memory>
#include <string>
#include <vector>

namespace corvalta::net {

// Writes each event of an HTTPSocket as one line with its arguments.
class EventLog {
 public:
  void attach(HTTPSocket& http);
  std::vector<std::string> lines;
  // Each AuthenticationRequired answers with the next of these, then false.
  struct Credentials {
    std::string name;
    std::string password;
  };
  std::vector<Credentials> answers;
  // Called after each event's line is written.
  std::function<void()> onEvent;
  // A page, a download or an error has been logged.
  [[nodiscard]] bool ended() const;

 private:
  void add(std::string line);
};

// Text for a byte string with control characters spelled out, so logs stay readable.
std::string visible(std::string_view bytes);

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
  // The same for a waiting call: the server accepts, sends the bytes and closes once the call
  // waits.
  void answerWhenWaited(const std::string& bytes);
};

}  // namespace corvalta::net
