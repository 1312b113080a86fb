// Figures for the HTTP client, side by side with curl against the same nginx in the same run:
// time per request over sequential GETs (a new connection each), throughput of a 1 GiB download
// to a file, the client's resident memory during that download, and header parsing time by
// block size. Files live in a temporary folder that is removed at the end. Build it in release
// mode for figures that mean anything.
#include "internet_headers_access.h"

#include <corvalta/net/http_socket.h>
#include <corvalta/platform/qt/qt_event_loop.h>
#include <corvalta/platform/qt/qt_tcp_socket.h>
#include <corvalta/testing/nginx_server.h>

#include <QCoreApplication>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <string>

namespace {

using corvalta::net::HTTPSocket;
using Clock = std::chrono::steady_clock;

constexpr int kRequests = 1000;
constexpr std::int64_t kLargeBytes = std::int64_t{1} << 30;

double secondsSince(Clock::time_point start) {
  return std::chrono::duration<double>(Clock::now() - start).count();
}

double runCommand(const std::string& command) {
  const auto start = Clock::now();
  if (std::system(command.c_str()) != 0) {
    std::cerr << "failed: " << command << "\n";
  }
  return secondsSince(start);
}

long residentKiB() {
  std::ifstream statm("/proc/self/statm");
  long pages = 0;
  long resident = 0;
  statm >> pages >> resident;
  return resident * (sysconf(_SC_PAGESIZE) / 1024);
}

// A request by hand on a blocking socket: what the machine and nginx cost without any client.
void plainGet(int port, const std::string& request) {
  const int fd = ::socket(AF_INET, SOCK_STREAM, 0);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(static_cast<std::uint16_t>(port));
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  if (::connect(fd, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0) {
    ::send(fd, request.data(), request.size(), 0);
    char buffer[4096];
    while (::recv(fd, buffer, sizeof buffer, 0) > 0) {
    }
  }
  ::close(fd);
}

void benchRequests(const corvalta::testing::NginxServer& nginx,
                   corvalta::platform::EventLoop& loop, const std::filesystem::path& folder) {
  const std::string url = nginx.url("/small.html");
  HTTPSocket http(std::make_unique<corvalta::platform::qt::QtTcpSocket>(), loop);
  auto start = Clock::now();
  for (int i = 0; i < kRequests; ++i) {
    if (http.Get(url, 10).empty()) {
      std::cerr << "empty page from nginx\n";
      return;
    }
  }
  const double ours = secondsSince(start);

  start = Clock::now();
  const std::string request = "GET /small.html HTTP/1.0\r\nHost: 127.0.0.1\r\n\r\n";
  for (int i = 0; i < kRequests; ++i) {
    plainGet(nginx.port(), request);
  }
  const double plain = secondsSince(start);

  std::ofstream config(folder / "curl.conf");
  for (int i = 0; i < kRequests; ++i) {
    config << "url = \"" << url << "\"\noutput = \"/dev/null\"\n";
  }
  config.close();
  const double curl = runCommand("curl -s --http1.0 -H 'Connection: close' -K " +
                                 (folder / "curl.conf").string());

  std::printf("%d sequential GETs of a small page, a new connection each (us per request)\n",
              kRequests);
  std::printf("  HTTPSocket (waiting Get)   %8.1f\n", ours * 1e6 / kRequests);
  std::printf("  curl, one process          %8.1f\n", curl * 1e6 / kRequests);
  std::printf("  plain blocking socket      %8.1f\n", plain * 1e6 / kRequests);
}

void benchDownload(const corvalta::testing::NginxServer& nginx,
                   corvalta::platform::qt::QtEventLoop& loop, const std::filesystem::path& folder) {
  const std::string url = nginx.url("/large.bin");
  const auto ourFile = folder / "ours.bin";
  const auto curlFile = folder / "curl.bin";

  HTTPSocket http(std::make_unique<corvalta::platform::qt::QtTcpSocket>(), loop);
  long lowest = 0;
  long highest = 0;
  std::int64_t nextSample = 64 << 20;
  long pieces = 0;
  http.events.ReceiveProgress = [&](std::int64_t soFar, std::int64_t, const std::string&) {
    ++pieces;
    if (soFar >= nextSample) {
      const long now = residentKiB();
      lowest = lowest == 0 ? now : std::min(lowest, now);
      highest = std::max(highest, now);
      nextSample += 64 << 20;
    }
  };
  bool done = false;
  http.events.DownloadComplete = [&](auto&&...) {
    done = true;
    loop.wake();
  };
  http.events.Error = [&](std::int32_t code) {
    std::cerr << "download failed: " << code << "\n";
    done = true;
    loop.wake();
  };
  const auto start = Clock::now();
  http.Get(url, ourFile);
  loop.waitUntil([&] { return done; }, {});
  const double ours = secondsSince(start);
  const auto ourSize = std::filesystem::file_size(ourFile);
  std::filesystem::remove(ourFile);

  const double curl = runCommand("curl -s --http1.0 -o " + curlFile.string() + " " + url);
  std::filesystem::remove(curlFile);

  // The ceiling: the same bytes written to a file in 256 KiB pieces with no network at all.
  const auto plainFile = folder / "plain.bin";
  const double plain = runCommand("dd if=" + (folder / "large.bin").string() + " of=" +
                                  plainFile.string() + " bs=256K status=none");
  std::filesystem::remove(plainFile);

  std::printf("\n1 GiB download to a file (GB/s)\n");
  std::printf("  HTTPSocket                 %8.2f   (%s)\n", double(ourSize) / ours / 1e9,
              ourSize == std::uint64_t(kLargeBytes) ? "complete" : "INCOMPLETE");
  std::printf("  curl                       %8.2f\n", double(kLargeBytes) / curl / 1e9);
  std::printf("  file copy alone (dd)       %8.2f\n", double(kLargeBytes) / plain / 1e9);
  std::printf("  HTTPSocket / curl          %8.2f\n", curl / ours);
  std::printf("  HTTPSocket pieces read: %ld, %.0f KiB on average\n", pieces,
              double(ourSize) / double(std::max(pieces, 1L)) / 1024);
  std::printf("  client resident memory, sampled every 64 MiB: %ld to %ld KiB\n", lowest, highest);
}

void benchHeaderParsing() {
  std::printf("\nHeader parsing (ns per line)\n  lines    distinct names    one name\n");
  for (const int lines : {10, 100, 1000, 10000}) {
    std::string distinct = "HTTP/1.0 200 OK";
    std::string same = distinct;
    for (int i = 0; i < lines; ++i) {
      distinct += "\r\nX-Header-" + std::to_string(i) + ": some value " + std::to_string(i);
      same += "\r\nX-Header: some value " + std::to_string(i);
    }
    const auto perLine = [lines](const std::string& block) {
      const int rounds = std::max(1, 200000 / lines);
      const auto start = Clock::now();
      for (int round = 0; round < rounds; ++round) {
        corvalta::net::InternetHeaders headers;
        corvalta::net::InternetHeadersAccess::ParseHeaders(headers, block);
      }
      return secondsSince(start) * 1e9 / rounds / lines;
    };
    std::printf("  %5d    %14.0f    %8.0f\n", lines, perLine(distinct), perLine(same));
  }
}

std::filesystem::path makeFolder() {
  std::string pattern = (std::filesystem::temp_directory_path() / "corvalta-bench-XXXXXX").string();
  if (::mkdtemp(pattern.data()) == nullptr) {
    std::perror("mkdtemp");
    std::exit(1);
  }
  return pattern;
}

}  // namespace

int main(int argc, char* argv[]) {
  QCoreApplication application(argc, argv);
  const std::filesystem::path folder = makeFolder();
  {
    std::ofstream(folder / "small.html") << "<html><body>" << std::string(200, 'x')
                                         << "</body></html>\n";
    std::ofstream large(folder / "large.bin", std::ios::binary);
    std::string block(1 << 20, '\0');
    for (std::size_t i = 0; i < block.size(); ++i) {
      block[i] = static_cast<char>(i * 7919 % 251);
    }
    for (std::int64_t written = 0; written < kLargeBytes; written += std::int64_t(block.size())) {
      large << block;
    }
  }
  {
    corvalta::testing::NginxServer nginx(folder);
    corvalta::platform::qt::QtEventLoop loop;
    benchRequests(nginx, loop, folder);
    benchDownload(nginx, loop, folder);
  }
  benchHeaderParsing();
  std::filesystem::remove_all(folder);
  return 0;
}
