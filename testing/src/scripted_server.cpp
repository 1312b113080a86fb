#include <corvalta/testing/scripted_server.h>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <stdexcept>

namespace corvalta::testing {
namespace {

constexpr int kTurnMs = 20;

std::size_t contentLength(std::string_view head) {
  std::string lower(head);
  std::transform(lower.begin(), lower.end(), lower.begin(),
                 [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
  const std::size_t at = lower.find("\r\ncontent-length:");
  return at == std::string::npos ? 0 : std::stoul(lower.substr(at + 17));
}

}  // namespace

ScriptedServer::ScriptedServer(std::vector<Script> scripts) : scripts_(std::move(scripts)) {
  listener_ = ::socket(AF_INET, SOCK_STREAM, 0);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t length = sizeof address;
  if (listener_ < 0 || ::bind(listener_, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0 ||
      ::listen(listener_, 16) != 0 ||
      ::getsockname(listener_, reinterpret_cast<sockaddr*>(&address), &length) != 0) {
    throw std::runtime_error("scripted server: can't listen on 127.0.0.1");
  }
  port_ = ntohs(address.sin_port);
  thread_ = std::thread([this] { serve(); });
}

ScriptedServer::~ScriptedServer() {
  stopping_ = true;
  thread_.join();
  ::close(listener_);
}

std::string ScriptedServer::url(std::string_view path) const {
  return "http://127.0.0.1:" + std::to_string(port_) + std::string(path);
}

std::vector<std::string> ScriptedServer::requests() const {
  const std::lock_guard lock(mutex_);
  return requests_;
}

// Waits a turn for the socket to be ready; false when the server is stopping.
bool ScriptedServer::waitFor(int fd, short events) {
  pollfd entry{fd, events, 0};
  while (!stopping_) {
    if (::poll(&entry, 1, kTurnMs) > 0) {
      return true;
    }
  }
  return false;
}

void ScriptedServer::serve() {
  while (waitFor(listener_, POLLIN)) {
    const int fd = ::accept(listener_, nullptr, nullptr);
    if (fd < 0) {
      continue;
    }
    const int index = accepted_++;
    play(fd, scripts_.at(std::min<std::size_t>(static_cast<std::size_t>(index), scripts_.size() - 1)));
    ::close(fd);
  }
}

void ScriptedServer::play(int fd, const Script& script) {
  for (const Step& step : script) {
    switch (step.kind) {
      case Step::Kind::ReadRequest:
        if (!readRequest(fd)) {
          return;
        }
        break;
      case Step::Kind::Send:
        if (::send(fd, step.bytes.data(), step.bytes.size(), MSG_NOSIGNAL) < 0) {
          return;
        }
        break;
      case Step::Kind::Pause:
        std::this_thread::sleep_for(step.pause);
        break;
      case Step::Kind::SendForever:
        while (waitFor(fd, POLLOUT)) {
          if (::send(fd, step.bytes.data(), step.bytes.size(), MSG_NOSIGNAL | MSG_DONTWAIT) < 0 &&
              errno != EAGAIN) {
            return;
          }
        }
        return;
      case Step::Kind::HoldOpen: {
        char sink[4096];
        while (waitFor(fd, POLLIN) && ::recv(fd, sink, sizeof sink, 0) > 0) {
        }
        return;
      }
    }
  }
}

bool ScriptedServer::readRequest(int fd) {
  std::string request;
  std::size_t headEnd = std::string::npos;
  char buffer[4096];
  while (headEnd == std::string::npos ||
         request.size() < headEnd + 4 + contentLength(request.substr(0, headEnd))) {
    if (!waitFor(fd, POLLIN)) {
      return false;
    }
    const ssize_t got = ::recv(fd, buffer, sizeof buffer, 0);
    if (got <= 0) {
      return false;
    }
    request.append(buffer, static_cast<std::size_t>(got));
    headEnd = request.find("\r\n\r\n");
  }
  const std::lock_guard lock(mutex_);
  requests_.push_back(std::move(request));
  return true;
}

}  // namespace corvalta::testing
