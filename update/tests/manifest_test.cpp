#include <corvalta/platform/app_info.h>
#include <corvalta/update/manifest.h>

#include <gtest/gtest.h>

#include <string>

namespace corvalta::update {
namespace {

// A value is the text behind the first start tag up to the next end tag, kept as written.
TEST(ManifestReader, CutsTheValueBetweenTheFirstStartTagAndTheNextEndTag) {
  struct Case {
    const char* page;
    const char* tag;
    const char* value;
  };
  const Case cases[] = {
      {"<Free>Yes</Free>", "Free", "Yes"},
      {"<Description>\n  Faster drills &amp; more\n</Description>", "Description",
       "\n  Faster drills &amp; more\n"},
      {"<Free>No</Free><Free>Yes</Free>", "Free", "No"},
      {"<Description>a <Description>b</Description>", "Description", "a <Description>b"},
      {"<Description>Zählen – schneller</Description>", "Description", "Zählen – schneller"},
      {"<Free></Free>", "Free", ""},
      // An end tag in front of the start tag is not seen...
      {"</Free><Free>Yes</Free>", "Free", "Yes"},
      // ...and with no end tag behind the start tag the value is missing, not the rest.
      {"</Free>x<Free>Yes", "Free", ""},
      {"<CurrentVersion>2.2.0", "CurrentVersion", ""},
      // Without the start tag, the search starts at the start tag's length (6 for "<Free>").
      {"abcdefghi</Free>", "Free", "fghi"},
      {"abcde</Free>", "Free", ""},
      {"<free>Yes</free>", "Free", ""},
      {"", "Free", ""},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(returnValue(c.page, c.tag), c.value) << "page: " << c.page;
  }
}

// Order, layout and anything around the tags leave the four values the same.
TEST(ManifestReader, ReadsTheFourValuesWhateverSurroundsThem) {
  const std::string oneLine =
      "<CurrentVersion>2.2.0</CurrentVersion><Description>New levels.</Description>"
      "<Free>Yes</Free><DownloadURLOSX>http://host/get?a=1&amp;b=2</DownloadURLOSX>";
  const std::string wrapped =
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!-- was: <Free>No</Free> -->\n"
      "<Corvalta>\n  <DownloadURLOSX>http://host/get?a=1&amp;b=2</DownloadURLOSX>\n"
      "  <Free>Yes</Free>\n  <Description>New levels.</Description>\n"
      "  <CurrentVersion>2.2.0</CurrentVersion>\n</Corvalta>\n";
  for (const std::string& page : {oneLine, wrapped}) {
    const Manifest m = readManifest(page);
    EXPECT_EQ(m.CurrentVersion, "2.2.0");
    EXPECT_EQ(m.Description, "New levels.");
    EXPECT_EQ(m.DownloadURLOSX, "http://host/get?a=1&amp;b=2");
  }
  // A comment is text like any other: the first "<Free>" in the page wins.
  EXPECT_TRUE(readManifest(oneLine).Free);
  EXPECT_FALSE(readManifest(wrapped).Free);
}

// Only the exact text "Yes" makes an upgrade free.
TEST(ManifestReader, FreeIsExactlyYes) {
  EXPECT_TRUE(readManifest("<Free>Yes</Free>").Free);
  for (const char* page :
       {"<Free>yes</Free>", "<Free> Yes</Free>", "<Free>Yes\n</Free>", "<Free>No</Free>", "<Free>Yes"}) {
    EXPECT_FALSE(readManifest(page).Free) << page;
  }
}

// Versions are equal field by field as numbers, over the first three fields only; a missing
// field reads as 0.
TEST(VersionComparison, ComparesThreeNumericFieldsForEquality) {
  const struct {
    const char* published;
    bool same;
  } against211[] = {
      {"2.1.1", true},  {"02.01.01", true}, {"2.1.1.7", true}, {"2.1.1 UB", true}, {" 2.1.1", true},
      {"2.1.1\n", true}, {"2.1.1-beta", true}, {"2.1", false},  {"2.1.0", false},   {"2.1.2", false},
      {"2.0.9", false}, {"3", false},       {"", false},       {"v2.1.1", false},  {"2..1.1", false},
      {"1.1.1", false}, {"2.1.10", false},  {"-2.1.1", false},
  };
  for (const auto& c : against211) {
    EXPECT_EQ(isRunningVersion(c.published, 2, 1, 1), c.same) << '"' << c.published << '"';
  }
  EXPECT_TRUE(isRunningVersion("2.1", 2, 1, 0));
  EXPECT_TRUE(isRunningVersion("", 0, 0, 0));
}

// Whatever server the build names, the manifest lies on it and the web site is its home page.
TEST(UpdateEndpoint, TheManifestLiesOnTheServerWhoseHomePageIsTheWebSite) {
  const std::string site(platform::app_info::makerWebSite());
  EXPECT_EQ(site.rfind("http://", 0), 0u) << site;
  EXPECT_EQ(site.find('/', 7), site.size() - 1) << "a bare address: " << site;
  EXPECT_EQ(platform::app_info::updateManifestURL(), site + "Updates/corvalta.xml");
}

}  // namespace
}  // namespace corvalta::update
