#pragma once

#include <corvalta/platform/tcp_socket.h>

#include <memory>

namespace corvalta::platform::qt {

// A QtTcpSocket made by the module libcorvalta_tcp_socket.so, which is loaded at the first
// call from the module folder beside the executable's folder (lib/corvalta in a build tree).
// The desktop program does not link Qt Network: it and the Kerberos, proxy and resolver
// libraries it needs cost every start about 8 ms and 1.5 MiB, and only the update check uses
// them. Where the module cannot be loaded, every Connect fails with OtherSocketError.
std::unique_ptr<TCPSocket> newLoadedTcpSocket();

}  // namespace corvalta::platform::qt
