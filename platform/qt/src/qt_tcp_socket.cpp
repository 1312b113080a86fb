#include <corvalta/platform/network_error.h>
#include <corvalta/platform/qt/qt_tcp_socket.h>

#include <QCoreApplication>
#include <QTcpSocket>

#include <limits>

namespace corvalta::platform::qt {
namespace {

constexpr qint64 kReadBufferBytes = 256 * 1024;

std::int32_t errorCodeOf(QAbstractSocket::SocketError error) {
  switch (error) {
    case QAbstractSocket::ConnectionRefusedError: return code(NetworkError::ConnectionRefused);
    case QAbstractSocket::HostNotFoundError: return code(NetworkError::HostNotFound);
    case QAbstractSocket::NetworkError: return code(NetworkError::NetworkUnreachable);
    case QAbstractSocket::RemoteHostClosedError: return code(NetworkError::RemoteHostClosed);
    case QAbstractSocket::SocketTimeoutError: return code(NetworkError::ConnectionLost);
    default: return code(NetworkError::OtherSocketError);
  }
}

std::string readUpTo(QTcpSocket* socket, std::size_t count) {
  if (socket == nullptr) {
    return {};
  }
  const auto available = static_cast<std::size_t>(socket->bytesAvailable());
  std::string bytes(std::min(count, available), '\0');
  const qint64 got = socket->read(bytes.data(), static_cast<qint64>(bytes.size()));
  bytes.resize(got > 0 ? static_cast<std::size_t>(got) : 0);
  return bytes;
}

}  // namespace

QtTcpSocket::QtTcpSocket() = default;

QtTcpSocket::~QtTcpSocket() { dropConnection(); }

void QtTcpSocket::setEvents(Events events) { events_ = std::move(events); }

std::string QtTcpSocket::Address() const { return address_; }

void QtTcpSocket::setAddress(std::string address) { address_ = std::move(address); }

std::int32_t QtTcpSocket::Port() const { return port_; }

void QtTcpSocket::setPort(std::int32_t port) { port_ = port; }

void QtTcpSocket::Connect() {
  dropConnection();
  liveness_.nextAttempt();
  lastError_ = 0;
  if (port_ < 1 || port_ > std::numeric_limits<quint16>::max()) {
    failSoon(code(NetworkError::InvalidPort));
    return;
  }
  socket_ = new QTcpSocket;
  // Qt would otherwise pull all the kernel holds into one growing buffer: a fast sender then
  // makes pieces of megabytes, which cost memory and fall out of the cache on every copy.
  socket_->setReadBufferSize(kReadBufferBytes);
  wire(*socket_);
  socket_->connectToHost(QString::fromStdString(address_), static_cast<quint16>(port_));
}

void QtTcpSocket::Close() {
  liveness_.nextAttempt();
  dropConnection();
}

void QtTcpSocket::Purge() {
  if (socket_ != nullptr) {
    socket_->skip(socket_->bytesAvailable());
  }
}

void QtTcpSocket::Poll() {}

void QtTcpSocket::Write(const std::string& bytes) {
  if (socket_ != nullptr) {
    socket_->write(bytes.data(), static_cast<qint64>(bytes.size()));
  }
}

std::string QtTcpSocket::Lookahead() const {
  if (socket_ == nullptr) {
    return {};
  }
  const QByteArray bytes = socket_->peek(socket_->bytesAvailable());
  return bytes.toStdString();
}

std::size_t QtTcpSocket::BytesAvailable() const {
  return socket_ == nullptr ? 0 : static_cast<std::size_t>(socket_->bytesAvailable());
}

std::string QtTcpSocket::Read(std::size_t count) { return readUpTo(socket_, count); }

std::string QtTcpSocket::ReadAll() {
  return readUpTo(socket_, std::numeric_limits<std::size_t>::max());
}

bool QtTcpSocket::IsConnected() const {
  return socket_ != nullptr && socket_->state() == QAbstractSocket::ConnectedState;
}

std::int32_t QtTcpSocket::LastErrorCode() const { return lastError_; }

void QtTcpSocket::dropConnection() {
  if (socket_ == nullptr) {
    return;
  }
  QTcpSocket* socket = std::exchange(socket_, nullptr);
  socket->disconnect();
  socket->abort();
  if (handlerDepth_ > 0) {
    socket->deleteLater();
  } else {
    delete socket;
  }
}

void QtTcpSocket::failSoon(std::int32_t errorCode) {
  // Connect returns before its outcome is known, on every path.
  QMetaObject::invokeMethod(
      QCoreApplication::instance(),
      [this, token = liveness_.token(), errorCode] {
        if (!token.holds()) {
          return;
        }
        lastError_ = errorCode;
        if (auto handler = events_.onError) {
          deliver(handler);
        }
      },
      Qt::QueuedConnection);
}

void QtTcpSocket::deliver(const std::function<void()>& call) {
  // The handler may destroy this object, and with it the handler itself: run a copy, and
  // touch nothing of ours afterwards unless we still live.
  const auto token = liveness_.token();
  ++handlerDepth_;
  call();
  if (token.alive()) {
    --handlerDepth_;
  }
}

void QtTcpSocket::wire(QTcpSocket& socket) {
  QObject::connect(&socket, &QTcpSocket::connected, [this] {
    if (auto handler = events_.onConnected) {
      deliver(handler);
    }
  });
  QObject::connect(&socket, &QTcpSocket::readyRead, [this] {
    if (auto handler = events_.onDataAvailable) {
      deliver(handler);
    }
  });
  QObject::connect(&socket, &QTcpSocket::errorOccurred, [this](QAbstractSocket::SocketError e) {
    lastError_ = errorCodeOf(e);
    if (auto handler = events_.onError) {
      deliver(handler);
    }
  });
  QObject::connect(&socket, &QTcpSocket::bytesWritten, [this, &socket](qint64) {
    if (socket.bytesToWrite() == 0 && events_.onSendComplete) {
      deliver([handler = events_.onSendComplete] { handler(true); });
    }
  });
}

}  // namespace corvalta::platform::qt
