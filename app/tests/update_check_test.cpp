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
// real sockets) on the headless view, fetching from `url`, with its files in memory. It stands
// in for the user's eyes and ears: windows closing, beeps, boxes, prompts, addresses for the
// browser and labels redrawn go to the journal in order, with updateWindow as each dialog came
// up. Dialogs take the answers queued in services.dialogs, or their default button.
class Check final : platform::ViewObserver, platform::SoundSystem, platform::Dialogs, platform::UrlOpener {
 public:
  using Step = std::function<void()>;

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
    app.setObserver(this);
    services.loop.setInputSource([this] {
      if (pending.empty()) return false;
      const Step step = std::move(pending.front());
      pending.erase(pending.begin());
      step();
      return true;
    });
  }
  ~Check() override {
    app.setObserver(nullptr);
    static_cast<void>(program.finish());
  }

  // The user's road: "Check Now", then "Check for Updates". While updateWindow is up the steps
  // run in turn, as the user would act on it; the call returns when its modal run has.
  void run(std::vector<Step> whileUp) {
    pending = std::move(whileUp);
    EXPECT_EQ(platform::chooseMenuItem(app, "CheckForUpdateCheckNow"), kDelivered);
    EXPECT_EQ(platform::pressControl(app, "selfTest", "PushButton1"), kDelivered);
    EXPECT_TRUE(pending.empty()) << pending.size() << " steps never ran: the window went first";
  }

  // A step: waits until `done` holds, failing the test after 30 seconds. Virtual time follows
  // the wall clock while a connection is under way.
  Step await(std::function<bool()> done) {
    return [this, done = std::move(done)] {
      const auto patience = services.loop.now() + 30s;
      // The deadline bounds each round for conditions that a scripted server's thread makes true.
      while (!done() && services.loop.now() < patience)
        services.loop.waitUntil(done, {.deliverInput = false, .deadline = services.loop.now() + 20ms});
      EXPECT_TRUE(done()) << "waited 30 s in vain; updateWindow: " << describe();
    };
  }
  // A step: waits until the check has heard from the server (updateWindow closed or hid its bar).
  Step awaitCheck() {
    return await([this] {
      auto* window = app.liveWindow("updateWindow");
      return window == nullptr || !window->control<platform::ProgressBar>("ProgressBar1").Visible();
    });
  }

  // updateWindow as "label '...', bar shown|hidden (Maximum N), button '...'" or "no updateWindow".
  [[nodiscard]] std::string describe() const {
    auto* window = app.liveWindow("updateWindow");
    if (window == nullptr) return "no updateWindow";
    const auto& bar = window->control<platform::ProgressBar>("ProgressBar1");
    return "label '" + window->control<platform::StaticText>("StaticText1").Text() + "', bar " +
           (bar.Visible() ? "shown" : "hidden") + " (Maximum " + std::to_string(bar.Maximum()) + "), button '" +
           window->control<platform::PushButton>("PushButton1").Caption() + "'";
  }

  platform::headless::HeadlessServices services{1};
  platform::Application app;
  store::MemorySystemCalls files;
  app::Program program;
  Entries journal;

 private:
  void windowClosing(platform::Window& window) override { journal.push_back("close " + window.className()); }
  void refreshRequested(platform::PaneChild& child) override {
    auto* label = dynamic_cast<platform::StaticText*>(&child);
    if (label != nullptr) journal.push_back("refresh " + label->key() + ": " + label->Text());
  }
  std::shared_ptr<platform::Sound> GetSound(std::int32_t number) override { return services.sounds.GetSound(number); }
  void Beep() override { journal.push_back("beep"); }
  void open(const std::string& url) override { journal.push_back("browser: " + url); }
  platform::MsgBoxResult showMsgBox(const std::string& text, const platform::MsgBoxStyle& style,
                                    const std::string& title) override {
    journal.push_back(barBehindDialog() + "box: " + text);
    return services.dialogs.showMsgBox(text, style, title);
  }
  platform::MessageDialogChoice showMessageDialog(const platform::MessageDialog& dialog) override {
    const std::string bar = barBehindDialog();
    const auto choice = services.dialogs.showMessageDialog(dialog);
    const std::string& pressed = services.dialogs.shown().back().answer;
    journal.push_back(bar + "prompt: " + dialog.Title + " | " + dialog.Message + " | " + dialog.Explanation + " -> " +
                      pressed);
    return choice;
  }

  // The journal notes a dialog that comes up while updateWindow's bar still runs.
  std::string barBehindDialog() const {
    return describe().find("bar shown") != std::string::npos ? "(bar running) " : "";
  }

  std::vector<Step> pending;
};

const std::string kDownload = "http://downloads.example/corvalta-2.2.0.tar.gz";
const std::string kPath = "/Updates/corvalta.xml";

// A manifest with the four values, one per line, inside a root element.
std::string manifest(const std::string& version, const std::string& description, const std::string& free) {
  return "<Corvalta>\n<CurrentVersion>" + version + "</CurrentVersion>\n<Description>" + description +
         "</Description>\n<Free>" + free + "</Free>\n<DownloadURLOSX>" + kDownload + "</DownloadURLOSX>\n</Corvalta>\n";
}

// The upgrade prompt, answered with the button of that caption.
std::string prompt(const std::string& version, bool free, const std::string& explanation, const char* pressed) {
  return "prompt: New version available! | Version " + version + " is now available. (You are using version 2.1.1.) " +
         (free ? "This is a free upgrade. Would you like to automatically download this update"
               : "This is a paid upgrade. Would you like to automatically download the trial version") +
         " (using your web browser)? | " + explanation + " -> " + pressed;
}

// Every ending of a check: what the user meets, in order, whether updateWindow's bar still ran when a
// dialog came up, and that no window is left. The manifest comes from nginx, a server that breaks off, or none.
TEST(UpdateCheck, EachAnswerOfTheServerEndsTheCheckItsOwnWay) {
  struct Case {
    const char* name;
    std::optional<std::string> page = {};  // on nginx; nullopt: 404 with nginx's HTML page
    std::string url = {};                  // instead of nginx
    ScriptedServer::Script script = {};    // instead of nginx
    const char* answer = nullptr;          // to the dialog that comes up
    Entries journal = {};
  };
  const Case cases[] = {
      {.name = "current version", .page = manifest("2.1.1", "Nothing new.", "Yes"), .answer = "OK",
       .journal = {"close selfTest", "refresh StaticText1: This version is current.",
                   "box: You are using the current version. No update is available.", "close updateWindow"}},
      {.name = "200 with an empty body", .page = "", .journal = {"close selfTest", "close updateWindow"}},
      {.name = "404 with an HTML body", .answer = "Cancel",
       .journal = {"close selfTest", prompt("", false, "", "Cancel"), "close updateWindow"}},
      {.name = "paid upgrade, downloaded", .page = manifest("2.2.0", "Two new levels.", "No"), .answer = "Action",
       .journal = {"close selfTest", prompt("2.2.0", false, "Two new levels.", "OK"), "browser: " + kDownload,
                   "close updateWindow"}},
      {.name = "a connection that ends inside a tag leaves that tag missing",
       .script = {ScriptedServer::readRequest(),
                  ScriptedServer::send("HTTP/1.0 200 OK\r\n\r\n<CurrentVersion>2.2.0</CurrentVersion><Free>Yes</Free>"
                                       "<Description>Two new")},
       .answer = "Cancel", .journal = {"close selfTest", prompt("2.2.0", true, "", "Cancel"), "close updateWindow"}},
      {.name = "refused", .url = "http://127.0.0.1:" + std::to_string(corvalta::testing::freeLocalPort()) + kPath,
       .journal = {"close selfTest", "beep", "(bar running) box: There was a communication error with the website. "
                   "Please try again later. (Code: 101)", "close updateWindow"}},
  };
  corvalta::testing::TemporaryFolder root;
  std::filesystem::create_directory(root.path() / "Updates");
  const std::string snippet = "include " CORVALTA_DEPLOY_DIR "/nginx/corvalta-updates.conf;";  // as it stands
  const corvalta::testing::NginxServer site(root.path(), snippet);
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    std::optional<ScriptedServer> server;
    std::string url = c.url;
    if (!c.script.empty()) {
      url = server.emplace(std::vector<ScriptedServer::Script>{c.script}).url(kPath);
    } else if (url.empty()) {
      std::filesystem::remove(root.path() / "Updates/corvalta.xml");
      if (c.page) corvalta::testing::writeBytes(root.path() / "Updates/corvalta.xml", *c.page);
      url = site.url(kPath);
    }
    Check check(url);
    if (c.answer != nullptr) check.services.dialogs.queueAnswer(c.answer);
    check.run({check.awaitCheck()});
    EXPECT_EQ(check.journal, c.journal);
    EXPECT_EQ(check.app.windows().size(), 1u) << "Window1 only";
  }
}

// The request is the client's exact HTTP/1.0 GET; while the server stays silent the window
// waits with its bar running, and Cancel or the close box end it at once: the connection is
// dropped and nothing of the request reaches anyone afterwards.
TEST(UpdateCheck, CancelWhileTheServerStaysSilentDropsTheRequest) {
  for (const bool closeBox : {false, true}) {
    SCOPED_TRACE(closeBox ? "close box" : "Cancel");
    ScriptedServer server({{ScriptedServer::readRequest(), ScriptedServer::holdOpen()}});
    Check check(server.url(kPath));
    check.run({check.await([&] { return !server.requests().empty(); }), [&] {
                 EXPECT_EQ(check.describe(), "label 'Checking for updates...', bar shown (Maximum 0), button 'Cancel'");
                 EXPECT_EQ(closeBox ? platform::closeWindow(check.app, "updateWindow")
                                    : platform::pressControl(check.app, "updateWindow", "PushButton1"),
                           kDelivered);
               }});
    EXPECT_EQ(server.requests(), Entries{"GET /Updates/corvalta.xml HTTP/1.0\r\nAccept: */*\r\nAccept-Language: en\r\n"
                                         "Host: 127.0.0.1:" + std::to_string(server.port()) + "\r\n\r\n"});
    // Late network events would have come within this much real time.
    QEventLoop pause;
    QTimer::singleShot(200, &pause, &QEventLoop::quit);
    pause.exec();
    EXPECT_EQ(check.journal, (Entries{"close selfTest", "close updateWindow"}));
    EXPECT_EQ(check.app.windows().size(), 1u) << "Window1 only";
    EXPECT_EQ(server.connections(), 1);
  }
}

}  // namespace
}  // namespace corvalta::app
