#include <corvalta/testing/scripted_server.h>

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <string>

namespace {

using corvalta::testing::ScriptedServer;

// What the tool prints, and whether it ended well.
std::string outputOf(const std::string& command) {
  FILE* tool = ::popen(command.c_str(), "r");
  std::string output;
  std::array<char, 4096> buffer{};
  while (const std::size_t got = std::fread(buffer.data(), 1, buffer.size(), tool)) {
    output.append(buffer.data(), got);
  }
  EXPECT_EQ(::pclose(tool), 0) << output;
  return output;
}

// A wrong password is tried once: the second 401 is the page, and nothing more goes out.
TEST(HttpClientTool, AnswersAChallengeOnce) {
  ScriptedServer server({{ScriptedServer::readRequest(),
                          ScriptedServer::send("HTTP/1.0 401 Unauthorized\r\n"
                                               "WWW-Authenticate: Basic realm=\"r\"\r\n\r\n"
                                               "denied")}});
  const std::string url = server.url("/secret");
  const std::string expected =
      "Connected\n"
      "AuthenticationRequired headers=1 answer=yes\n"
      "Connected\n"
      "AuthenticationRequired headers=1 answer=no\n"
      "HeadersReceived status=401 headers=1\n"
      "  WWW-Authenticate: Basic realm=\"r\"\n"
      "ReceiveProgress bytes=6 expected=0 new=6\n"
      "PageReceived url=" +
      url +
      " status=401 headers=1 content=6 bytes\n"
      "denied\n"
      "ErrorCode 0 (none)\n";
  // A tool that kept answering would never end: the time limit turns that into a failure.
  EXPECT_EQ(outputOf("timeout 20 " CORVALTA_HTTP_TOOL " --user u --password wrong " + url),
            expected);
  ASSERT_EQ(server.requests().size(), 2U);
  EXPECT_NE(server.requests()[1].find("\r\nAuthorization: Basic dTp3cm9uZw==\r\n"),
            std::string::npos);
}

}  // namespace
