#include <corvalta/platform/application.h>
#include <corvalta/platform/headless/headless_services.h>
#include <corvalta/testing/fake_tcp_socket.h>
#include <corvalta/update/http_socket_child.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace corvalta::update {
namespace {

class SocketWindow : public platform::Window {
 public:
  // What the handlers hear goes to `heard`, which outlives the window.
  SocketWindow(std::unique_ptr<platform::TCPSocket> socket, std::vector<std::string>& heard)
      : Window("SocketWindow") {
    auto& hp = addControl("hp", std::make_unique<HTTPSocketChild>(std::move(socket)));
    hp.installHandler("PageReceived", [&heard](const platform::EventArgs& args) {
      heard.push_back("page " + std::get<std::string>(args.at(2)));
    });
    hp.installHandler("Error", [&heard](const platform::EventArgs& args) {
      heard.push_back("error " + std::to_string(std::get<std::int32_t>(args.at(0))));
    });
  }
  HTTPSocketChild& hp() { return control<HTTPSocketChild>("hp"); }
};

// The application with one SocketWindow over a socket that the test plays the network for.
struct SocketWindowApp {
  SocketWindowApp() {
    auto fake = std::make_unique<corvalta::testing::FakeTCPSocket>();
    network = fake.get();
    record = network->record();
    app.registerWindowClass("SocketWindow", [this, &fake] {
      return std::make_unique<SocketWindow>(std::move(fake), heard);
    });
    window = &dynamic_cast<SocketWindow&>(app.implicitInstance("SocketWindow"));
    window->hp().socket().Get("http://host/Updates/corvalta.xml");
  }

  platform::headless::HeadlessServices services{1};
  platform::Application app{services.services()};
  std::vector<std::string> heard;
  corvalta::testing::FakeTCPSocket* network = nullptr;
  std::shared_ptr<const std::vector<corvalta::testing::FakeTCPSocket::Connection>> record;
  SocketWindow* window = nullptr;
};

// The socket's events reach the window through the dispatcher: held while a handler runs,
// delivered after it, and dropped for good when the window has closed in between.
TEST(HTTPSocketChild, AnEventHeldBackNeverReachesAWindowThatClosedMeanwhile) {
  for (const bool closeFirst : {false, true}) {
    SCOPED_TRACE(closeFirst ? "closed while held" : "open");
    SocketWindowApp s;
    s.app.dispatcher().call([&] {
      s.network->accept();
      s.network->send("HTTP/1.0 200 OK\r\n\r\nbody");
      s.network->closeByPeer();
      EXPECT_EQ(s.heard, std::vector<std::string>{}) << "delivered inside a running handler";
      if (closeFirst) s.window->Close();
    });
    EXPECT_EQ(s.heard, closeFirst ? std::vector<std::string>{}
                                  : std::vector<std::string>{"page body"});
  }
}

// Closing the window drops the connection under way: the server sees the client go, and no
// answer that it sends afterwards fires anything.
TEST(HTTPSocketChild, ClosingTheWindowDropsTheRequest) {
  SocketWindowApp s;
  s.network->accept();
  s.app.dispatcher().call([&] {
    s.window->Close();
    // The window lives on until the handler returns; its connection doesn't.
    ASSERT_EQ(s.record->size(), 1u);
    EXPECT_TRUE(s.record->at(0).closedByClient);
    EXPECT_FALSE(s.network->open());
  });
  EXPECT_EQ(s.app.liveWindow("SocketWindow"), nullptr);
  EXPECT_EQ(s.heard, std::vector<std::string>{});
}

}  // namespace
}  // namespace corvalta::update
