#pragma once

#include <corvalta/platform/tcp_socket.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace corvalta::testing {

// A TCPSocket in memory. The test plays the network: it accepts or refuses each connection,
// sends bytes and closes, and each of these fires the socket's event at once. What the client
// did (where it connected, what it wrote, whether it closed) is kept per connection.
//
// Like a real socket, a connection the client has closed fires nothing more, and bytes sent to
// it are lost. The client may destroy the socket from inside any event.
class FakeTCPSocket final : public platform::TCPSocket {
 public:
  struct Connection {
    std::string address;
    std::int32_t port = 0;
    std::string written;
    bool closedByClient = false;
  };

  // The record outlives the socket, so a test can look after the client has gone.
  [[nodiscard]] std::shared_ptr<const std::vector<Connection>> record() const { return record_; }
  [[nodiscard]] const std::vector<Connection>& connections() const { return *record_; }
  // A connection is open: Connect was called and neither side has ended it.
  [[nodiscard]] bool open() const { return state_ != State::Idle && state_ != State::Ended; }

  void accept();
  void refuse(std::int32_t errorCode);
  void send(std::string_view bytes);
  void closeByPeer();

  void setEvents(Events events) override { events_ = std::move(events); }
  [[nodiscard]] std::string Address() const override { return address_; }
  void setAddress(std::string address) override { address_ = std::move(address); }
  [[nodiscard]] std::int32_t Port() const override { return port_; }
  void setPort(std::int32_t port) override { port_ = port; }
  void Connect() override;
  void Close() override;
  void Purge() override { unread_.clear(); }
  void Poll() override {}
  void Write(const std::string& bytes) override;
  [[nodiscard]] std::size_t BytesAvailable() const override { return unread_.size(); }
  std::size_t Read(std::span<char> into) override;
  [[nodiscard]] bool IsConnected() const override { return state_ == State::Connected; }
  [[nodiscard]] std::int32_t LastErrorCode() const override { return lastError_; }

 private:
  enum class State { Idle, Connecting, Connected, Ended };
  void fire(const std::function<void()>& handler);

  Events events_;
  std::string address_;
  std::int32_t port_ = 0;
  State state_ = State::Idle;
  std::string unread_;
  std::int32_t lastError_ = 0;
  std::shared_ptr<std::vector<Connection>> record_ = std::make_shared<std::vector<Connection>>();
};

}  // namespace corvalta::testing
