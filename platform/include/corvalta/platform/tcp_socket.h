#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>

namespace corvalta::platform {

// A non-blocking TCP client connection driven by the program's one event loop. Every call
// returns at once; outcomes come back as events, on the loop's thread, never from inside the
// call that caused them.
//
// What the HTTP client relies on:
// - Connect starts a connection to Address:Port. It ends in onConnected or in onError with
//   LastErrorCode set (a refused port, an unknown host, a bad port); a silent host may never
//   answer at all.
// - Bytes arrive as onDataAvailable; they stay readable until read, also after the peer has
//   closed: the last onDataAvailable comes before the onError that reports the close.
// - A peer that closes the connection ends it with onError and RemoteHostClosed.
// - After Close no event of that connection fires again, and its unread bytes are gone.
// - A handler may call any member, Close and Connect included, and may destroy the socket.
//
// Error codes are those of NetworkError (network_error.h).
class TCPSocket {
 public:
  struct Events {
    std::function<void()> onConnected;
    std::function<void()> onDataAvailable;
    std::function<void()> onError;
    // All bytes handed to Write so far have gone to the operating system.
    std::function<void(bool)> onSendComplete;
  };

  virtual ~TCPSocket() = default;

  virtual void setEvents(Events events) = 0;

  [[nodiscard]] virtual std::string Address() const = 0;
  virtual void setAddress(std::string address) = 0;
  // Any 32-bit value can be set; one outside 1 to 65535 fails the next Connect with InvalidPort.
  [[nodiscard]] virtual std::int32_t Port() const = 0;
  virtual void setPort(std::int32_t port) = 0;

  virtual void Connect() = 0;
  virtual void Close() = 0;
  // Drops bytes received and not yet read.
  virtual void Purge() = 0;
  // Gives the socket a turn at its input and output from inside a wait. Sockets that the event
  // loop already drives have nothing to do here.
  virtual void Poll() = 0;
  virtual void Write(const std::string& bytes) = 0;

  [[nodiscard]] virtual std::size_t BytesAvailable() const = 0;
  // Moves up to into.size() of the bytes received and not yet read into the caller's buffer and
  // returns how many: those that BytesAvailable counted, and any that have arrived since. The
  // caller owns the memory, so a long download reuses one buffer (or reads straight into its
  // page) instead of allocating for every piece.
  virtual std::size_t Read(std::span<char> into) = 0;

  [[nodiscard]] virtual bool IsConnected() const = 0;
  [[nodiscard]] virtual std::int32_t LastErrorCode() const = 0;
};

}  // namespace corvalta::platform
