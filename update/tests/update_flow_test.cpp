#include "manifest_site.h"
#include "update_check_harness.h"

#include <corvalta/platform/app_info.h>
#include <corvalta/platform/controls.h>
#include <corvalta/testing/local_ports.h>
#include <corvalta/testing/scripted_server.h>

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace corvalta::update::testing {
namespace {

using Entries = std::vector<std::string>;
using corvalta::testing::ScriptedServer;
using namespace std::chrono_literals;

const std::string kDownload = "http://downloads.example/corvalta-2.2.0.tar.gz";
const std::string kCurrentBox = "box: You are using the current version. No update is available.";
const std::string kFreePrompt =
    "prompt: New version available! | Version 2.2.0 is now available. (You are using version "
    "2.1.1.) This is a free upgrade. Would you like to automatically download this update (using "
    "your web browser)? | Two new levels.";
const std::string kPaidPrompt =
    "prompt: New version available! | Version 2.2.0 is now available. (You are using version "
    "2.1.1.) This is a paid upgrade. Would you like to automatically download the trial version "
    "(using your web browser)? | Two new levels.";
const std::string kWaiting = "label 'Checking for updates...', bar hidden (Maximum 0), button 'Cancel'";

// Ends updateWindow as the user may: with its Cancel button or its close box.
void dismiss(UpdateCheckHarness& check, bool useCloseBox) {
  if (useCloseBox) {
    check.closeBox("updateWindow");
  } else {
    check.press("updateWindow", "PushButton1");
  }
}

class UpdateCheckTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() { site = new ManifestSite(); }
  static void TearDownTestSuite() {
    delete site;
    site = nullptr;
  }
  static ManifestSite* site;
};

ManifestSite* UpdateCheckTest::site = nullptr;

// Every ending of a check that hears from the server: what the user meets, in order, how
// updateWindow looked when a dialog came up, and that no window is left.
TEST_F(UpdateCheckTest, EachAnswerOfTheServerEndsTheCheckItsOwnWay) {
  struct Case {
    const char* name;
    std::optional<std::string> page;  // nullopt: 404 with nginx's HTML page
    const char* answer;               // to the dialog that comes up
    Entries journal;
    Entries atDialogs;
  };
  const std::string current = manifest("2.1.1", "Nothing new.", "Yes", kDownload);
  const std::string free = manifest("2.2.0", "Two new levels.", "Yes", kDownload);
  const std::string paid = manifest("2.2.0", "Two new levels.", "No", kDownload);
  const std::string currentLabel =
      "label 'This version is current.', bar hidden (Maximum 0), button 'Cancel'";
  const Case cases[] = {
      {"current version", current, "OK",
       {"close selfTest", "refresh StaticText1: This version is current.", kCurrentBox,
        "close updateWindow"},
       {currentLabel}},
      {"200 with an empty body", "", "OK", {"close selfTest", "close updateWindow"}, {}},
      {"404 with an HTML body", std::nullopt, "Cancel",
       {"close selfTest",
        "prompt: New version available! | Version  is now available. (You are using version "
        "2.1.1.) This is a paid upgrade. Would you like to automatically download the trial "
        "version (using your web browser)? |  -> Cancel",
        "close updateWindow"},
       {kWaiting}},
      {"free upgrade, cancelled", free, "Cancel",
       {"close selfTest", kFreePrompt + " -> Cancel", "close updateWindow"}, {kWaiting}},
      {"paid upgrade, downloaded", paid, "Action",
       {"close selfTest", kPaidPrompt + " -> Action", "browser: " + kDownload, "close updateWindow"},
       {kWaiting}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    site->publish(c.page);
    UpdateCheckHarness check(site->manifestURL());
    check.answer(c.answer);
    check.checkForUpdates();
    EXPECT_EQ(check.journal(), c.journal);
    EXPECT_EQ(check.updateWindowAtDialogs(), c.atDialogs);
    EXPECT_EQ(check.liveWindows(), Entries{});
  }
}

// "Go to Website" hands the maker's home page to the browser and leaves the window up, bar
// hidden, until its button or its close box ends it.
TEST_F(UpdateCheckTest, GoToWebsiteLeavesTheWindowUpUntilTheUserClosesIt) {
  site->publish(manifest("2.2.0", "Two new levels.", "Yes", kDownload));
  for (const bool useCloseBox : {false, true}) {
    SCOPED_TRACE(useCloseBox ? "close box" : "Cancel");
    UpdateCheckHarness check(site->manifestURL());
    check.answer("Go to Website");
    check.checkForUpdates({check.awaitCheck(), [&] {
                             EXPECT_EQ(check.describeUpdateWindow(), kWaiting);
                             EXPECT_EQ(check.liveWindows(), Entries{"updateWindow"});
                             dismiss(check, useCloseBox);
                           }});
    EXPECT_EQ(check.journal(),
              (Entries{"close selfTest", kFreePrompt + " -> Alternate",
                       "browser: " + std::string(platform::app_info::makerWebSite()),
                       "close updateWindow"}));
    EXPECT_EQ(check.liveWindows(), Entries{});
  }
}

// A check that its caller made silent shows no box for the current version, and closes.
TEST_F(UpdateCheckTest, AnAutomaticCheckOfTheCurrentVersionShowsNoBox) {
  site->publish(manifest("2.1.1", "", "", ""));
  UpdateCheckHarness check(site->manifestURL());
  check.automaticCheck();
  EXPECT_EQ(check.journal(),
            (Entries{"refresh StaticText1: This version is current.", "close updateWindow"}));
  EXPECT_EQ(check.liveWindows(), Entries{});
}

// A server that can't be reached: a beep, then the message with the socket's code, then the
// window closes.
TEST_F(UpdateCheckTest, AServerOutOfReachBeepsAndShowsTheCode) {
  const struct {
    const char* name;
    std::string url;
    const char* code;
  } cases[] = {
      {"refused", "http://127.0.0.1:" + std::to_string(corvalta::testing::freeLocalPort()) +
                      "/Updates/corvalta.xml",
       "101"},
      {"unresolvable", "http://corvalta-updates.invalid/Updates/corvalta.xml", "102"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    UpdateCheckHarness check(c.url);
    check.checkForUpdates();
    EXPECT_EQ(check.journal(),
              (Entries{"close selfTest", "beep",
                       std::string("box: There was a communication error with the website. Please "
                                   "try again later. (Code: ") + c.code + ")",
                       "close updateWindow"}));
    EXPECT_EQ(check.liveWindows(), Entries{});
  }
}

// The request is the client's exact HTTP/1.0 GET; while the server stays silent the window
// waits with its bar running, and Cancel or the close box end it at once: the connection is
// dropped and nothing of the request reaches anyone afterwards.
TEST_F(UpdateCheckTest, CancelWhileTheServerStaysSilentDropsTheRequest) {
  for (const bool useCloseBox : {false, true}) {
    SCOPED_TRACE(useCloseBox ? "close box" : "Cancel");
    ScriptedServer server({{ScriptedServer::readRequest(), ScriptedServer::holdOpen()}});
    UpdateCheckHarness check(server.url("/Updates/corvalta.xml"));
    check.checkForUpdates({check.awaitReal([&] { return !server.requests().empty(); }), [&] {
                             EXPECT_EQ(check.describeUpdateWindow(),
                                       "label 'Checking for updates...', bar shown (Maximum 0), "
                                       "button 'Cancel'");
                             EXPECT_EQ(check.liveWindows(), Entries{"updateWindow"});
                             dismiss(check, useCloseBox);
                           }});
    EXPECT_EQ(server.requests(),
              Entries{"GET /Updates/corvalta.xml HTTP/1.0\r\nAccept: */*\r\nAccept-Language: "
                      "en\r\nHost: 127.0.0.1:" +
                      std::to_string(server.port()) + "\r\n\r\n"});
    check.settle(200ms);
    EXPECT_EQ(check.journal(), (Entries{"close selfTest", "close updateWindow"}));
    EXPECT_EQ(check.liveWindows(), Entries{});
    EXPECT_EQ(server.connections(), 1);
  }
}

// A connection that breaks off inside a tag leaves that tag missing.
TEST_F(UpdateCheckTest, AConnectionThatEndsEarlyIsAPageOfWhatCame) {
  ScriptedServer server({{ScriptedServer::readRequest(),
                          ScriptedServer::send("HTTP/1.0 200 OK\r\n\r\n<CurrentVersion>2.2.0</CurrentVersion>"
                                               "<Free>Yes</Free><Description>Two new")}});
  UpdateCheckHarness check(server.url("/Updates/corvalta.xml"));
  check.answer("Cancel");
  check.checkForUpdates();
  EXPECT_EQ(check.journal(),
            (Entries{"close selfTest",
                     "prompt: New version available! | Version 2.2.0 is now available. (You are using "
                     "version 2.1.1.) This is a free upgrade. Would you like to automatically download "
                     "this update (using your web browser)? |  -> Cancel",
                     "close updateWindow"}));
  EXPECT_EQ(check.liveWindows(), Entries{});
}

}  // namespace
}  // namespace corvalta::update::testing
