// corvalta-http: fetches a URL with HTTPSocket and prints each event as it fires, with its
// arguments, then the error code. For trying servers by hand, for scripts and for the network
// benchmark, which times it beside curl.
#include <corvalta/net/http_socket.h>
#include <corvalta/platform/network_error.h>
#include <corvalta/platform/qt/qt_event_loop.h>
#include <corvalta/platform/qt/qt_tcp_socket.h>

#include <QCommandLineParser>
#include <QCoreApplication>

#include <iostream>
#include <utility>

namespace {

using corvalta::net::HTTPSocket;

struct Options {
  std::string url;
  std::optional<std::filesystem::path> output;
  std::optional<std::int32_t> waitSeconds;
  bool head = false;
  corvalta::net::FormData form;
  std::optional<std::string> content;
  std::string contentType;
  std::string proxyHost;
  std::int32_t proxyPort = 0;
  std::string user;
  std::string password;
  int repeat = 1;
  [[nodiscard]] bool post() const { return !form.empty() || content.has_value(); }
};

Options parse(const QCoreApplication& application) {
  QCommandLineParser parser;
  parser.setApplicationDescription(
      "Fetches URL over HTTP/1.0 and prints each event with its arguments, then the error code.");
  parser.addHelpOption();
  parser.addPositionalArgument("URL", "What to fetch.");
  const QCommandLineOption output({"o", "output"}, "Download the body into FILE.", "FILE");
  const QCommandLineOption wait({"w", "wait"},
                                "Use the waiting call, with a time limit of SECONDS of silence "
                                "(0 for none).",
                                "SECONDS");
  const QCommandLineOption head("head", "Ask for the headers only (HEAD).");
  const QCommandLineOption form("form", "POST the form pair NAME=VALUE (repeatable).",
                                "NAME=VALUE");
  const QCommandLineOption content("content", "POST TEXT as the body.", "TEXT");
  const QCommandLineOption type("type", "Content type of --content.", "TYPE");
  const QCommandLineOption proxy("proxy", "Go through the HTTP proxy HOST:PORT.", "HOST:PORT");
  const QCommandLineOption user("user", "Name to answer a 401 with.", "NAME");
  const QCommandLineOption password("password", "Password to answer a 401 with.", "PASSWORD");
  const QCommandLineOption repeat("repeat",
                                  "Fetch COUNT times, one after another, a new connection each; "
                                  "stop at the first error.",
                                  "COUNT", "1");
  parser.addOptions({output, wait, head, form, content, type, proxy, user, password, repeat});
  parser.process(application);
  if (parser.positionalArguments().size() != 1) {
    parser.showHelp(2);
  }
  Options options;
  options.url = parser.positionalArguments().front().toStdString();
  if (parser.isSet(output)) {
    options.output = parser.value(output).toStdString();
  }
  if (parser.isSet(wait)) {
    options.waitSeconds = parser.value(wait).toInt();
  }
  options.head = parser.isSet(head);
  for (const QString& pair : parser.values(form)) {
    const qsizetype equals = pair.indexOf('=');
    options.form.emplace_back(pair.left(equals).toStdString(),
                              equals < 0 ? std::string() : pair.mid(equals + 1).toStdString());
  }
  if (parser.isSet(content)) {
    options.content = parser.value(content).toStdString();
  }
  options.contentType = parser.value(type).toStdString();
  const QStringList hostAndPort = parser.value(proxy).split(':');
  options.proxyHost = hostAndPort.front().toStdString();
  options.proxyPort = hostAndPort.size() > 1 ? hostAndPort[1].toInt() : 0;
  options.user = parser.value(user).toStdString();
  options.password = parser.value(password).toStdString();
  options.repeat = parser.value(repeat).toInt();
  return options;
}

void printHeaders(const HTTPSocket::Headers& headers) {
  if (headers == nullptr) {
    std::cout << "  (no headers)\n";
    return;
  }
  for (std::int32_t i = 0; i < headers->Count(); ++i) {
    std::cout << "  " << headers->Name(i) << ": " << headers->Value(i) << "\n";
  }
}

std::string count(const HTTPSocket::Headers& headers) {
  return headers == nullptr ? "nil" : std::to_string(headers->Count());
}

// Where the request that runs stands.
struct Request {
  bool ended = false;
  bool challengeAnswered = false;
};

void printEvents(HTTPSocket& http, const Options& options, Request& request,
                 corvalta::platform::EventLoop& loop) {
  const auto end = [&request, &loop] {
    request.ended = true;
    loop.wake();
  };
  http.events.Connected = [] { std::cout << "Connected" << std::endl; };
  http.events.HeadersReceived = [&options, end](const HTTPSocket::Headers& headers,
                                                std::int32_t status) {
    std::cout << "HeadersReceived status=" << status << " headers=" << count(headers) << "\n";
    printHeaders(headers);
    std::cout.flush();
    if (options.head) {
      end();
    }
  };
  http.events.ReceiveProgress = [](std::int64_t soFar, std::int64_t expected,
                                   std::string_view data) {
    // Not flushed: a large download has tens of thousands of these.
    std::cout << "ReceiveProgress bytes=" << soFar << " expected=" << expected
              << " new=" << data.size() << "\n";
  };
  http.events.PageReceived = [end](const std::string& url, std::int32_t status,
                                   const HTTPSocket::Headers& headers, const std::string& page) {
    std::cout << "PageReceived url=" << url << " status=" << status
              << " headers=" << count(headers) << " content=" << page.size() << " bytes\n"
              << page << std::endl;
    end();
  };
  http.events.DownloadComplete = [end](const std::string& url, std::int32_t status,
                                       const HTTPSocket::Headers& headers,
                                       const std::filesystem::path& file) {
    std::cout << "DownloadComplete url=" << url << " status=" << status
              << " headers=" << count(headers) << " file=" << file.string() << std::endl;
    end();
  };
  http.events.Error = [end](std::int32_t code) {
    std::cout << "Error code=" << code << std::endl;
    end();
  };
  // The credentials are tried once: a server that still says 401 gets no second guess, and its
  // 401 page ends the request.
  http.events.AuthenticationRequired = [&options, &request](const HTTPSocket::Headers& headers,
                                                            std::string& name,
                                                            std::string& password) {
    const bool answer = !options.user.empty() && !std::exchange(request.challengeAnswered, true);
    std::cout << "AuthenticationRequired headers=" << count(headers)
              << " answer=" << (answer ? "yes" : "no") << std::endl;
    name = options.user;
    password = options.password;
    return answer;
  };
}

void runWaiting(HTTPSocket& http, const Options& options) {
  const std::int32_t limit = *options.waitSeconds;
  if (options.head) {
    const auto headers = http.GetHeaders(options.url, limit);
    std::cout << "GetHeaders returned headers=" << count(headers) << "\n";
    printHeaders(headers);
  } else if (options.output) {
    const bool ok = options.post() ? http.Post(options.url, *options.output, limit)
                                   : http.Get(options.url, *options.output, limit);
    std::cout << (options.post() ? "Post" : "Get") << " returned " << (ok ? "true" : "false")
              << " status=" << http.HTTPStatusCode() << "\n";
  } else {
    const std::string page =
        options.post() ? http.Post(options.url, limit) : http.Get(options.url, limit);
    std::cout << (options.post() ? "Post" : "Get") << " returned " << page.size()
              << " bytes status=" << http.HTTPStatusCode() << "\n"
              << page << "\n";
  }
}

void start(HTTPSocket& http, const Options& options) {
  if (options.head) {
    http.GetHeaders(options.url);
  } else if (options.output) {
    options.post() ? http.Post(options.url, *options.output) : http.Get(options.url, *options.output);
  } else {
    options.post() ? http.Post(options.url) : http.Get(options.url);
  }
}

}  // namespace

int main(int argc, char* argv[]) {
  QCoreApplication application(argc, argv);
  const Options options = parse(application);

  corvalta::platform::qt::QtEventLoop loop;
  HTTPSocket http(std::make_unique<corvalta::platform::qt::QtTcpSocket>(), loop);
  Request request;
  printEvents(http, options, request, loop);
  http.setHttpProxyAddress(options.proxyHost);
  http.setHttpProxyPort(options.proxyPort);
  if (!options.form.empty()) {
    http.SetFormData(&options.form);
  } else if (options.content) {
    http.SetPostContent(*options.content, options.contentType);
  }

  for (int i = 0; i < options.repeat && http.ErrorCode() == 0; ++i) {
    request = Request();
    if (options.waitSeconds) {
      runWaiting(http, options);
    } else {
      start(http, options);
      loop.waitUntil([&request] { return request.ended; }, {});
    }
  }
  const std::int32_t code = http.ErrorCode();
  std::cout << "ErrorCode " << code << " (" << corvalta::platform::errorName(code) << ")"
            << std::endl;
  return code == 0 ? 0 : 1;
}
