#include "one_game_per_folder.h"

#include <corvalta/store/preferences_folder.h>

#include <QApplication>
#include <QSocketNotifier>
#include <QWidget>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstring>
#include <thread>

namespace corvalta::app {
namespace {

constexpr const char* kLockFileName = ".corvalta.lock";

// A name in the abstract namespace, which leaves no file behind: the user and the lock file's
// identity, so that two spellings of one folder meet and two users never do.
sockaddr_un socketAddressOf(int lock, socklen_t& length) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  struct stat status {};
  ::fstat(lock, &status);
  const std::string name = "corvalta/" + std::to_string(::getuid()) + "/" +
                           std::to_string(status.st_dev) + ":" + std::to_string(status.st_ino);
  std::memcpy(address.sun_path + 1, name.data(), name.size());
  length = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + 1 + name.size());
  return address;
}

int newSocket() { return ::socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0); }

// The game that holds the lock may be between taking it and listening: a connection refused
// is tried again for a second. The request is the connection itself.
void askToComeToFront(int lock) {
  socklen_t length = 0;
  const sockaddr_un address = socketAddressOf(lock, length);
  for (int attempt = 0; attempt < 20; ++attempt) {
    const int fd = newSocket();
    const bool connected = fd >= 0 && ::connect(fd, reinterpret_cast<const sockaddr*>(&address), length) == 0;
    if (fd >= 0) {
      ::close(fd);
    }
    if (connected || errno != ECONNREFUSED) {
      return;
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
  }
}

int listenOn(int lock) {
  socklen_t length = 0;
  const sockaddr_un address = socketAddressOf(lock, length);
  const int fd = newSocket();
  if (fd < 0) {
    return -1;
  }
  if (::bind(fd, reinterpret_cast<const sockaddr*>(&address), length) != 0 || ::listen(fd, 8) != 0) {
    ::close(fd);
    return -1;
  }
  return fd;
}

bool sameUser(int connection) {
  ucred peer{};
  socklen_t size = sizeof peer;
  return ::getsockopt(connection, SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 && peer.uid == ::getuid();
}

}  // namespace

OneGamePerFolder::OneGamePerFolder(const std::string& folder) {
  const store::PreferencesFolder made(store::posixSystemCalls(), folder);
  lock_ = ::open((folder + "/" + kLockFileName).c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOCTTY, 0600);
  if (lock_ < 0) {
    return;
  }
  if (::flock(lock_, LOCK_EX | LOCK_NB) == 0) {
    listener_ = listenOn(lock_);
  } else if (errno == EWOULDBLOCK) {
    first_ = false;
    askToComeToFront(lock_);
  }
}

OneGamePerFolder::~OneGamePerFolder() {
  notifier_.reset();
  if (listener_ >= 0) {
    ::close(listener_);
  }
  if (lock_ >= 0) {
    ::close(lock_);
  }
}

void OneGamePerFolder::onLaterStart(std::function<void()> comeToFront) {
  if (listener_ < 0) {
    return;
  }
  comeToFront_ = std::move(comeToFront);
  notifier_ = std::make_unique<QSocketNotifier>(listener_, QSocketNotifier::Read);
  QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(),
                   [this] { answerLaterStarts(); });
}

void OneGamePerFolder::answerLaterStarts() {
  bool asked = false;
  for (int connection; (connection = ::accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC)) >= 0;) {
    asked = asked || sameUser(connection);
    ::close(connection);
  }
  if (asked && comeToFront_) {
    comeToFront_();
  }
}

void bringToFront(QWidget* window) {
  if (window == nullptr) {
    return;
  }
  window->setWindowState((window->windowState() & ~Qt::WindowMinimized) | Qt::WindowActive);
  window->show();
  window->raise();
  window->activateWindow();
  if (QWidget* modal = QApplication::activeModalWidget(); modal != nullptr && modal != window) {
    modal->raise();
    modal->activateWindow();
  }
}

}  // namespace corvalta::app
