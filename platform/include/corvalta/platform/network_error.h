#pragma once

#include <cstdint>
#include <string_view>

namespace corvalta::platform {

// Every code that a request can end with, in one table, because the update check shows the
// number to the player ("(Code: N)") and whoever reads a bug report looks it up here.
//
//   Code  Name                   Meaning
//   ----  ---------------------  ---------------------------------------------------------------
//      0  None                   The request ended with a page (any HTTP status is a page).
//      1  DownloadFileUnusable   The download file is a folder, can't be created or can't be
//                                opened for writing; nothing was sent.
//     -1  TimeLimitReached       A waiting call heard nothing for its time limit; the connection
//                                was closed.
//      2  HeaderBlockTooLong     The server sent more than 256 KiB without ending
//                                its header block; the connection was closed.
//      3  DownloadWriteFailed    Writing the body to the download file failed (disk full, I/O
//                                error); the connection was closed, the bytes written so far stay.
//    101  ConnectionRefused      Nothing listens on that port.
//    102  HostNotFound           The host name could not be resolved.
//    103  NetworkUnreachable     No route to the host, or the network is down.
//    104  InvalidPort            The port is outside 1 to 65535.
//    105  ConnectionLost         The connection broke (reset, timeout of the operating system).
//    106  RemoteHostClosed       The peer closed the connection: a normal end of a page.
//    199  OtherSocketError       Any other failure of the socket.
//
// Codes 101 and above are what the TCP socket reports as its last error; the HTTP client passes
// them on when the connection fails before it is up.
enum class NetworkError : std::int32_t {
  None = 0,
  DownloadFileUnusable = 1,
  TimeLimitReached = -1,
  HeaderBlockTooLong = 2,
  DownloadWriteFailed = 3,
  ConnectionRefused = 101,
  HostNotFound = 102,
  NetworkUnreachable = 103,
  InvalidPort = 104,
  ConnectionLost = 105,
  RemoteHostClosed = 106,
  OtherSocketError = 199,
};

[[nodiscard]] constexpr std::int32_t code(NetworkError error) {
  return static_cast<std::int32_t>(error);
}

// A short English name for a code, for tools and logs; "unknown" for numbers not in the table.
[[nodiscard]] constexpr std::string_view errorName(std::int32_t value) {
  switch (static_cast<NetworkError>(value)) {
    case NetworkError::None: return "none";
    case NetworkError::DownloadFileUnusable: return "download file unusable";
    case NetworkError::TimeLimitReached: return "time limit reached";
    case NetworkError::HeaderBlockTooLong: return "header block too long";
    case NetworkError::DownloadWriteFailed: return "download write failed";
    case NetworkError::ConnectionRefused: return "connection refused";
    case NetworkError::HostNotFound: return "host not found";
    case NetworkError::NetworkUnreachable: return "network unreachable";
    case NetworkError::InvalidPort: return "invalid port";
    case NetworkError::ConnectionLost: return "connection lost";
    case NetworkError::RemoteHostClosed: return "remote host closed";
    case NetworkError::OtherSocketError: return "other socket error";
  }
  return "unknown";
}

}  // namespace corvalta::platform
