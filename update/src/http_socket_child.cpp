#include <corvalta/platform/application.h>
#include <corvalta/update/http_socket_child.h>

namespace corvalta::update {

HTTPSocketChild::HTTPSocketChild(std::unique_ptr<platform::TCPSocket> socket)
    : PaneChild("HTTPSocket"), socket_(std::move(socket), platform::Application::current().loop()) {
  socket_.events.PageReceived = [this](const std::string& url, std::int32_t status,
                                       const net::HTTPSocket::Headers& /*headers*/,
                                       const std::string& content) {
    deliver([this, url, status, content] { raise("PageReceived", {url, status, content}); });
  };
  socket_.events.Error = [this](std::int32_t code) {
    deliver([this, code] { raise("Error", {code}); });
  };
}

void HTTPSocketChild::closing() {
  socket_.Close();
  liveness_.end();
}

void HTTPSocketChild::deliver(std::function<void()> event) {
  // Held back while another handler runs, the event may come due after the window has closed
  // or gone.
  platform::Application::current().dispatcher().event([token = liveness_.token(), event = std::move(event)] {
    if (token.alive()) event();
  });
}

}  // namespace corvalta::update
