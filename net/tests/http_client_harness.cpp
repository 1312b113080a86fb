#include "http_client_harness.h"

#include <tuple>

namespace corvalta::net {
namespace {
std::string describe(const HTTPSocket::Headers& headers) {
  return headers == nullptr ? "nil" : "[" + headers->Source() + "]";
}
}  // namespace

void EventLog::add(std::string line) {
  lines.push_back(std::move(line));
  if (onEvent) {
    onEvent();
  }
}

bool endsRequest(const std::string& line) {
  return line.starts_with("PageReceived") || line.starts_with("DownloadComplete") ||
         line.starts_with("Error");
}

void EventLog::attach(HTTPSocket& http) {
  using Headers = HTTPSocket::Headers;
  http.events.Connected = [this] { add("Connected"); };
  http.events.HeadersReceived = [this](const Headers& headers, std::int32_t status) {
    add("HeadersReceived " + std::to_string(status) + " " + describe(headers));
  };
  http.events.ReceiveProgress = [this](std::int64_t soFar, std::int64_t expected,
                                       std::string_view data) {
    add("ReceiveProgress " + std::to_string(soFar) + "/" + std::to_string(expected) + " '" +
        std::string(data) + "'");
  };
  http.events.PageReceived = [this](const std::string& url, std::int32_t status,
                                    const Headers& headers, const std::string& content) {
    add("PageReceived " + url + " " + std::to_string(status) + " " + describe(headers) + " '" +
        content + "'");
  };
  http.events.DownloadComplete = [this](const std::string& url, std::int32_t status,
                                        const Headers& headers,
                                        const std::filesystem::path& file) {
    add("DownloadComplete " + url + " " + std::to_string(status) + " " + describe(headers) +
        " " + file.filename().string());
  };
  http.events.Error = [this](std::int32_t code) { add("Error " + std::to_string(code)); };
  http.events.AuthenticationRequired = [this](const Headers& headers, std::string& name,
                                              std::string& password) {
    add("AuthenticationRequired " + describe(headers));
    if (answers.empty()) {
      return false;
    }
    std::tie(name, password) = answers.front();
    answers.erase(answers.begin());
    return true;
  };
}

FakeClient::FakeClient() {
  auto fake = std::make_unique<testing::FakeTCPSocket>();
  socket = fake.get();
  connections = fake->record();
  http = std::make_unique<HTTPSocket>(std::move(fake), loop);
  log.attach(*http);
}

void FakeClient::answer(const std::vector<std::string>& pieces, bool close) {
  socket->accept();
  for (const std::string& piece : pieces) {
    socket->send(piece);
  }
  if (close) {
    socket->closeByPeer();
  }
}

}  // namespace corvalta::net
