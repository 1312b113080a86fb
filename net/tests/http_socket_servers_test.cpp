#include "http_client_harness.h"

#include <corvalta/platform/qt/qt_event_loop.h>
#include <corvalta/platform/qt/qt_tcp_socket.h>
#include <corvalta/testing/local_ports.h>
#include <corvalta/testing/nginx_server.h>
#include <corvalta/testing/scripted_server.h>
#include <corvalta/testing/temporary_folder.h>

#include <gtest/gtest.h>

#include <random>

namespace corvalta::net {
namespace {

using testing::ScriptedServer;
using Lines = std::vector<std::string>;

// An HTTPSocket on a real socket in Qt's loop, with its events logged.
struct QtClient {
  QtClient()
      : http(std::make_unique<HTTPSocket>(std::make_unique<platform::qt::QtTcpSocket>(), loop)) {
    log.attach(*http);
    log.onEvent = [this] { loop.wake(); };
  }
  // Runs the loop until the log holds a page, a download or an error; false if a hung request
  // outlasted the patience.
  bool runUntilEnded() {
    platform::EventLoop::WaitOptions options;
    options.deadline = loop.now() + std::chrono::seconds(30);
    return loop.waitUntil([this] { return log.endings() > 0; }, options);
  }
  platform::qt::QtEventLoop loop;
  std::unique_ptr<HTTPSocket> http;
  EventLog log;
};

// A large file goes to disk byte for byte.
TEST(NginxTest, LargeDownload) {
  const testing::TemporaryFolder root;
  std::string large(8 << 20, '\0');
  std::mt19937 random(7);
  for (char& c : large) c = static_cast<char>(random());
  testing::writeBytes(root.path() / "large.bin", large);
  const testing::NginxServer nginx(root.path());

  const testing::TemporaryFolder out;
  QtClient client;
  client.http->Get(nginx.url("/large.bin"), out.path() / "a.bin");
  ASSERT_TRUE(client.runUntilEnded());
  EXPECT_TRUE(client.log.lines.back().starts_with("DownloadComplete "));
  EXPECT_TRUE(testing::fileBytes(out.path() / "a.bin") == large);
}

// A port where nothing listens fails the request with its code, and nothing else fires.
TEST(ServerFailureTest, RefusedConnection) {
  QtClient client;
  client.http->Get("http://127.0.0.1:" + std::to_string(testing::freeLocalPort()) + "/");
  ASSERT_TRUE(client.runUntilEnded());
  EXPECT_EQ(client.log.lines, Lines{"Error 101"});
  EXPECT_EQ(client.http->ErrorCode(), 101);

  QtClient badPort;
  badPort.http->Get("http://127.0.0.1:70000/");
  ASSERT_TRUE(badPort.runUntilEnded());
  EXPECT_EQ(badPort.log.lines, Lines{"Error 104"});
}

// What a real server won't do, over a real socket: every request still ends in one page or
// one error, and what went out is byte for byte the request.
TEST(ScriptedServerTest, HostileServers) {
  using S = ScriptedServer;
  struct Case {
    const char* what;
    ScriptedServer::Script script;
    std::string lastLine;  // URL stands for the request's URL
  };
  const std::vector<Case> cases = {
      {"close with no bytes", {S::readRequest()}, "PageReceived URL 0 nil ''"},
      {"close in mid-headers", {S::readRequest(), S::send("HTTP/1.0 200 OK\r\nContent-Le")},
       "PageReceived URL 200 [HTTP/1.0 200 OK\r\nContent-Le] ''"},
      {"close in mid-body",
       {S::readRequest(), S::send("HTTP/1.0 200 OK\r\nContent-Length: 100\r\n\r\nhalf")},
       "PageReceived URL 200 [HTTP/1.0 200 OK\r\nContent-Length: 100] 'half'"},
      {"garbage for a status line", {S::readRequest(), S::send("\x01\xff garbage\r\n\r\nx")},
       "PageReceived URL 0 [\x01\xff garbage] 'x'"},
      {"endless header lines",
       {S::readRequest(), S::send("HTTP/1.0 200 OK\r\n"),
        S::sendForever("X-Forever: " + std::string(200, 'x') + "\r\n")},
       "Error 2"},
  };
  for (const Case& c : cases) {
    ScriptedServer server({c.script});
    QtClient client;
    const std::string url = server.url("/p");
    client.http->Get(url);
    ASSERT_TRUE(client.runUntilEnded()) << c.what;
    std::string lastLine = c.lastLine;
    if (const auto at = lastLine.find("URL"); at != std::string::npos) lastLine.replace(at, 3, url);
    EXPECT_EQ(client.log.lines.back(), lastLine) << c.what;
    EXPECT_EQ(client.log.endings(), 1) << c.what;
    const std::string host = "127.0.0.1:" + std::to_string(server.port());
    EXPECT_EQ(server.requests(),
              Lines{"GET /p HTTP/1.0\r\nAccept: */*\r\nAccept-Language: en\r\nHost: " + host +
                    "\r\n\r\n"})
        << c.what;
  }
}

// A server that takes the request and says nothing ends a waiting call by its limit.
TEST(ScriptedServerTest, SilentServer) {
  ScriptedServer silent({{ScriptedServer::readRequest(), ScriptedServer::holdOpen()}});
  QtClient client;
  EXPECT_EQ(client.http->Get(silent.url("/"), 1), "");
  EXPECT_EQ(client.http->ErrorCode(), -1);
  EXPECT_TRUE(client.log.lines.empty());
}

}  // namespace
}  // namespace corvalta::net
