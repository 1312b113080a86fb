// HTTPSocket: the public operations and the request side, up to the request on the wire.
#include <corvalta/net/http_socket.h>

#include "http_socket_guard.h"
#include "text_scan.h"

namespace corvalta::net {

using detail::leadingInteger;

namespace {
constexpr const char* kGet = "GET";
constexpr const char* kPost = "POST";
constexpr const char* kHead = "HEAD";
}  // namespace

HTTPSocket::HTTPSocket(std::unique_ptr<platform::TCPSocket> socket, platform::EventLoop& loop)
    : socket_(std::move(socket)), loop_(loop) {
  InitializeRequestHeaders();
  socket_->setEvents({
      .onConnected = [this] { EventConnected(); },
      .onDataAvailable = [this] { EventDataAvailable(); },
      .onError = [this] { EventError(); },
      // Nothing waits for the request to leave: the answer tells.
      .onSendComplete = {},
  });
}

HTTPSocket::~HTTPSocket() {
  socket_->setEvents({});
  socket_->Close();
  KillDownloadStream();
  // A waiting call of ours may be asleep in the loop, under the handler that destroys us: it
  // must look again, find us gone and return.
  loop_.wake();
}

void HTTPSocket::Get(const std::string& url) { startAsync(url, kGet, std::nullopt); }

void HTTPSocket::Get(const std::string& url, const std::filesystem::path& file) {
  startAsync(url, kGet, file);
}

void HTTPSocket::Post(const std::string& url) { startAsync(url, kPost, std::nullopt); }

void HTTPSocket::Post(const std::string& url, const std::filesystem::path& file) {
  startAsync(url, kPost, file);
}

void HTTPSocket::GetHeaders(const std::string& url) { startAsync(url, kHead, std::nullopt); }

std::string HTTPSocket::Get(const std::string& url, std::int32_t timeLimitSeconds) {
  return startWaiting(url, kGet, std::nullopt, timeLimitSeconds) ? std::exchange(pageBuffer_, {})
                                                                 : std::string();
}

bool HTTPSocket::Get(const std::string& url, const std::filesystem::path& file,
                     std::int32_t timeLimitSeconds) {
  return startWaiting(url, kGet, file, timeLimitSeconds) && mErrorCode_ == 0;
}

std::string HTTPSocket::Post(const std::string& url, std::int32_t timeLimitSeconds) {
  return startWaiting(url, kPost, std::nullopt, timeLimitSeconds) ? std::exchange(pageBuffer_, {})
                                                                  : std::string();
}

bool HTTPSocket::Post(const std::string& url, const std::filesystem::path& file,
                      std::int32_t timeLimitSeconds) {
  return startWaiting(url, kPost, file, timeLimitSeconds) && mErrorCode_ == 0;
}

HTTPSocket::Headers HTTPSocket::GetHeaders(const std::string& url, std::int32_t timeLimitSeconds) {
  return startWaiting(url, kHead, std::nullopt, timeLimitSeconds) ? pageHeaders_ : nullptr;
}

void HTTPSocket::startAsync(const std::string& url, const std::string& method,
                            const std::optional<std::filesystem::path>& file) {
  synchronous_ = false;
  DoConnect(url, method, file);
}

// Returns false when the object was destroyed while it waited; the caller must then return
// without touching it.
bool HTTPSocket::startWaiting(const std::string& url, const std::string& method,
                              const std::optional<std::filesystem::path>& file,
                              std::int32_t timeLimitSeconds) {
  timeoutSeconds_ = timeLimitSeconds;
  synchronous_ = true;
  if (!DoConnect(url, method, file)) {
    return true;
  }
  const auto guard = liveness_.token();
  WaitForPage();
  return guard.alive();
}

void HTTPSocket::Close() {
  liveness_.nextAttempt();
  requestActive_ = false;
  connectionValid_ = false;
  socket_->Close();
  KillDownloadStream();
}

void HTTPSocket::SetRequestHeader(std::string_view name, std::string value) {
  if (value.empty()) {
    requestHeaders_.Delete(name);
  } else {
    requestHeaders_.SetHeader(name, std::move(value));
  }
}

void HTTPSocket::ClearRequestHeaders() { requestHeaders_.DeleteAllHeaders(); }

void HTTPSocket::SetPostContent(std::string content, std::string contentType) {
  postContent_ = std::move(content);
  postContentType_ = std::move(contentType);
}

HTTPSocket::Headers HTTPSocket::PageHeaders() const {
  return pageHeaders_ != nullptr && pageHeaders_->Count() != 0 ? pageHeaders_ : nullptr;
}

void HTTPSocket::InitializeRequestHeaders() {
  requestHeaders_ = InternetHeaders();
  requestHeaders_.SetHeader("Accept", "*/*");
  requestHeaders_.SetHeader("Accept-Language", "en");
}

// Any scheme means plain TCP; the host part may carry a port; nothing in the path is escaped.
// Credentials written into a URL are taken for the host.
void HTTPSocket::ParseURL(const std::string& url) {
  const std::size_t scheme = url.find("://");
  const std::string rest = scheme == std::string::npos ? url : url.substr(scheme + 3);
  server_ = rest.substr(0, rest.find('/'));
  path_ = rest.substr(server_.size());
  if (path_.empty()) {
    path_.push_back('/');
  }
  const std::size_t colon = server_.find(':');
  std::int32_t port = 0;
  if (colon != std::string::npos) {
    const std::string_view field = std::string_view(server_).substr(colon + 1);
    port = leadingInteger<std::int32_t>(field.substr(0, field.find(':')));
  }
  socket_->setPort(port == 0 ? defaultPort_ : port);
  socket_->setAddress(server_.substr(0, colon));
}

// Starts a request; any request still running on this object is dropped without notice.
// Returns false if it failed before connecting (the error has been reported).
bool HTTPSocket::DoConnect(const std::string& url, const std::string& method,
                           const std::optional<std::filesystem::path>& file) {
  liveness_.nextAttempt();
  socket_->Close();
  socket_->Purge();
  requestActive_ = true;
  connectionEnded_ = false;
  unreadHead_.clear();
  headerSearch_.reset();
  mErrorCode_ = 0;
  ParseURL(url);
  processingURL_ = url;
  if (!SetDownloadFile(file)) {
    return false;
  }
  if (!httpProxyAddress_.empty()) {
    socket_->setAddress(httpProxyAddress_);
    socket_->setPort(httpProxyPort_ == 0 ? defaultPort_ : httpProxyPort_);
  }
  httpAction_ = method;
  socket_->Connect();
  return true;
}

void HTTPSocket::SendRequest(const std::string& method) {
  // Host names the origin server, with the port as the URL wrote it, also through a proxy.
  requestHeaders_.SetHeader("Host", server_);
  if (!authenticationKey_.empty()) {
    SetRequestHeader("Authorization", authenticationKey_);
  }
  if (method == kPost) {
    requestHeaders_.SetHeader("Content-type", postContentType_);
    requestHeaders_.SetHeader("Content-length", std::to_string(postContent_.size()));
  } else {
    postContent_.clear();
    postContentType_.clear();
    SetRequestHeader("Content-type", "");
    SetRequestHeader("Content-length", "");
  }
  if (!httpProxyAddress_.empty()) {
    path_ = processingURL_;
  }
  std::string request = method + " " + path_ + " HTTP/1.0\r\n" +
                        requestHeaders_.FormatHTTPHeaders();
  if (!authenticationKey_.empty()) {
    // The credentials serve this one request.
    SetRequestHeader("Authorization", "");
    authenticationKey_.clear();
  }
  request += "\r\n\r\n";
  request += postContent_;
  socket_->Write(request);
}

}  // namespace corvalta::net
