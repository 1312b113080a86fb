// HTTPSocket: the response side, from the connection to the finished page or the error.
#include <corvalta/net/http_socket.h>
#include <corvalta/platform/network_error.h>

#include "http_socket_guard.h"
#include "text_scan.h"

namespace corvalta::net {

using detail::leadingInteger;
using detail::lineEndOf;
using platform::NetworkError;

namespace {
constexpr std::string_view kHead = "HEAD";
}  // namespace

void HTTPSocket::EventConnected() {
  if (!requestActive_) {
    return;
  }
  connectionValid_ = true;
  ResetVariables();
  if (!synchronous_ && !fire(events.Connected)) {
    return;
  }
  if (httpAction_.empty()) {
    httpAction_ = "GET";
  }
  SendRequest(httpAction_);
  loop_.wake();
}

void HTTPSocket::EventDataAvailable() {
  if (!requestActive_) {
    return;
  }
  const auto guard = liveness_.token();
  HandleNewData();
  if (guard.alive()) {
    loop_.wake();
  }
}

// The peer's close comes here too: once the connection was up, its end is the end of the page,
// however little has arrived. Before that, it is the failure of the request.
void HTTPSocket::EventError() {
  if (!requestActive_) {
    return;
  }
  const auto guard = liveness_.token();
  const bool wasConnected = std::exchange(connectionValid_, false);
  if (wasConnected) {
    connectionEnded_ = true;
    HandleNewData();
  } else {
    SetError(socket_->LastErrorCode());
  }
  if (guard.alive()) {
    loop_.wake();
  }
}

// Handlers of our events may run the event loop, and so the socket's events can come back in
// here while a pass is running: the running pass sees their bytes and their end before it
// returns, because it goes on until there is nothing left to do.
void HTTPSocket::HandleNewData() {
  if (threadProtection_) {
    return;
  }
  threadProtection_ = true;
  const auto guard = liveness_.token();
  while (guard.alive() && requestActive_ && advance()) {
  }
  if (guard.alive()) {
    threadProtection_ = false;
  }
}

// One step of the response, judged afresh from the state each time (a handler may have started
// another request in between); false when nothing more can happen until the socket reports.
bool HTTPSocket::advance() {
  if (pageHeaders_ == nullptr) {
    return takeHeaderBlock();
  }
  if (socket_->BytesAvailable() > 0) {
    readBody();
    return true;
  }
  if (connectionEnded_) {
    ProcessPage();
  }
  return false;
}

bool HTTPSocket::takeHeaderBlock() {
  const std::size_t held = unreadHead_.size();
  unreadHead_.resize_and_overwrite(held + socket_->BytesAvailable(),
                                   [this, held](char* bytes, std::size_t size) {
                                     return held + socket_->Read({bytes + held, size - held});
                                   });
  const auto end = headerSearch_.find(unreadHead_);
  if (end && end->position <= kMaxHeaderBlockBytes) {
    takeAsHeaderBlock(end->position, 2 * end->lineEnd);
    return true;
  }
  if (end || unreadHead_.size() > kMaxHeaderBlockBytes + 3) {
    SetError(platform::code(NetworkError::HeaderBlockTooLong));
    return false;
  }
  if (!connectionEnded_) {
    return false;
  }
  if (unreadHead_.empty()) {
    ProcessPage();
    return false;
  }
  // A block cut off by the close: it is all the header there will be, and the body is empty.
  takeAsHeaderBlock(unreadHead_.size(), 0);
  return true;
}

// Takes the first `length` bytes held as the header block and drops `skip` bytes behind them
// (the closing empty line); the rest is the first piece of the body.
void HTTPSocket::takeAsHeaderBlock(std::size_t length, std::size_t skip) {
  std::string rest = unreadHead_.substr(length + skip);
  unreadHead_.resize(length);
  ParseHeaders(std::exchange(unreadHead_, {}));
  headerSearch_.reset();
  if (httpStatusCode_ == 401) {
    const auto guard = liveness_.token();
    const bool retry = SetAuthentication();
    if (!guard.holds()) {
      return;
    }
    if (retry) {
      // The same request again, now with credentials; nothing of this response is reported.
      const std::optional<std::filesystem::path> file = downloadFile_;
      DoConnect(processingURL_, httpAction_, file);
      return;
    }
  }
  if (!synchronous_ && !fire(events.HeadersReceived, Headers(pageHeaders_), httpStatusCode_)) {
    return;
  }
  reservePage();
  // Even with nothing behind the headers yet: the first progress report may carry no data.
  if (downloadStream_ == nullptr && httpAction_ != kHead) {
    pageBuffer_.append(rest);
    ProcessData(pageBuffer_);
  } else {
    ProcessData(rest);
  }
}

void HTTPSocket::ParseHeaders(std::string text) {
  const std::string_view eol = lineEndOf(text);
  const std::string_view firstLine = std::string_view(text).substr(0, text.find(eol));
  // The status is the second blank-separated field; the version and the reason aren't read.
  const std::size_t blank = firstLine.find(' ');
  std::string_view status;
  if (blank != std::string_view::npos) {
    status = firstLine.substr(blank + 1);
    status = status.substr(0, status.find(' '));
  }
  httpStatusCode_ = leadingInteger<std::int32_t>(status);
  pageHeaders_ = std::make_shared<InternetHeaders>();
  pageHeaders_->ParseHeaders(std::move(text));
  if (pageHeaders_->NameCount("Content-length") > 0) {
    totalLength_ = leadingInteger<std::int64_t>(pageHeaders_->Value("Content-length"));
  }
}

// Room for the whole announced page at once, if the announcement is believable and the memory
// is there; otherwise the page grows as it comes.
void HTTPSocket::reservePage() {
  if (downloadStream_ != nullptr || httpAction_ == kHead || totalLength_ <= 0) {
    return;
  }
  try {
    pageBuffer_.reserve(std::min(static_cast<std::size_t>(totalLength_), kMaxPageReserveBytes));
  } catch (const std::bad_alloc&) {
    // Then it grows as it comes, for as long as the memory lasts.
  }
}

// One piece of the body, read where it belongs: onto the end of the page, which grows without
// being filled first, or into the piece buffer on its way to the file. Each byte is copied once
// out of the socket's buffer and nowhere else.
void HTTPSocket::readBody() {
  if (downloadStream_ == nullptr && httpAction_ != kHead) {
    const std::size_t held = pageBuffer_.size();
    // What the socket holds, or more if the page has the room anyway: the socket may have
    // received more since it counted.
    const std::size_t room =
        std::max(socket_->BytesAvailable(), std::min(kPieceBytes, pageBuffer_.capacity() - held));
    pagePrefault_.ahead(pageBuffer_, held + room);
    pageBuffer_.resize_and_overwrite(held + room,
                                     [this, held](char* bytes, std::size_t size) {
                                       return held + socket_->Read({bytes + held, size - held});
                                     });
    ProcessData(std::string_view(pageBuffer_).substr(held));
    return;
  }
  if (piece_ == nullptr) {
    piece_ = std::make_unique_for_overwrite<char[]>(kPieceBytes);
  }
  ProcessData({piece_.get(), socket_->Read({piece_.get(), kPieceBytes})});
}

// `data` is the new piece of the body; when the page is kept in memory, it already ends the
// page. The body's length is never checked against "Content-length": a page is what came
// before the connection ended.
void HTTPSocket::ProcessData(std::string_view data) {
  if (httpAction_ == kHead) {
    return;
  }
  currentLength_ += static_cast<std::int64_t>(data.size());
  if (downloadStream_ != nullptr &&
      std::fwrite(data.data(), 1, data.size(), downloadStream_) != data.size()) {
    SetError(platform::code(NetworkError::DownloadWriteFailed));
    return;
  }
  if (!synchronous_) {
    fire(events.ReceiveProgress, currentLength_, totalLength_, data);
  }
}

void HTTPSocket::ProcessPage() {
  if (pageComplete_) {
    return;
  }
  pageComplete_ = true;
  requestActive_ = false;
  const bool toFile = downloadStream_ != nullptr;
  const std::optional<std::filesystem::path> file = downloadFile_;
  KillDownloadStream();
  if (httpAction_ == kHead || synchronous_) {
    return;
  }
  // Ours alone: a handler that starts the next request changes the members under it. The page
  // is moved, not copied, so that a large one isn't held twice.
  const std::string url = processingURL_;
  const Headers headers = pageHeaders_;
  if (toFile) {
    fire(events.DownloadComplete, url, httpStatusCode_, headers, *file);
  } else {
    fire(events.PageReceived, url, httpStatusCode_, headers, std::exchange(pageBuffer_, {}));
  }
}

void HTTPSocket::ResetVariables() {
  pageBuffer_.clear();
  pageHeaders_.reset();
  httpStatusCode_ = 0;
  totalLength_ = 0;
  currentLength_ = 0;
  pageComplete_ = false;
  unreadHead_.clear();
  headerSearch_.reset();
}

// Makes the file, or empties the one there, and opens it for the body. A folder, a path that
// can't be created or opened end the request with DownloadFileUnusable.
bool HTTPSocket::SetDownloadFile(const std::optional<std::filesystem::path>& file) {
  KillDownloadStream();
  if (!file) {
    return true;
  }
  downloadStream_ = std::fopen(file->c_str(), "wb");
  if (downloadStream_ == nullptr) {
    SetError(platform::code(NetworkError::DownloadFileUnusable));
    return false;
  }
  // Bodies arrive in large pieces; each goes to the file in one write, and a full disk shows at
  // once rather than at some later flush.
  std::setvbuf(downloadStream_, nullptr, _IONBF, 0);
  downloadFile_ = file;
  return true;
}

void HTTPSocket::KillDownloadStream() {
  downloadFile_.reset();
  if (downloadStream_ != nullptr) {
    std::fclose(std::exchange(downloadStream_, nullptr));
  }
}

// Ends the request with an error: the connection and the download file are closed (what was
// written stays), and an asynchronous caller hears of it.
void HTTPSocket::SetError(std::int32_t code) {
  if (!requestActive_) {
    return;
  }
  requestActive_ = false;
  socket_->Close();
  KillDownloadStream();
  // A socket that failed without saying why still fails.
  mErrorCode_ = code != 0 ? code : platform::code(NetworkError::OtherSocketError);
  if (!synchronous_) {
    fire(events.Error, mErrorCode_);
  }
}

// Sleeps in the event loop until the request ends. The time limit counts silence: it starts
// again when the connection comes up or goes down and when the page in memory grows.
void HTTPSocket::WaitForPage() {
  const auto guard = liveness_.token();
  const auto limit = std::chrono::seconds(timeoutSeconds_);
  auto deadline = loop_.now() + limit;
  bool lastConnection = false;
  std::size_t lastLength = 0;
  const auto changed = [&] {
    return !guard.alive() || !requestActive_ || connectionValid_ != lastConnection ||
           pageBuffer_.size() != lastLength;
  };
  while (requestActive_) {
    socket_->Poll();
    if (!guard.alive() || !requestActive_) {
      return;
    }
    if (connectionValid_ != lastConnection) {
      lastConnection = connectionValid_;
      deadline = loop_.now() + limit;
    } else if (pageBuffer_.size() != lastLength) {
      lastLength = pageBuffer_.size();
      deadline = loop_.now() + limit;
    }
    if (timeoutSeconds_ > 0 && deadline <= loop_.now()) {
      SetError(platform::code(NetworkError::TimeLimitReached));
      return;
    }
    platform::EventLoop::WaitOptions options;
    options.deliverInput = yield_;
    if (timeoutSeconds_ > 0) {
      options.deadline = deadline;
    }
    loop_.waitUntil(changed, options);
    if (!guard.alive()) {
      return;
    }
  }
}

}  // namespace corvalta::net
