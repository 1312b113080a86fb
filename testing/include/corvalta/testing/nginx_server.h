#pragma once

#include <sys/types.h>

#include <corvalta/testing/temporary_folder.h>

#include <filesystem>
#include <string>
#include <string_view>

namespace corvalta::testing {

// A real nginx on a free port of 127.0.0.1, serving a folder, for tests and benchmarks. Its
// configuration, logs and temporary files live in a folder of its own, removed on stop; it
// runs as one foreground process and is stopped by its PID.
class NginxServer {
 public:
  // `serverConfig` goes into the server block as it stands (locations, returns, ...).
  explicit NginxServer(std::filesystem::path root, std::string_view serverConfig = {});
  ~NginxServer();
  NginxServer(const NginxServer&) = delete;
  NginxServer& operator=(const NginxServer&) = delete;

  [[nodiscard]] int port() const { return port_; }
  [[nodiscard]] pid_t pid() const { return pid_; }
  // "http://127.0.0.1:<port>" followed by the path.
  [[nodiscard]] std::string url(std::string_view path) const;

 private:
  bool start(std::filesystem::path root, std::string_view serverConfig);
  void stop();

  TemporaryFolder home_;
  int port_ = 0;
  pid_t pid_ = -1;
};

}  // namespace corvalta::testing
