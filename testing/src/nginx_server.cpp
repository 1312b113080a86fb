#include <corvalta/testing/local_ports.h>
#include <corvalta/testing/nginx_server.h>
#include <corvalta/testing/temporary_folder.h>

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fstream>
#include <stdexcept>

namespace corvalta::testing {

NginxServer::NginxServer(std::filesystem::path root, std::string_view serverConfig) {
  // Another process may take the port between our look and nginx's bind: try a few.
  for (int attempt = 0; attempt < 5; ++attempt) {
    if (start(root, serverConfig)) {
      return;
    }
  }
  const std::string log = fileBytes(home_.path() / "error.log") + fileBytes(home_.path() / "startup.log");
  throw std::runtime_error("nginx didn't start: " + log);
}

NginxServer::~NginxServer() { stop(); }

std::string NginxServer::url(std::string_view path) const {
  return "http://127.0.0.1:" + std::to_string(port_) + std::string(path);
}

bool NginxServer::start(std::filesystem::path root, std::string_view serverConfig) {
  port_ = freeLocalPort();
  const std::string home = home_.path().string();
  std::ofstream(home + "/nginx.conf")
      << "daemon off;\nmaster_process off;\nworker_processes 1;\n"
      << "pid " << home << "/nginx.pid;\nerror_log " << home << "/error.log warn;\n"
      << "events { worker_connections 1024; }\n"
      << "http {\n  access_log off;\n  default_type application/octet-stream;\n"
      << "  sendfile on;\n"
      << "  client_body_temp_path " << home << "/body;\n"
      << "  proxy_temp_path " << home << "/proxy;\n"
      << "  fastcgi_temp_path " << home << "/fastcgi;\n"
      << "  uwsgi_temp_path " << home << "/uwsgi;\n"
      << "  scgi_temp_path " << home << "/scgi;\n"
      << "  server {\n    listen 127.0.0.1:" << port_ << ";\n    root " << root.string() << ";\n"
      << "    " << serverConfig << "\n  }\n}\n";
  // Built before the fork: the child of a threaded process may not allocate.
  const std::string startupLog = home + "/startup.log";
  const std::string config = home + "/nginx.conf";
  pid_ = ::fork();
  if (pid_ == 0) {
    ::execlp("nginx", "nginx", "-p", home.c_str(), "-e", startupLog.c_str(), "-c", config.c_str(),
             static_cast<char*>(nullptr));
    ::_exit(127);
  }
  if (pid_ < 0) {
    throw std::runtime_error("can't start nginx");
  }
  const auto patience = std::chrono::seconds(10);
  const auto until = std::chrono::steady_clock::now() + patience;
  while (std::chrono::steady_clock::now() < until) {
    if (::waitpid(pid_, nullptr, WNOHANG) == pid_) {
      pid_ = -1;
      return false;
    }
    if (acceptsConnections(port_, std::chrono::milliseconds(0))) {
      return true;
    }
    ::usleep(10'000);
  }
  stop();
  return false;
}

void NginxServer::stop() {
  if (pid_ > 0) {
    ::kill(pid_, SIGTERM);
    ::waitpid(pid_, nullptr, 0);
    pid_ = -1;
  }
}

}  // namespace corvalta::testing
