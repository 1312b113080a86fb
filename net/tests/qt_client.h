#pragma once

#include "http_client_harness.h"

#include <corvalta/platform/qt/qt_event_loop.h>
#include <corvalta/platform/qt/qt_tcp_socket.h>

#include <chrono>

namespace corvalta::net {

// An HTTPSocket on a real socket in Qt's loop, with its events logged. Needs a
// QCoreApplication.
struct QtClient {
  QtClient();
  platform::qt::QtEventLoop loop;
  std::unique_ptr<HTTPSocket> http;
  EventLog log;

  // Runs the loop until the log holds a page, a download or an error; false if the patience
  // ran out first (a hung request, which a test reports rather than waits on forever).
  bool runUntilEnded(std::chrono::seconds patience = std::chrono::seconds(30));
};

}  // namespace corvalta::net
