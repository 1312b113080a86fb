#include "qt_client.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

namespace corvalta::net {
namespace {

// Qt's loop needs an application object for the whole test program.
class QtEnvironment : public ::testing::Environment {
 public:
  void SetUp() override { application_ = std::make_unique<QCoreApplication>(argc_, argv_); }
  void TearDown() override { application_.reset(); }

 private:
  int argc_ = 1;
  char name_[10] = "net_tests";
  char* argv_[2] = {name_, nullptr};
  std::unique_ptr<QCoreApplication> application_;
};

[[maybe_unused]] ::testing::Environment* const kQtEnvironment =
    ::testing::AddGlobalTestEnvironment(new QtEnvironment);

}  // namespace

QtClient::QtClient()
    : http(std::make_unique<HTTPSocket>(std::make_unique<platform::qt::QtTcpSocket>(), loop)) {
  log.attach(*http);
  log.onEvent = [this] { loop.wake(); };
}

bool QtClient::runUntilEnded(std::chrono::seconds patience) {
  platform::EventLoop::WaitOptions options;
  options.deadline = loop.now() + patience;
  return loop.waitUntil([this] { return log.ended(); }, options);
}

}  // namespace corvalta::net
