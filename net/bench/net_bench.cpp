// Figures for the HTTP client as it ships: corvalta-http beside curl, each figure from a fresh
// process of each, both fetching from the same local nginx in the same run, so that neither
// inherits an allocator that another measurement has shaped. It prints time per small GET (a
// new connection each), then for 1 GiB to a file, to /dev/null and to memory the throughput
// (the median of five fresh processes of each, taken in turns) and the largest peak resident
// memory (from wait4), with the ratios; and the header parser's time per line. The files live
// in a temporary folder, removed at the end. It asserts nothing; build it in release mode for
// figures that mean anything.
#include "internet_headers_access.h"

#include <corvalta/testing/child_process.h>
#include <corvalta/testing/nginx_server.h>
#include <corvalta/testing/temporary_folder.h>

#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

constexpr int kSmallRequests = 1000;
constexpr std::uintmax_t kLargeBytes = std::uintmax_t{1} << 30;
// A single download over loopback can take twice as long as the next one, as the scheduler
// places the client and nginx; the median of a few is steady from run to run.
constexpr int kLargeRounds = 5;

struct Run {
  double seconds = 0;
  double peakMiB = 0;
};

// Runs a program with its standard output going to `output`, and waits for it.
Run run(const std::vector<std::string>& arguments, const std::string& output = "/dev/null") {
  const corvalta::testing::ChildRun child = corvalta::testing::runChild(arguments, {}, output);
  if (!child.exitedZero) {
    std::fprintf(stderr, "failed: %s\n", arguments.front().c_str());
  }
  return {child.wallSeconds, static_cast<double>(child.peakKilobytes) / 1024};
}

void benchSmallRequests(const std::string& tool, const corvalta::testing::NginxServer& nginx,
                        const std::filesystem::path& folder) {
  const std::string url = nginx.url("/small.html");
  const auto config = folder / "curl.conf";
  {
    std::ofstream out(config);
    for (int i = 0; i < kSmallRequests; ++i) {
      out << "url = \"" << url << "\"\noutput = \"/dev/null\"\n";
    }
  }
  const Run ours = run({tool, "--repeat", std::to_string(kSmallRequests), url});
  const Run curl = run({"curl", "-s", "--http1.0", "-K", config.string()});
  std::printf("%d GETs of a small page, a new connection each, in one process\n",
              kSmallRequests);
  std::printf("  %-24s %18s %18s %11s\n", "", "corvalta-http", "curl", "time ratio");
  std::printf("  %-24s %18.1f %18.1f %11.2f\n", "us per GET",
              ours.seconds * 1e6 / kSmallRequests, curl.seconds * 1e6 / kSmallRequests,
              ours.seconds / curl.seconds);
}

void printLargeHeader() {
  std::printf("\n1 GiB from nginx: throughput and peak resident memory\n");
  std::printf("  %-24s %18s %18s\n", "", "corvalta-http", "curl");
  std::printf("  %-24s %9s %8s %9s %8s %11s %9s\n", "", "GB/s", "MiB", "GB/s", "MiB",
              "GB/s ratio", "MiB more");
}

void printLarge(const char* what, const Run& ours, const Run& curl) {
  const double bytes = static_cast<double>(kLargeBytes);
  std::printf("  %-24s %9.2f %8.1f %9.2f %8.1f %11.2f %+9.1f\n", what,
              bytes / ours.seconds / 1e9, ours.peakMiB, bytes / curl.seconds / 1e9, curl.peakMiB,
              curl.seconds / ours.seconds, ours.peakMiB - curl.peakMiB);
}

// Each download's file is removed, and the disk given its turn, before the next one starts.
Run toFile(const std::vector<std::string>& command, const std::filesystem::path& file) {
  ::sync();
  const Run result = run(command);
  if (std::filesystem::file_size(file) != kLargeBytes) {
    std::fprintf(stderr, "incomplete download: %s\n", file.c_str());
  }
  std::filesystem::remove(file);
  ::sync();
  return result;
}

// Our download and curl's, in turns: the median time and the largest peak of each.
std::pair<Run, Run> inTurns(const std::function<Run()>& ours, const std::function<Run()>& curl) {
  std::vector<Run> runs[2];
  for (int round = 0; round < kLargeRounds; ++round) {
    runs[0].push_back(ours());
    runs[1].push_back(curl());
  }
  Run figures[2];
  for (int side = 0; side < 2; ++side) {
    auto& all = runs[side];
    std::ranges::sort(all, {}, &Run::seconds);
    figures[side] = all[all.size() / 2];
    figures[side].peakMiB = std::ranges::max(all, {}, &Run::peakMiB).peakMiB;
  }
  return {figures[0], figures[1]};
}

void benchLargeDownloads(const std::string& tool, const corvalta::testing::NginxServer& nginx,
                         const std::filesystem::path& folder) {
  const std::string url = nginx.url("/large.bin");
  printLargeHeader();
  const auto ourFile = folder / "ours.bin";
  const auto curlFile = folder / "curl.bin";
  const auto [oursToFile, curlToFile] = inTurns(
      [&] {
        return toFile({tool, "-o", ourFile.string(), url}, ourFile);
      },
      [&] {
        return toFile({"curl", "-s", "--http1.0", "-o", curlFile.string(), url}, curlFile);
      });
  printLarge("to a file", oursToFile, curlToFile);
  const auto [oursToNull, curlToNull] = inTurns(
      [&] {
        return run({tool, "-o", "/dev/null", url});
      },
      [&] {
        return run({"curl", "-s", "--http1.0", "-o", "/dev/null", url});
      });
  printLarge("to /dev/null", oursToNull, curlToNull);
  // The tool keeps a page without -o in memory and prints it at the end; curl has no such
  // mode, and writes to its standard output as the bytes come.
  const auto [oursToMemory, curlToStdout] = inTurns(
      [&] {
        return run({tool, url});
      },
      [&] {
        return run({"curl", "-s", "--http1.0", url});
      });
  printLarge("to memory (curl: stdout)", oursToMemory, curlToStdout);
  std::printf("  %-24s %9s %8.3f x the body\n", "", "",
              oursToMemory.peakMiB / static_cast<double>(kLargeBytes >> 20));
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
      return std::chrono::duration<double>(Clock::now() - start).count() * 1e9 / rounds / lines;
    };
    std::printf("  %5d    %14.0f    %8.0f\n", lines, perLine(distinct), perLine(same));
  }
}

void writeFiles(const std::filesystem::path& folder) {
  std::ofstream(folder / "small.html") << "<html><body>" << std::string(200, 'x')
                                       << "</body></html>\n";
  std::ofstream large(folder / "large.bin", std::ios::binary);
  std::string block(1 << 20, '\0');
  for (std::size_t i = 0; i < block.size(); ++i) {
    block[i] = static_cast<char>(i * 7919 % 251);
  }
  for (std::uintmax_t written = 0; written < kLargeBytes; written += block.size()) {
    large << block;
  }
}

}  // namespace

int main() {
  const corvalta::testing::TemporaryFolder folder;
  writeFiles(folder.path());
  {
    const corvalta::testing::NginxServer nginx(folder.path());
    benchSmallRequests(CORVALTA_HTTP_TOOL, nginx, folder.path());
    benchLargeDownloads(CORVALTA_HTTP_TOOL, nginx, folder.path());
  }
  benchHeaderParsing();
  return 0;
}
