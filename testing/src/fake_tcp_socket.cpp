#include <corvalta/platform/network_error.h>
#include <corvalta/testing/fake_tcp_socket.h>

#include <utility>

namespace corvalta::testing {

void FakeTCPSocket::Connect() {
  Close();
  record_->push_back(Connection{address_, port_, {}, false});
  state_ = State::Connecting;
  lastError_ = 0;
}

void FakeTCPSocket::Close() {
  if (open()) {
    record_->back().closedByClient = true;
  }
  state_ = State::Idle;
  unread_.clear();
}

void FakeTCPSocket::Write(const std::string& bytes) {
  if (state_ == State::Connected) {
    record_->back().written += bytes;
  }
}

std::size_t FakeTCPSocket::Read(std::span<char> into) {
  const std::size_t count = unread_.copy(into.data(), into.size());
  unread_.erase(0, count);
  return count;
}

void FakeTCPSocket::accept() {
  if (state_ == State::Connecting) {
    state_ = State::Connected;
    fire(events_.onConnected);
  }
}

void FakeTCPSocket::refuse(std::int32_t errorCode) {
  if (state_ == State::Connecting) {
    state_ = State::Ended;
    lastError_ = errorCode;
    fire(events_.onError);
  }
}

void FakeTCPSocket::send(std::string_view bytes) {
  if (state_ == State::Connected) {
    unread_ += bytes;
    fire(events_.onDataAvailable);
  }
}

// Bytes not yet read stay readable, as with a real socket after the peer's close.
void FakeTCPSocket::closeByPeer() {
  if (state_ == State::Connected) {
    state_ = State::Ended;
    lastError_ = platform::code(platform::NetworkError::RemoteHostClosed);
    fire(events_.onError);
  }
}

// Runs a copy: the handler may destroy this socket, and we touch nothing after it.
void FakeTCPSocket::fire(const std::function<void()>& handler) {
  if (handler) {
    const std::function<void()> copy = handler;
    copy();
  }
}

}  // namespace corvalta::testing
