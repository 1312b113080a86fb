#include "manifest_site.h"
#include "update_check_harness.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace corvalta::update::testing {
namespace {

// Served by nginx, each published version against the running 2.1.1 leads to the current-
// version box or to the prompt that offers exactly that text, lower versions included.
TEST(VersionOutcomes, EachPublishedVersionLeadsToItsEnding) {
  const struct {
    const char* published;
    bool same;
  } cases[] = {
      {"2.1.1", true},  {"02.01.01", true}, {"2.1.1.7", true}, {"2.1.1 UB", true},
      {"2.1", false},   {"2.1.0", false},   {"2.1.2", false},  {"2.0.9", false},
      {"3", false},     {"", false},
  };
  ManifestSite site;
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string("published '") + c.published + "'");
    site.publish(manifest(c.published, "What is new.", "Yes", "http://downloads.example/x"));
    UpdateCheckHarness check(site.manifestURL());
    check.answer("Cancel");
    check.checkForUpdates();
    const std::string dialog =
        c.same ? "box: You are using the current version. No update is available."
               : std::string("prompt: New version available! | Version ") + c.published +
                     " is now available. (You are using version 2.1.1.) This is a free upgrade. "
                     "Would you like to automatically download this update (using your web "
                     "browser)? | What is new. -> Cancel";
    ASSERT_GE(check.journal().size(), 3u);
    EXPECT_EQ(check.journal()[check.journal().size() - 2], dialog);
    EXPECT_EQ(check.journal().back(), "close updateWindow");
  }
}

}  // namespace
}  // namespace corvalta::update::testing
