#pragma once

#include <chrono>

namespace corvalta::testing {

// A TCP port of 127.0.0.1 that was free a moment ago.
int freeLocalPort();

// Whether something accepts connections on 127.0.0.1:port, trying until the time is up.
bool acceptsConnections(int port, std::chrono::milliseconds patience);

}  // namespace corvalta::testing
