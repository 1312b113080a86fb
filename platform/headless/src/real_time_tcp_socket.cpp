#include <corvalta/platform/headless/real_time_tcp_socket.h>

namespace corvalta::platform::headless {

RealTimeTcpSocket::RealTimeTcpSocket(std::unique_ptr<TCPSocket> socket, HeadlessEventLoop& loop)
    : socket_(std::move(socket)), loop_(loop) {}

void RealTimeTcpSocket::setEvents(Events events) {
  // The hold ends before the handler runs: the handler may start the next connection.
  events.onError = [this, onError = std::move(events.onError)] {
    hold_.reset();
    if (onError) onError();
  };
  socket_->setEvents(std::move(events));
}

void RealTimeTcpSocket::Connect() {
  hold_.emplace(loop_);
  socket_->Connect();
}

void RealTimeTcpSocket::Close() {
  hold_.reset();
  socket_->Close();
}

}  // namespace corvalta::platform::headless
