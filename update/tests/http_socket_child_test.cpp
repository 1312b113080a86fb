#include <corvalta/platform/application.h>
#include <corvalta/platform/headless/headless_services.h>
#include <corvalta/testing/fake_tcp_socket.h>
#include <corvalta/update/http_socket_child.h>

#include <gtest/gtest.h>

namespace corvalta::update {
namespace {

using Heard = std::vector<std::string>;

// The socket's events reach the window through the dispatcher: held while a handler runs,
// delivered after it, and dropped for good when the window has closed in between. Closing the
// window drops the connection under way at once, though the window lives on until the handler
// returns.
TEST(HTTPSocketChild, EventsWaitForTheRunningHandlerAndNeverReachAClosedWindow) {
  const struct { const char* name; bool answered, closed; Heard heard; } cases[] = {
      {"answered", true, false, {"page body"}},
      {"answered, closed while held", true, true, {}},
      {"closed while the request is under way", false, true, {}}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    platform::headless::HeadlessServices services{1};
    platform::Application app{services.services()};
    auto socket = std::make_unique<corvalta::testing::FakeTCPSocket>();
    corvalta::testing::FakeTCPSocket& network = *socket;
    const auto record = network.record();
    Heard heard;
    // A window with one HTTPSocketChild over a socket that the test plays the network for.
    app.registerWindowClass("SocketWindow", [&] {
      auto window = std::make_unique<platform::Window>("SocketWindow");
      auto& hp = window->addControl("hp", std::make_unique<HTTPSocketChild>(std::move(socket)));
      hp.installHandler("PageReceived", [&](const platform::EventArgs& args) {
        heard.push_back("page " + std::get<std::string>(args.at(2)));
      });
      hp.installHandler("Error", [&](const platform::EventArgs&) { heard.push_back("error"); });
      return window;
    });
    auto& window = app.implicitInstance("SocketWindow");
    window.control<HTTPSocketChild>("hp").socket().Get("http://host/Updates/corvalta.xml");
    app.dispatcher().call([&] {
      network.accept();
      if (c.answered) {
        network.send("HTTP/1.0 200 OK\r\n\r\nbody");
        network.closeByPeer();
      }
      EXPECT_EQ(heard, Heard{}) << "delivered inside a running handler";
      if (!c.closed) return;
      window.Close();
      EXPECT_TRUE(c.answered || (record->at(0).closedByClient && !network.open()));
    });
    EXPECT_EQ(heard, c.heard);
    EXPECT_EQ(app.liveWindow("SocketWindow") == nullptr, c.closed);
  }
}

}  // namespace
}  // namespace corvalta::update
