#include <corvalta/update/manifest.h>

#include <gtest/gtest.h>

#include <string>

namespace corvalta::update {
namespace {

// A value is the text behind the first start tag up to the next end tag, kept as written.
TEST(ManifestReader, CutsTheValueBetweenTheFirstStartTagAndTheNextEndTag) {
  const struct {
    const char *page, *tag, *value;
  } cases[] = {
      {"<Description>\n  Faster drills &amp; more\n</Description>", "Description", "\n  Faster drills &amp; more\n"},
      {"<Free>No</Free><Free>Yes</Free>", "Free", "No"},
      {"<Description>a <Description>b</Description>", "Description", "a <Description>b"},
      {"<Free></Free>", "Free", ""},
      {"</Free><Free>Yes</Free>", "Free", "Yes"},  // an end tag in front of the start tag is not seen...
      {"</Free>x<Free>Yes", "Free", ""},           // ...and with none behind it the value is missing
      // Without the start tag, the search starts at the start tag's length (6 for "<Free>").
      {"abcdefghi</Free>", "Free", "fghi"},
      {"<free>Yes</free>", "Free", ""},
  };
  for (const auto& c : cases) EXPECT_EQ(returnValue(c.page, c.tag), c.value) << "page: " << c.page;
}

// Order, layout and anything around the tags leave the four values the same; a comment is text
// like any other, so the first "<Free>" in the page wins; only the exact text "Yes" is free.
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
    EXPECT_EQ(m.CurrentVersion + "|" + m.Description + "|" + m.DownloadURLOSX,
              "2.2.0|New levels.|http://host/get?a=1&amp;b=2");
    EXPECT_EQ(m.Free, page == oneLine);
  }
  for (const char* page : {"<Free>yes</Free>", "<Free> Yes</Free>", "<Free>Yes\n</Free>", "<Free>Yes"})
    EXPECT_FALSE(readManifest(page).Free) << page;
}

// Versions are equal field by field as numbers, over the first three fields only; a missing
// field reads as 0.
TEST(VersionComparison, ComparesThreeNumericFieldsForEquality) {
  const std::pair<const char*, bool> against211[] = {
      {"2.1.1", true},  {"02.01.01", true}, {"2.1.1.7", true}, {"2.1.1 UB", true}, {" 2.1.1", true},
      {"2.1.1-beta", true}, {"2.1", false}, {"2.1.2", false},  {"2.2.1", false},   {"3.1.1", false},
      {"", false},      {"v2.1.1", false},  {"2..1.1", false}, {"2.1.10", false},  {"-2.1.1", false},
  };
  for (const auto& [published, same] : against211) EXPECT_EQ(isRunningVersion(published, 2, 1, 1), same) << published;
  EXPECT_TRUE(isRunningVersion("2.1", 2, 1, 0));
  EXPECT_TRUE(isRunningVersion("", 0, 0, 0));
}

}  // namespace
}  // namespace corvalta::update
