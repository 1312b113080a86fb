// Plays a server whose bytes, and the sizes of the pieces they come in, the input chooses,
// against HTTPSocket on a socket in memory, and checks that each request ends once: one page or
// one error for an asynchronous GET or POST, nothing after it, and a waiting call that returns
// having fired no event but AuthenticationRequired.
//
// Input: one byte of mode (method, waiting or not, memory or file, how many 401s to answer),
// then pieces, each a length byte and that many bytes. A length of 255 closes the connection
// from the server's side; a new connection (after a 401) is accepted and fed the rest.
#include "http_client_harness.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>

namespace {

using corvalta::net::FakeClient;

void check(bool condition) {
  if (!condition) {
    __builtin_trap();
  }
}

// Feeds the pieces to whichever connection is current: a new one (after a 401) is accepted
// first, and bytes for a connection that has ended are lost, as on a network.
void play(FakeClient& client, const std::uint8_t* data, std::size_t size) {
  std::size_t accepted = 0;
  const auto current = [&] {
    if (client.connections->size() > accepted) {
      accepted = client.connections->size();
      client.socket->accept();
    }
  };
  for (std::size_t at = 0; at < size;) {
    current();
    const std::size_t length = data[at++];
    if (length == 255) {
      client.socket->closeByPeer();
      continue;
    }
    const std::size_t take = std::min(length, size - at);
    client.socket->send({reinterpret_cast<const char*>(data + at), take});
    at += take;
  }
  // A close that completes a 401's header block makes the client connect again.
  do {
    current();
    client.socket->closeByPeer();
  } while (client.connections->size() > accepted);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) {
    return 0;
  }
  const std::uint8_t mode = data[0];
  const bool head = (mode & 3) == 1;
  const bool post = (mode & 3) == 2;
  const bool waiting = (mode & 4) != 0;
  const bool toFile = (mode & 8) != 0 && !head;
  FakeClient client;
  client.log.answers.assign((mode >> 4) & 3, {"n", "p"});
  auto& http = *client.http;
  http.SetPostContent("k=v", "text/plain");
  const std::string url = "http://h/p";
  const std::filesystem::path file = "/dev/null";
  // The asynchronous form without a time limit, the waiting one with it.
  const auto start = [&](auto... timeLimit) {
    if (head) {
      http.GetHeaders(url, timeLimit...);
    } else if (toFile) {
      post ? http.Post(url, file, timeLimit...) : http.Get(url, file, timeLimit...);
    } else {
      post ? http.Post(url, timeLimit...) : http.Get(url, timeLimit...);
    }
  };

  if (waiting) {
    client.loop.at({}, [&] { play(client, data + 1, size - 1); });
    start(5);
    check(std::ranges::all_of(client.log.lines, [](const std::string& line) {
      return line.starts_with("AuthenticationRequired");
    }));
    return 0;
  }
  start();
  play(client, data + 1, size - 1);
  const std::ptrdiff_t endings = client.log.endings();
  check(head ? endings <= 1 : endings == 1);
  check(endings == 0 || corvalta::net::endsRequest(client.log.lines.back()));
  return 0;
}
