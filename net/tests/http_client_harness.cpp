#include "http_client_harness.h"

#include <cstdio>

namespace corvalta::net {

std::string visible(std::string_view bytes) {
  std::string text;
  for (const char c : bytes) {
    if (c == '\r') {
      text += "\\r";
    } else if (c == '\n') {
      text += "\\n";
    } else if (static_cast<unsigned char>(c) < 32 || static_cast<unsigned char>(c) > 126) {
      char hex[8];
      std::snprintf(hex, sizeof hex, "\\x%02x", static_cast<unsigned char>(c));
      text += hex;
    } else {
      text += c;
    }
  }
  return text;
}

namespace {
std::string describe(const HTTPSocket::Headers& headers) {
  return headers == nullptr ? "nil" : "[" + visible(headers->Source()) + "]";
}
}  // namespace

void EventLog::attach(HTTPSocket& http) {
  http.events.Connected = [this] { lines.push_back("Connected"); };
  http.events.HeadersReceived = [this](const HTTPSocket::Headers& headers, std::int32_t status) {
    lines.push_back("HeadersReceived " + std::to_string(status) + " " + describe(headers));
  };
  http.events.ReceiveProgress = [this](std::int64_t soFar, std::int64_t expected,
                                       const std::string& data) {
    lines.push_back("ReceiveProgress " + std::to_string(soFar) + "/" + std::to_string(expected) +
                    " '" + visible(data) + "'");
  };
  http.events.PageReceived = [this](const std::string& url, std::int32_t status,
                                    const HTTPSocket::Headers& headers,
                                    const std::string& content) {
    lines.push_back("PageReceived " + url + " " + std::to_string(status) + " " +
                    describe(headers) + " '" + visible(content) + "'");
  };
  http.events.DownloadComplete = [this](const std::string& url, std::int32_t status,
                                        const HTTPSocket::Headers& headers,
                                        const std::filesystem::path& file) {
    lines.push_back("DownloadComplete " + url + " " + std::to_string(status) + " " +
                    describe(headers) + " " + file.filename().string());
  };
  http.events.Error = [this](std::int32_t code) {
    lines.push_back("Error " + std::to_string(code));
  };
  http.events.AuthenticationRequired = [this](const HTTPSocket::Headers& headers,
                                              std::string& name, std::string& password) {
    lines.push_back("AuthenticationRequired " + describe(headers));
    if (answers.empty()) {
      return false;
    }
    name = answers.front().name;
    password = answers.front().password;
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
