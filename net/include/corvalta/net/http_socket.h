#pragma once

#include <corvalta/net/internet_headers.h>
#include <corvalta/net/header_block_search.h>
#include <corvalta/net/page_prefault.h>
#include <corvalta/platform/event_loop.h>
#include <corvalta/platform/liveness.h>
#include <corvalta/platform/tcp_socket.h>

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace corvalta::net {

// The pairs of a form, in the order they are encoded.
using FormData = std::vector<std::pair<std::string, std::string>>;

// A small HTTP/1.0 client: one request at a time, into memory or into a file, either
// asynchronous (the outcome comes as events) or waiting (the call returns it).
//
// A page ends when the server closes the connection; "Content-length" is only reported. Every
// request ends in exactly one page or one error, whatever the server sends or doesn't: an
// asynchronous GET or POST fires Connected, HeadersReceived, ReceiveProgress (one or more
// times), then PageReceived or DownloadComplete; a failure fires Error alone. HEAD fires
// Connected and HeadersReceived only. HTTP status codes are pages, never errors; error codes
// are those of platform::NetworkError. A waiting call fires no event but
// AuthenticationRequired.
//
// Event handlers may start another request, Close, or destroy this object; nothing of the old
// request reaches them afterwards.
class HTTPSocket {
 public:
  using Headers = std::shared_ptr<InternetHeaders>;

  // A header block that runs past this many bytes ends the request with HeaderBlockTooLong:
  // far above any real server's headers, small enough that a server that sends header lines
  // forever can't grow the client.
  static constexpr std::size_t kMaxHeaderBlockBytes = 256 * 1024;
  // A page in memory gets room for its announced "Content-length" up front, so that a large
  // one is neither copied as it grows nor held twice, but for no more than this: a server can
  // announce any length. Beyond it, or without a length, the page grows as it comes.
  static constexpr std::size_t kMaxPageReserveBytes = std::size_t{1} << 30;
  // A body going to a file passes through one buffer of this size, made once: small enough that
  // the write into the file finds the piece still in the processor's cache. Measured against a
  // local server, pieces of 64 to 112 KiB keep pace with the kernel, while 128 to 256 KiB take
  // half the speed (the profile then shows the process doing the sending side's share of the
  // loopback's work too); smaller ones cost a turn of the event loop each.
  static constexpr std::size_t kPieceBytes = 96 * 1024;

  // Each is optional. Headers may be null (a response without a header block).
  struct Events {
    std::function<void(const std::string& url, std::int32_t status, const Headers& headers,
                       const std::string& content)>
        PageReceived;
    // Byte counts are 64-bit so that downloads beyond 2 GiB count right; `expected` is the
    // response's "Content-length", 0 without one. `newData` lives until the handler returns.
    std::function<void(std::int64_t bytesSoFar, std::int64_t expected, std::string_view newData)>
        ReceiveProgress;
    std::function<void()> Connected;
    std::function<void(const std::string& url, std::int32_t status, const Headers& headers,
                       const std::filesystem::path& file)>
        DownloadComplete;
    std::function<void(std::int32_t code)> Error;
    std::function<void(const Headers& headers, std::int32_t status)> HeadersReceived;
    // Status 401: fill in name and password and return true to send the request again with
    // them; return false to take the 401 as the page.
    std::function<bool(const Headers& headers, std::string& name, std::string& password)>
        AuthenticationRequired;
  };

  HTTPSocket(std::unique_ptr<platform::TCPSocket> socket, platform::EventLoop& loop);
  ~HTTPSocket();
  HTTPSocket(const HTTPSocket&) = delete;
  HTTPSocket& operator=(const HTTPSocket&) = delete;

  Events events;

  // Asynchronous forms: they return at once, before anything has gone out.
  void Get(const std::string& url);
  void Get(const std::string& url, const std::filesystem::path& file);
  void Post(const std::string& url);
  void Post(const std::string& url, const std::filesystem::path& file);
  void GetHeaders(const std::string& url);

  // Waiting forms. The time limit (seconds, 0 or less for none) counts silence: it starts again
  // whenever the connection comes up or goes down and whenever the page in memory grows. On
  // expiry the connection is closed and ErrorCode() gives TimeLimitReached; what came so far is
  // still returned. The forms with a file return ErrorCode() == 0.
  std::string Get(const std::string& url, std::int32_t timeLimitSeconds);
  bool Get(const std::string& url, const std::filesystem::path& file,
           std::int32_t timeLimitSeconds);
  std::string Post(const std::string& url, std::int32_t timeLimitSeconds);
  bool Post(const std::string& url, const std::filesystem::path& file,
            std::int32_t timeLimitSeconds);
  Headers GetHeaders(const std::string& url, std::int32_t timeLimitSeconds);

  // Drops the running request, if any, without an event.
  void Close();

  // An empty value removes the header.
  void SetRequestHeader(std::string_view name, std::string value);
  // Removes every request header; from then on a request carries only what it needs.
  void ClearRequestHeaders();
  InternetHeaders& GetRequestHeaders() { return requestHeaders_; }
  void SetPostContent(std::string content, std::string contentType);
  // Null clears the content and its type.
  void SetFormData(const FormData* form);
  [[nodiscard]] static std::string EncodeFormData(const FormData& form);

  [[nodiscard]] std::int32_t ErrorCode() const { return mErrorCode_; }
  [[nodiscard]] std::int32_t HTTPStatusCode() const { return httpStatusCode_; }
  // The headers of the last response; null when there were none.
  [[nodiscard]] Headers PageHeaders() const;

  [[nodiscard]] std::int32_t defaultPort() const { return defaultPort_; }
  void setDefaultPort(std::int32_t port) { defaultPort_ = port; }
  // An empty address means no proxy; port 0 means defaultPort().
  [[nodiscard]] const std::string& httpProxyAddress() const { return httpProxyAddress_; }
  void setHttpProxyAddress(std::string address) { httpProxyAddress_ = std::move(address); }
  [[nodiscard]] std::int32_t httpProxyPort() const { return httpProxyPort_; }
  void setHttpProxyPort(std::int32_t port) { httpProxyPort_ = port; }
  // While a waiting call waits, also deliver user input to the application.
  [[nodiscard]] bool yield() const { return yield_; }
  void setYield(bool yield) { yield_ = yield; }
  [[nodiscard]] bool synchronous() const { return synchronous_; }
  [[nodiscard]] std::int32_t timeoutSeconds() const { return timeoutSeconds_; }
  void setTimeoutSeconds(std::int32_t seconds) { timeoutSeconds_ = seconds; }

 private:
  // Calls an event handler, if one is installed, through a copy (the handler may replace
  // itself); returns whether this request still runs afterwards.
  template <typename Handler, typename... Args>
  bool fire(const Handler& handler, const Args&... args);

  void InitializeRequestHeaders();
  void ParseURL(const std::string& url);
  bool DoConnect(const std::string& url, const std::string& method,
                 const std::optional<std::filesystem::path>& file);
  void SendRequest(const std::string& method);
  void startAsync(const std::string& url, const std::string& method,
                  const std::optional<std::filesystem::path>& file);
  bool startWaiting(const std::string& url, const std::string& method,
                    const std::optional<std::filesystem::path>& file,
                    std::int32_t timeLimitSeconds);

  void EventConnected();
  void EventDataAvailable();
  void EventError();
  void HandleNewData();
  bool advance();
  bool takeHeaderBlock();
  void takeAsHeaderBlock(std::size_t length, std::size_t skip);
  void ParseHeaders(std::string text);
  void reservePage();
  void readBody();
  void ProcessData(std::string_view data);
  void ProcessPage();
  void ResetVariables();
  bool SetDownloadFile(const std::optional<std::filesystem::path>& file);
  void KillDownloadStream();
  void SetError(std::int32_t code);
  void WaitForPage();
  bool SetAuthentication();
  [[nodiscard]] static std::string EncodeURLString(std::string_view text);

  std::unique_ptr<platform::TCPSocket> socket_;
  platform::EventLoop& loop_;

  Headers pageHeaders_;
  std::string server_;
  std::string path_;
  InternetHeaders requestHeaders_;
  std::int64_t totalLength_ = 0;
  std::FILE* downloadStream_ = nullptr;
  std::optional<std::filesystem::path> downloadFile_;
  std::string pageBuffer_;
  std::int64_t currentLength_ = 0;
  bool pageComplete_ = false;
  std::string postContent_;
  std::string postContentType_;
  std::string httpAction_;
  std::string processingURL_;
  bool connectionValid_ = false;
  std::int32_t httpStatusCode_ = 0;
  std::int32_t defaultPort_ = 80;
  std::string httpProxyAddress_;
  std::int32_t httpProxyPort_ = 0;
  std::string authenticationKey_;
  bool yield_ = false;
  bool synchronous_ = false;
  std::int32_t timeoutSeconds_ = 0;
  std::int32_t mErrorCode_ = 0;
  bool threadProtection_ = false;

  // From the start of a request until its page or its error: socket events outside it are
  // stale and ignored, which is what makes the end of a request happen once.
  bool requestActive_ = false;
  // The socket reported the end of the connection; the page ends once its bytes are read.
  bool connectionEnded_ = false;
  // Bytes of the response not yet taken as header block: we hold them rather than leave them
  // in the socket, so that each new piece is searched once.
  std::string unreadHead_;
  detail::HeaderBlockSearch headerSearch_;
  // Where a body on its way to a file (or a HEAD answer's, on its way to nowhere) is read;
  // made at the first such body and kept.
  std::unique_ptr<char[]> piece_;
  detail::PagePrefault pagePrefault_;
  // Code that has fired an event asks a token whether this object still lives and still runs
  // the request it ran before, before it touches anything; each request is an attempt.
  platform::Liveness liveness_;
};

}  // namespace corvalta::net
