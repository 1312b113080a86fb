#include <corvalta/testing/scripted_server.h>

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <sstream>
#include <string>
#include <vector>

namespace {

using corvalta::testing::ScriptedServer;

// The event lines of the tool's output, without the headers and the page printed under them.
std::vector<std::string> eventLines(const std::string& command) {
  FILE* tool = ::popen(command.c_str(), "r");
  std::string output;
  std::array<char, 4096> buffer{};
  while (const std::size_t got = std::fread(buffer.data(), 1, buffer.size(), tool)) {
    output.append(buffer.data(), got);
  }
  EXPECT_EQ(::pclose(tool), 0) << output;
  std::vector<std::string> lines;
  std::istringstream in(output);
  for (std::string line; std::getline(in, line);) {
    for (const char* event : {"Connected", "AuthenticationRequired", "HeadersReceived",
                              "ReceiveProgress", "PageReceived", "Error"}) {
      if (line.starts_with(event)) {
        lines.push_back(line);
      }
    }
  }
  return lines;
}

// A wrong password is tried once: the second 401 is the page, and nothing more goes out.
TEST(HttpClientTool, AnswersAChallengeOnce) {
  ScriptedServer server({{ScriptedServer::readRequest(),
                          ScriptedServer::send("HTTP/1.0 401 Unauthorized\r\n"
                                               "WWW-Authenticate: Basic realm=\"r\"\r\n\r\n"
                                               "denied")}});
  const std::string url = server.url("/secret");
  const std::vector<std::string> expected = {
      "Connected",
      "AuthenticationRequired headers=1 answer=yes",
      "Connected",
      "AuthenticationRequired headers=1 answer=no",
      "HeadersReceived status=401 headers=1",
      "ReceiveProgress bytes=6 expected=0 new=6",
      "PageReceived url=" + url + " status=401 headers=1 content=6 bytes",
      "ErrorCode 0 (none)"};
  // A tool that kept answering would never end: the time limit turns that into a failure.
  EXPECT_EQ(eventLines("timeout 20 " CORVALTA_HTTP_TOOL " --user u --password wrong " + url),
            expected);
  ASSERT_EQ(server.requests().size(), 2U);
  EXPECT_NE(server.requests()[1].find("\r\nAuthorization: Basic dTp3cm9uZw==\r\n"),
            std::string::npos);
}

}  // namespace
