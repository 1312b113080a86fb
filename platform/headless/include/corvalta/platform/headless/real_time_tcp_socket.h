#pragma once

#include <corvalta/platform/headless/headless_event_loop.h>
#include <corvalta/platform/tcp_socket.h>

#include <memory>
#include <optional>

namespace corvalta::platform::headless {

// A real TCP socket for the headless view. From Connect until the connection ends (Close, or
// the error that reports its failure or its end) the loop is held in real time, so that a wait
// sleeps until the network answers instead of jumping past it on the virtual clock.
class RealTimeTcpSocket final : public TCPSocket {
 public:
  RealTimeTcpSocket(std::unique_ptr<TCPSocket> socket, HeadlessEventLoop& loop);

  void setEvents(Events events) override;
  [[nodiscard]] std::string Address() const override { return socket_->Address(); }
  void setAddress(std::string address) override { socket_->setAddress(std::move(address)); }
  [[nodiscard]] std::int32_t Port() const override { return socket_->Port(); }
  void setPort(std::int32_t port) override { socket_->setPort(port); }
  void Connect() override;
  void Close() override;
  void Purge() override { socket_->Purge(); }
  void Poll() override { socket_->Poll(); }
  void Write(const std::string& bytes) override { socket_->Write(bytes); }
  [[nodiscard]] std::size_t BytesAvailable() const override { return socket_->BytesAvailable(); }
  std::size_t Read(std::span<char> into) override { return socket_->Read(into); }
  [[nodiscard]] bool IsConnected() const override { return socket_->IsConnected(); }
  [[nodiscard]] std::int32_t LastErrorCode() const override { return socket_->LastErrorCode(); }

 private:
  std::unique_ptr<TCPSocket> socket_;
  HeadlessEventLoop& loop_;
  std::optional<HeadlessEventLoop::RealTimeHold> hold_;
};

}  // namespace corvalta::platform::headless
