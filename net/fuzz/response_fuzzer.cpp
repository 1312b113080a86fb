// Plays a server whose bytes, and the sizes of the pieces they come in, the input chooses,
// against HTTPSocket on a socket in memory, and checks that each request ends once: one page or
// one error for an asynchronous GET or POST, nothing after it, and a waiting call that returns
// having fired no event.
//
// Input: one byte of mode (method, waiting or not, memory or file, how many 401s to answer),
// then pieces, each a length byte and that many bytes. A length of 255 closes the connection
// from the server's side; a new connection (after a 401) is accepted and fed the rest.
#include <corvalta/net/http_socket.h>
#include <corvalta/testing/fake_tcp_socket.h>
#include <corvalta/testing/virtual_time_loop.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace {

using corvalta::net::HTTPSocket;
using corvalta::testing::FakeTCPSocket;
using corvalta::testing::VirtualTimeLoop;

void check(bool condition) {
  if (!condition) {
    __builtin_trap();
  }
}

struct Piece {
  std::string bytes;
  bool close = false;
};

std::vector<Piece> piecesOf(const std::uint8_t* data, std::size_t size) {
  std::vector<Piece> pieces;
  for (std::size_t at = 0; at < size;) {
    const std::size_t length = data[at++];
    if (length == 255) {
      pieces.push_back({{}, true});
      continue;
    }
    const std::size_t take = std::min(length, size - at);
    pieces.push_back({std::string(reinterpret_cast<const char*>(data + at), take), false});
    at += take;
  }
  return pieces;
}

struct Outcome {
  int endings = 0;
  int afterEnd = 0;
  int events = 0;
};

void watch(HTTPSocket& http, Outcome& outcome, int answers) {
  const auto other = [&outcome] {
    ++outcome.events;
    outcome.afterEnd += outcome.endings;
  };
  const auto ending = [&outcome] {
    ++outcome.events;
    outcome.afterEnd += outcome.endings;
    ++outcome.endings;
  };
  http.events.Connected = [other] { other(); };
  http.events.HeadersReceived = [other](auto&&...) { other(); };
  http.events.ReceiveProgress = [other](auto&&...) { other(); };
  http.events.PageReceived = [ending](auto&&...) { ending(); };
  http.events.DownloadComplete = [ending](auto&&...) { ending(); };
  http.events.Error = [ending](auto&&...) { ending(); };
  http.events.AuthenticationRequired = [answers](const HTTPSocket::Headers&, std::string& name,
                                                 std::string& password) mutable {
    name = "n";
    password = "p";
    return answers-- > 0;
  };
}

// Feeds the pieces to whichever connection is current: a new one (after a 401) is accepted
// first, and bytes for a connection that has ended are lost, as on a network.
void play(FakeTCPSocket& socket, const std::vector<Piece>& pieces) {
  std::size_t accepted = 0;
  const auto current = [&] {
    if (socket.connections().size() > accepted) {
      accepted = socket.connections().size();
      socket.accept();
    }
  };
  for (const Piece& piece : pieces) {
    current();
    if (piece.close) {
      socket.closeByPeer();
    } else {
      socket.send(piece.bytes);
    }
  }
  // A close that completes a 401's header block makes the client connect again.
  do {
    current();
    socket.closeByPeer();
  } while (socket.connections().size() > accepted);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) {
    return 0;
  }
  const std::uint8_t mode = data[0];
  const std::vector<Piece> pieces = piecesOf(data + 1, size - 1);
  const bool head = (mode & 3) == 1;
  const bool post = (mode & 3) == 2;
  const bool waiting = (mode & 4) != 0;
  const bool toFile = (mode & 8) != 0 && !head;
  const int answers = (mode >> 4) & 3;

  VirtualTimeLoop loop;
  auto owned = std::make_unique<FakeTCPSocket>();
  FakeTCPSocket& socket = *owned;
  HTTPSocket http(std::move(owned), loop);
  Outcome outcome;
  watch(http, outcome, answers);
  http.SetPostContent("k=v", "text/plain");
  const std::string url = "http://h/p";
  const std::filesystem::path file = "/dev/null";

  if (waiting) {
    loop.at(std::chrono::milliseconds(0), [&] { play(socket, pieces); });
    if (head) {
      http.GetHeaders(url, 5);
    } else if (toFile) {
      post ? http.Post(url, file, 5) : http.Get(url, file, 5);
    } else {
      post ? http.Post(url, 5) : http.Get(url, 5);
    }
    check(outcome.events == 0);
    return 0;
  }
  if (head) {
    http.GetHeaders(url);
  } else if (toFile) {
    post ? http.Post(url, file) : http.Get(url, file);
  } else {
    post ? http.Post(url) : http.Get(url);
  }
  play(socket, pieces);
  check(outcome.afterEnd == 0);
  check(head ? outcome.endings <= 1 : outcome.endings == 1);
  return 0;
}
