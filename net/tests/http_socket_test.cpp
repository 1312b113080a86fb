#include "http_client_harness.h"

#include <corvalta/platform/network_error.h>

#include <gtest/gtest.h>

#include <fstream>
#include <functional>
#include <sstream>

namespace corvalta::net {
namespace {

using platform::NetworkError;
using platform::code;
using Lines = std::vector<std::string>;

constexpr const char* kDefaults = "Accept: */*\r\nAccept-Language: en\r\n";

// The bytes that go out, the address and the port, for each way of starting a request. The
// requests of a case run one after another on one object, each answered by an empty page.
TEST(HTTPSocketTest, RequestsOnTheWire) {
  struct Step {
    std::function<void(HTTPSocket&)> start;
    std::string address;
    std::int32_t port;
    std::string bytes;
  };
  struct Case {
    const char* what;
    std::vector<Step> steps;
  };
  static const FormData form = {{"a b", "c+d"}, {"x", "100%"}};
  const std::string defaults = kDefaults;
  const std::vector<Case> cases = {
      {"plain GET",
       {{[](HTTPSocket& h) { h.Get("http://example.test/a/b"); }, "example.test", 80,
         "GET /a/b HTTP/1.0\r\n" + defaults + "Host: example.test\r\n\r\n"}}},
      {"port, query and fragment",
       {{[](HTTPSocket& h) { h.Get("http://example.test:8080/a?x=1#f"); }, "example.test", 8080,
         "GET /a?x=1#f HTTP/1.0\r\n" + defaults + "Host: example.test:8080\r\n\r\n"}}},
      {"no path, no scheme, port 0, credentials taken for the host",
       {{[](HTTPSocket& h) {
           h.setDefaultPort(8081);
           h.Get("ftp://example.test");
         },
         "example.test", 8081, "GET / HTTP/1.0\r\n" + defaults + "Host: example.test\r\n\r\n"},
        {[](HTTPSocket& h) { h.Get("example.test/a"); }, "example.test", 8081,
         "GET /a HTTP/1.0\r\n" + defaults + "Host: example.test\r\n\r\n"},
        {[](HTTPSocket& h) { h.Get("http://example.test:0/a"); }, "example.test", 8081,
         "GET /a HTTP/1.0\r\n" + defaults + "Host: example.test:0\r\n\r\n"},
        {[](HTTPSocket& h) { h.Get("http://user:pw@example.test/"); }, "user", 8081,
         "GET / HTTP/1.0\r\n" + defaults + "Host: user:pw@example.test\r\n\r\n"}}},
      {"proxy at the default port, then at its own",
       {{[](HTTPSocket& h) {
           h.setHttpProxyAddress("proxy.test");
           h.Get("http://example.test:81/p?q");
         },
         "proxy.test", 80,
         "GET http://example.test:81/p?q HTTP/1.0\r\n" + defaults +
             "Host: example.test:81\r\n\r\n"},
        {[](HTTPSocket& h) {
           h.setHttpProxyPort(3128);
           h.GetHeaders("example.test");
         },
         "proxy.test", 3128,
         "HEAD example.test HTTP/1.0\r\n" + defaults + "Host: example.test\r\n\r\n"}}},
      {"POST without content, with content twice, GET drops the content",
       {{[](HTTPSocket& h) { h.Post("http://h/f"); }, "h", 80,
         "POST /f HTTP/1.0\r\n" + defaults +
             "Host: h\r\nContent-type: \r\nContent-length: 0\r\n\r\n"},
        {[](HTTPSocket& h) {
           h.SetPostContent("x=1", "text/plain");
           h.Post("http://h/f");
         },
         "h", 80,
         "POST /f HTTP/1.0\r\n" + defaults +
             "Host: h\r\nContent-type: text/plain\r\nContent-length: 3\r\n\r\nx=1"},
        {[](HTTPSocket& h) { h.Post("http://h/f"); }, "h", 80,
         "POST /f HTTP/1.0\r\n" + defaults +
             "Host: h\r\nContent-type: text/plain\r\nContent-length: 3\r\n\r\nx=1"},
        {[](HTTPSocket& h) { h.Get("http://h/f"); }, "h", 80,
         "GET /f HTTP/1.0\r\n" + defaults + "Host: h\r\n\r\n"},
        {[](HTTPSocket& h) { h.Post("http://h/f"); }, "h", 80,
         "POST /f HTTP/1.0\r\n" + defaults +
             "Host: h\r\nContent-type: \r\nContent-length: 0\r\n\r\n"}}},
      {"form data, cleared by null",
       {{[](HTTPSocket& h) {
           h.SetFormData(&form);
           h.Post("http://h/");
         },
         "h", 80,
         "POST / HTTP/1.0\r\n" + defaults +
             "Host: h\r\nContent-type: application/x-www-form-urlencoded\r\n"
             "Content-length: 18\r\n\r\na+b=c%2Bd&x=100%25"},
        {[](HTTPSocket& h) {
           h.SetFormData(nullptr);
           h.Post("http://h/");
         },
         "h", 80,
         "POST / HTTP/1.0\r\n" + defaults +
             "Host: h\r\nContent-type: \r\nContent-length: 0\r\n\r\n"}}},
      {"request headers set, removed and cleared",
       {{[](HTTPSocket& h) {
           h.SetRequestHeader("X-Missing", "");
           h.SetRequestHeader("User-Agent", "t/1");
           h.SetRequestHeader("accept", "text/html");
           h.Get("http://h/");
         },
         "h", 80,
         "GET / HTTP/1.0\r\nAccept: text/html\r\nAccept-Language: en\r\nUser-Agent: t/1\r\n"
         "Host: h\r\n\r\n"},
        {[](HTTPSocket& h) {
           h.SetRequestHeader("user-agent", "");
           h.ClearRequestHeaders();
           h.Get("http://h/");
         },
         "h", 80, "GET / HTTP/1.0\r\nHost: h\r\n\r\n"}}},
  };
  for (const Case& c : cases) {
    FakeClient client;
    for (std::size_t i = 0; i < c.steps.size(); ++i) {
      const Step& step = c.steps[i];
      step.start(*client.http);
      client.answer({});
      ASSERT_EQ(client.connections->size(), i + 1) << c.what;
      const auto& sent = client.connections->back();
      EXPECT_EQ(sent.address, step.address) << c.what << " #" << i;
      EXPECT_EQ(sent.port, step.port) << c.what << " #" << i;
      EXPECT_EQ(visible(sent.written), visible(step.bytes)) << c.what << " #" << i;
    }
  }
}

// Form encoding escapes exactly its list of characters, each once, blanks last.
TEST(HTTPSocketTest, EncodesForms) {
  struct Case {
    FormData form;
    std::string encoded;
  };
  const std::vector<Case> cases = {
      {{{"100%", "%25"}}, "100%25=%2525"},
      {{{"k", "line\r\nend"}}, "k=line%0D%0Aend"},
      {{{"-_.~*", "x"}}, "%2D%5F.%7E%2A=x"},
      {{{"all", "%&=,/\\][{}`~-_()*^$#!+"}},
       "all=%25%26%3D%2C%2F%5C%5D%5B%7B%7D%60%7E%2D%5F%28%29%2A%5E%24%23%21%2B"},
      {{{"kept", ".:;?\"'<>@|\t\xc3\xa9"}}, "kept=.:;?\"'<>@|\t\xc3\xa9"},
      {{{"a", "1"}, {"b", ""}, {"", "3"}}, "a=1&b=&=3"},
      {{}, ""},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(HTTPSocket::EncodeFormData(c.form), c.encoded);
  }
}

}  // namespace
}  // namespace corvalta::net
