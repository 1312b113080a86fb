#include <corvalta/app/program.h>
#include <corvalta/platform/controls.h>
#include <corvalta/platform/headless/headless_services.h>
#include <corvalta/platform/headless/real_time_tcp_socket.h>
#include <corvalta/platform/qt/qt_tcp_socket.h>
#include <corvalta/platform/user_input.h>
#include <corvalta/store/memory_system_calls.h>
#include <corvalta/testing/local_ports.h>
#include <corvalta/testing/nginx_server.h>
#include <corvalta/testing/scripted_server.h>

#include <QEventLoop>
#include <QTimer>

#include <gtest/gtest.h>

#include <filesystem>
#include <optional>

namespace corvalta::app {
namespace {

using Entries = std::vector<std::string>;
using corvalta::testing::ScriptedServer;
using namespace std::chrono_literals;
constexpr auto kDelivered = platform::Dispatcher::Delivery::Delivered;

// The update check in the program as it ships (the menu commands, selfTest, updateWindow over
// real sockets) on the headless view, fetching from `url`, with its files in memory. Beeps,
// boxes, prompts and addresses for the browser go to the journal in order, each dialog with
// updateWindow as it stood behind it. Dialogs take the answers queued in services.dialogs, or
// their default button.
class Check final : platform::SoundSystem, platform::Dialogs, platform::UrlOpener {
 public:
  explicit Check(std::string url)
      : app({services.loop, services.loop, *this, *this, *this, {}}),
        program(app, {files, "/config",
                      [&loop = services.loop] {
                        using platform::headless::RealTimeTcpSocket;
                        return std::make_unique<RealTimeTcpSocket>(std::make_unique<platform::qt::QtTcpSocket>(), loop);
                      },
                      [](const std::string& report) { ADD_FAILURE() << report; }}) {
    program.start();
    program.setManifestURL(std::move(url));
  }
  ~Check() override { static_cast<void>(program.finish()); }

  // The user's road: "Check Now", then "Check for Updates"; `whileUp` acts on updateWindow once
  // it is up. The modal run sleeps on the network until the window closes.
  void run(std::function<void()> whileUp = {}) {
    services.loop.setInputSource([&whileUp] {
      if (!whileUp) return false;
      std::exchange(whileUp, {})();
      return true;
    });
    EXPECT_EQ(platform::chooseMenuItem(app, "CheckForUpdateCheckNow"), kDelivered);
    EXPECT_EQ(platform::pressControl(app, "selfTest", "PushButton1"), kDelivered);
    services.loop.setInputSource({});
    EXPECT_FALSE(whileUp) << "the window went before the user acted";
    EXPECT_EQ(app.windows().size(), 1u) << "Window1 only: selfTest and updateWindow closed";
  }

  // The updateWindow that is up as "label '...', bar shown|hidden (Maximum N), button '...'", and
  // ", selfTest up" while that window outlives the opening of updateWindow.
  [[nodiscard]] std::string describe() const {
    auto* window = app.liveWindow("updateWindow");
    const auto& bar = window->control<platform::ProgressBar>("ProgressBar1");
    return "label '" + window->control<platform::StaticText>("StaticText1").Text() + "', bar " +
           (bar.Visible() ? "shown" : "hidden") + " (Maximum " + std::to_string(bar.Maximum()) + "), button '" +
           window->control<platform::PushButton>("PushButton1").Caption() + "'" +
           (app.liveWindow("selfTest") != nullptr ? ", selfTest up" : "");
  }

  platform::headless::HeadlessServices services{1};
  platform::Application app;
  store::MemorySystemCalls files;
  app::Program program;
  Entries journal;

 private:
  std::shared_ptr<platform::Sound> GetSound(std::int32_t number) override { return services.sounds.GetSound(number); }
  void Beep() override { journal.push_back("beep"); }
  void open(const std::string& url) override { journal.push_back("browser: " + url); }
  platform::MsgBoxResult showMsgBox(const std::string& text, const platform::MsgBoxStyle& style,
                                    const std::string& title) override {
    journal.push_back(describe() + ": box: " + text);
    return services.dialogs.showMsgBox(text, style, title);
  }
  platform::MessageDialogChoice showMessageDialog(const platform::MessageDialog& dialog) override {
    const std::string behind = describe();
    const auto choice = services.dialogs.showMessageDialog(dialog);
    journal.push_back(behind + ": prompt: " + dialog.Title + " | " + dialog.Message + " | " + dialog.Explanation +
                      " -> " + services.dialogs.shown().back().answer);
    return choice;
  }
};

const std::string kPath = "/Updates/corvalta.xml";
const std::string kDownload = "http://downloads.example/corvalta-2.2.0.tar.gz";
const std::string kHidden = "label 'Checking for updates...', bar hidden (Maximum 0), button 'Cancel': ";

// A manifest with the four values, one per line, inside a root element.
std::string manifest(const std::string& version, const std::string& description, const std::string& free) {
  return "<Corvalta>\n<CurrentVersion>" + version + "</CurrentVersion>\n<Description>" + description +
         "</Description>\n<Free>" + free + "</Free>\n<DownloadURLOSX>" + kDownload + "</DownloadURLOSX>\n</Corvalta>\n";
}

// The upgrade prompt, answered with the button of that caption.
std::string prompt(const std::string& version, bool free, const std::string& explanation, const char* pressed) {
  return kHidden + "prompt: New version available! | Version " + version +
         " is now available. (You are using version 2.1.1.) " +
         (free ? "This is a free upgrade. Would you like to automatically download this update"
               : "This is a paid upgrade. Would you like to automatically download the trial version") +
         " (using your web browser)? | " + explanation + " -> " + pressed;
}

// Every ending of a check: what the user meets, in order, and that no window is left, also when
// late network events would have come. nginx serves a manifest through the deploy snippet as it
// stands; a scripted server gets the client's exact HTTP/1.0 GET, then answers with the bytes
// given and closes, or stays silent while the window waits with its bar running until Cancel or
// the close box end it at once and drop the request; or nothing listens.
TEST(UpdateCheck, EachAnswerOfTheServerEndsTheCheckItsOwnWay) {
  const struct {
    const char* name;
    std::optional<std::string> answer;  // a manifest ("<...") or an answer; empty: silent; nullopt: refused
    const char* button;                 // for the dialog that comes up
    Entries journal;
    bool closeBox = false;  // ends a silent wait with the close box instead of Cancel
  } cases[] = {
      {"current version", manifest("2.1.1", "Nothing new.", "Yes"), "OK",
       {"label 'This version is current.', bar hidden (Maximum 0), button 'Cancel': box: You are "
        "using the current version. No update is available."}},
      {"200 with an empty body", "HTTP/1.0 200 OK\r\nContent-Length: 0\r\n\r\n", nullptr, {}},
      {"404 with an HTML body", "HTTP/1.1 404 Not Found\r\n\r\n<html><body><h1>404 Not Found</h1></body></html>",
       "Cancel", {prompt("", false, "", "Cancel")}},
      {"paid upgrade, downloaded", manifest("2.2.0", "Two new levels.", "No"), "Action",
       {prompt("2.2.0", false, "Two new levels.", "OK"), "browser: " + kDownload}},
      {"a connection that ends inside a tag leaves that tag missing",
       "HTTP/1.0 200 OK\r\n\r\n<CurrentVersion>2.2.0</CurrentVersion><Free>Yes</Free><Description>Two new", "Cancel",
       {prompt("2.2.0", true, "", "Cancel")}},
      {"refused", std::nullopt, nullptr,
       {"beep", "label 'Checking for updates...', bar shown (Maximum 0), button 'Cancel': box: "
        "There was a communication error with the website. Please try again later. (Code: 101)"}},
      {"silent, Cancel", "", nullptr, {}},
      {"silent, close box", "", nullptr, {}, true},
  };
  corvalta::testing::TemporaryFolder root;
  std::filesystem::create_directory(root.path() / "Updates");
  const std::string snippet = "include " CORVALTA_DEPLOY_DIR "/nginx/corvalta-updates.conf;";  // as it stands
  const corvalta::testing::NginxServer site(root.path(), snippet);
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    std::optional<ScriptedServer> server;
    const bool silent = c.answer && c.answer->empty();
    std::string url = "http://127.0.0.1:" + std::to_string(corvalta::testing::freeLocalPort()) + kPath;
    if (c.answer && c.answer->starts_with('<')) {
      corvalta::testing::writeBytes(root.path() / "Updates/corvalta.xml", *c.answer);
      url = site.url(kPath);
    } else if (c.answer) {
      const ScriptedServer::Script script = {ScriptedServer::readRequest(),
                                             silent ? ScriptedServer::holdOpen() : ScriptedServer::send(*c.answer)};
      url = server.emplace(std::vector<ScriptedServer::Script>{script}).url(kPath);
    }
    Check check(url);
    if (c.button != nullptr) check.services.dialogs.queueAnswer(c.button);
    check.run(!silent ? std::function<void()>() : [&] {
      // The server's thread wakes no loop: look again every 20 ms, for 30 s at most.
      auto& loop = check.services.loop;
      for (const auto patience = loop.now() + 30s; server->requests().empty() && loop.now() < patience;)
        loop.waitUntil([&] { return !server->requests().empty(); },
                       {.deliverInput = false, .deadline = loop.now() + 20ms});
      EXPECT_EQ(check.describe(), "label 'Checking for updates...', bar shown (Maximum 0), button 'Cancel'");
      EXPECT_EQ(c.closeBox ? platform::closeWindow(check.app, "updateWindow")
                           : platform::pressControl(check.app, "updateWindow", "PushButton1"),
                kDelivered);
    });
    QEventLoop pause;
    QTimer::singleShot(200, &pause, &QEventLoop::quit);
    pause.exec();
    EXPECT_EQ(check.journal, c.journal);
    if (!server) continue;
    EXPECT_EQ(server->requests(), Entries{"GET /Updates/corvalta.xml HTTP/1.0\r\nAccept: */*\r\nAccept-Language: en\r\n"
                                          "Host: 127.0.0.1:" + std::to_string(server->port()) + "\r\n\r\n"});
    EXPECT_EQ(server->connections(), 1);
  }
}

}  // namespace
}  // namespace corvalta::app
