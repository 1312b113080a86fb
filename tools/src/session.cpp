#include <corvalta/core/sound_lengths.h>
#include <corvalta/platform/headless/real_time_tcp_socket.h>
#include <corvalta/platform/qt/qt_tcp_socket.h>
#include <corvalta/tools/session.h>

#include <cassert>

namespace corvalta::tools {
namespace {

Session* running = nullptr;

// Where the stored files live when the script names no folder.
constexpr const char* kMemoryFolder = "/config";

}  // namespace

Session::Session(std::uint64_t seed, std::ostream& out, std::ostream& err,
                 std::optional<std::string> configurationFolder)
    : services_(seed, core::soundLengths()),
      app_(services_.services()),
      script_(app_, services_, out, err),
      program_(app_, {configurationFolder ? store::posixSystemCalls() : static_cast<store::SystemCalls&>(memoryFiles_),
                      configurationFolder.value_or(kMemoryFolder),
                      [&loop = services_.loop] {
                        // Real sockets, with the virtual clock following the wall clock while
                        // a connection is under way.
                        return std::make_unique<platform::headless::RealTimeTcpSocket>(
                            std::make_unique<platform::qt::QtTcpSocket>(), loop);
                      },
                      [this](const std::string& report) { script_.fail(report); }}) {
  assert(running == nullptr);
  running = this;
  program_.start();
}

Session::~Session() {
  static_cast<void>(program_.finish());
  running = nullptr;
}

Session& Session::current() { return *running; }

}  // namespace corvalta::tools
