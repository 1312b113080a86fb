#include <corvalta/platform/qt/loaded_tcp_socket.h>

#include <corvalta/platform/liveness.h>
#include <corvalta/platform/network_error.h>

#include <QCoreApplication>
#include <QLibrary>

#include <cstdio>

namespace corvalta::platform::qt {
namespace {

using NewSocket = TCPSocket* (*)();

// Where the module is missing: each Connect fails with OtherSocketError once it has returned,
// unless a Close or another Connect comes first; nothing else ever happens.
class UnavailableTcpSocket final : public TCPSocket {
 public:
  void setEvents(Events events) override { events_ = std::move(events); }
  [[nodiscard]] std::string Address() const override { return address_; }
  void setAddress(std::string address) override { address_ = std::move(address); }
  [[nodiscard]] std::int32_t Port() const override { return port_; }
  void setPort(std::int32_t port) override { port_ = port; }
  void Connect() override {
    liveness_.nextAttempt();
    QMetaObject::invokeMethod(
        QCoreApplication::instance(),
        [this, token = liveness_.token()] {
          if (!token.holds()) {
            return;
          }
          lastError_ = code(NetworkError::OtherSocketError);
          // A copy: the handler may destroy this socket.
          if (auto handler = events_.onError) {
            handler();
          }
        },
        Qt::QueuedConnection);
  }
  void Close() override { liveness_.nextAttempt(); }
  void Purge() override {}
  void Poll() override {}
  void Write(const std::string& /*bytes*/) override {}
  [[nodiscard]] std::string Lookahead() const override { return {}; }
  [[nodiscard]] std::size_t BytesAvailable() const override { return 0; }
  std::string Read(std::size_t /*count*/) override { return {}; }
  std::string ReadAll() override { return {}; }
  [[nodiscard]] bool IsConnected() const override { return false; }
  [[nodiscard]] std::int32_t LastErrorCode() const override { return lastError_; }

 private:
  Events events_;
  std::string address_;
  std::int32_t port_ = 0;
  std::int32_t lastError_ = 0;
  Liveness liveness_;
};

NewSocket loadModule() {
  QLibrary module(QCoreApplication::applicationDirPath() +
                  QStringLiteral("/../" CORVALTA_MODULE_FOLDER "/libcorvalta_tcp_socket.so"));
  // QLibrary leaves the module loaded.
  const auto newSocket = reinterpret_cast<NewSocket>(module.resolve("corvalta_new_tcp_socket"));
  if (newSocket == nullptr) {
    std::fprintf(stderr, "corvalta: no network: %s\n", qPrintable(module.errorString()));
  }
  return newSocket;
}

}  // namespace

std::unique_ptr<TCPSocket> newLoadedTcpSocket() {
  static const NewSocket newSocket = loadModule();
  if (newSocket == nullptr) {
    return std::make_unique<UnavailableTcpSocket>();
  }
  return std::unique_ptr<TCPSocket>(newSocket());
}

}  // namespace corvalta::platform::qt
