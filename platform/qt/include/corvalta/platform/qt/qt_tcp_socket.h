#pragma once

#include <corvalta/platform/liveness.h>
#include <corvalta/platform/tcp_socket.h>

#include <memory>

class QTcpSocket;

namespace corvalta::platform::qt {

// TCPSocket over QTcpSocket. Each Connect gets a fresh QTcpSocket, so that nothing of an
// earlier connection (a host lookup, a late signal) can reach the new one.
class QtTcpSocket final : public TCPSocket {
 public:
  QtTcpSocket();
  ~QtTcpSocket() override;
  QtTcpSocket(const QtTcpSocket&) = delete;
  QtTcpSocket& operator=(const QtTcpSocket&) = delete;

  void setEvents(Events events) override;
  [[nodiscard]] std::string Address() const override;
  void setAddress(std::string address) override;
  [[nodiscard]] std::int32_t Port() const override;
  void setPort(std::int32_t port) override;
  void Connect() override;
  void Close() override;
  void Purge() override;
  void Poll() override;
  void Write(const std::string& bytes) override;
  [[nodiscard]] std::size_t BytesAvailable() const override;
  std::size_t Read(std::span<char> into) override;
  [[nodiscard]] bool IsConnected() const override;
  [[nodiscard]] std::int32_t LastErrorCode() const override;

 private:
  void dropConnection();
  void failSoon(std::int32_t errorCode);
  void wire(QTcpSocket& socket);
  void deliver(const std::function<void()>& call);

  Events events_;
  std::string address_;
  std::int32_t port_ = 0;
  std::int32_t lastError_ = 0;
  QTcpSocket* socket_ = nullptr;
  // How many of this socket's handlers are running: a QTcpSocket must not be deleted from
  // inside its own signal.
  int handlerDepth_ = 0;
  // Work queued on the loop finds out whether it still has somebody to serve; each Connect and
  // Close is an attempt, so that a failure queued for one is dropped when another has started.
  Liveness liveness_;
};

}  // namespace corvalta::platform::qt
