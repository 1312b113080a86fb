#pragma once

#include <atomic>
#include <chrono>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace corvalta::testing {

// A TCP server on a free port of 127.0.0.1 that plays a script per connection, for what a real
// server won't do: headers in pieces, odd line ends, closing early, holding on, sending forever,
// sending slowly. It runs on a thread of its own, so a client may wait on it from the main
// thread, and it keeps every request it read.
class ScriptedServer {
 public:
  struct Step {
    enum class Kind { ReadRequest, Send, Pause, SendForever, HoldOpen };
    Kind kind;
    std::string bytes;
    std::chrono::milliseconds pause{0};
  };
  // Reads one request: its header block, then as many body bytes as its Content-length says.
  static Step readRequest() { return {Step::Kind::ReadRequest, {}, {}}; }
  static Step send(std::string bytes) { return {Step::Kind::Send, std::move(bytes), {}}; }
  static Step pause(std::chrono::milliseconds time) { return {Step::Kind::Pause, {}, time}; }
  // Sends the bytes again and again until the client goes away.
  static Step sendForever(std::string bytes) {
    return {Step::Kind::SendForever, std::move(bytes), {}};
  }
  // Keeps the connection open until the client closes it.
  static Step holdOpen() { return {Step::Kind::HoldOpen, {}, {}}; }

  using Script = std::vector<Step>;

  // Connection i plays script i; connections beyond the list play the last one. After its last
  // step the server closes the connection.
  explicit ScriptedServer(std::vector<Script> scripts);
  ~ScriptedServer();
  ScriptedServer(const ScriptedServer&) = delete;
  ScriptedServer& operator=(const ScriptedServer&) = delete;

  [[nodiscard]] int port() const { return port_; }
  [[nodiscard]] std::string url(std::string_view path) const;
  // The requests read so far, one per ReadRequest, in order.
  [[nodiscard]] std::vector<std::string> requests() const;
  [[nodiscard]] int connections() const { return accepted_; }

 private:
  void serve();
  void play(int fd, const Script& script);
  bool readRequest(int fd);
  bool waitFor(int fd, short events);

  std::vector<Script> scripts_;
  int listener_ = -1;
  int port_ = 0;
  std::atomic<bool> stopping_{false};
  std::atomic<int> accepted_{0};
  mutable std::mutex mutex_;
  std::vector<std::string> requests_;
  std::thread thread_;
};

}  // namespace corvalta::testing
