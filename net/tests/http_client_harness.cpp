#include "http_client_harness.h"

#include <algorithm>
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

void EventLog::add(std::string line) {
  lines.push_back(std::move(line));
  if (onEvent) {
    onEvent();
  }
}

bool EventLog::ended() const {
  return std::any_of(lines.begin(), lines.end(), [](const std::string& line) {
    return line.starts_with("PageReceived") || line.starts_with("DownloadComplete") ||
           line.starts_with("Error");
  });
}

void EventLog::attach(HTTPSocket& http) {
  http.events.Connected = [this] { add("Connected"); };
  http.events.HeadersReceived = [this](const HTTPSocket::Headers& headers, std::int32_t status) {
    add("HeadersReceived " + std::to_string(status) + " " + describe(headers));
  };
  http.events.ReceiveProgress = [this](std::int64_t soFar, std::int64_t expected,
                                       const std::string& data) {
    add("ReceiveProgress " + std::to_string(soFar) + "/" + std::to_string(expected) +
                    " '" + visible(data) + "'");
  };
  http.events.PageReceived = [this](const std::string& url, std::int32_t status,
                                    const HTTPSocket::Headers& headers,
                                    const std::string& content) {
    add("PageReceived " + url + " " + std::to_string(status) + " " +
                    describe(headers) + " '" + visible(content) + "'");
  };
  http.events.DownloadComplete = [this](const std::string& url, std::int32_t status,
                                        const HTTPSocket::Headers& headers,
                                        const std::filesystem::path& file) {
    add("DownloadComplete " + url + " " + std::to_string(status) + " " +
                    describe(headers) + " " + file.filename().string());
  };
  http.events.Error = [this](std::int32_t code) {
    add("Error " + std::to_string(code));
  };
  http.events.AuthenticationRequired = [this](const HTTPSocket::Headers& headers,
                                              std::string& name, std::string& password) {
    add("AuthenticationRequired " + describe(headers));
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

void FakeClient::answerWhenWaited(const std::string& bytes) {
  loop.at({}, [this, bytes] { answer({bytes}); });
}

}  // namespace corvalta::net
