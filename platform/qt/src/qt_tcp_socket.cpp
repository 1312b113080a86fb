#include <corvalta/platform/network_error.h>
#include <corvalta/platform/qt/qt_tcp_socket.h>

#include <QCoreApplication>
#include <QTcpSocket>

#include <limits>

#include <sys/socket.h>

namespace corvalta::platform::qt {
namespace {

// Qt keeps one block of its buffer between reads if the block is no larger than its own block
// size, 16 KiB, and frees a larger one each time the buffer runs empty: with larger pieces every
// read would allocate anew, and whether that costs page faults depends on the allocator's mood.
constexpr qint64 kReadBufferBytes = 16 * 1024;

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
  // Qt would otherwise pull all the kernel holds into one growing buffer, allocated afresh for
  // each piece.
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

std::size_t QtTcpSocket::BytesAvailable() const {
  return socket_ == nullptr ? 0 : static_cast<std::size_t>(socket_->bytesAvailable());
}

std::size_t QtTcpSocket::Read(std::span<char> into) {
  if (socket_ == nullptr || into.empty()) {
    return 0;
  }
  const qint64 buffered = socket_->read(into.data(), static_cast<qint64>(into.size()));
  const std::size_t got = buffered > 0 ? static_cast<std::size_t>(buffered) : 0;
  if (got == into.size() || socket_->state() != QAbstractSocket::ConnectedState) {
    return got;
  }
  // Qt takes the kernel's bytes into its buffer 16 KiB at a time: what else has arrived goes
  // straight into the caller's memory, a copy and a turn of the loop fewer per 16 KiB. The end
  // of the stream and errors are left for Qt to find on its next read.
  const ssize_t direct = ::recv(static_cast<int>(socket_->socketDescriptor()), into.data() + got,
                                into.size() - got, MSG_DONTWAIT);
  return direct > 0 ? got + static_cast<std::size_t>(direct) : got;
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
