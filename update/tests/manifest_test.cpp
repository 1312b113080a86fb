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
      {"<Description>\n  Faster drills &amp; more\n</Description>", "Description",
       "\n  Faster drills &amp; more\n"},
      {"<Free>No</Free><Free>Yes</Free>", "Free", "No"},
      {"<Description>a <Description>b</Description>", "Description", "a <Description>b"},
      {"<Free></Free>", "Free", ""},
      // An end tag in front of the start tag is not seen, and with none behind it the value is
      // missing.
      {"</Free><Free>Yes</Free>", "Free", "Yes"},
      {"</Free>x<Free>Yes", "Free", ""},
      // Without the start tag, the search starts at the start tag's length (6 for "<Free>").
      {"abcdefghi</Free>", "Free", "fghi"},
      {"<free>Yes</free>", "Free", ""},
  };
  for (const auto& c : cases) EXPECT_EQ(returnValue(c.page, c.tag), c.value) << "page: " << c.page;
}

// Only the exact text "Yes" makes an upgrade free: no other case, no blank around it.
TEST(ManifestReader, OnlyTheExactTextYesIsFree) {
  for (const char* page : {"<Free>yes</Free>", "<Free> Yes</Free>", "<Free>Yes\n</Free>"}) {
    EXPECT_FALSE(readManifest(page).Free) << page;
  }
}

// Versions are equal field by field as numbers, over the first three fields only; a missing
// field reads as 0.
TEST(VersionComparison, ComparesThreeNumericFieldsForEquality) {
  const std::pair<const char*, bool> against211[] = {
      {"2.1.1", true},  {"02.01.01", true},   {"2.1.1.7", true}, {"2.1.1 UB", true},
      {" 2.1.1", true}, {"2.1.1-beta", true}, {"2.1", false},    {"2.1.2", false},
      {"2.2.1", false}, {"3.1.1", false},     {"", false},       {"v2.1.1", false},
      {"2..1.1", false}, {"2.1.10", false},   {"-2.1.1", false},
  };
  for (const auto& [published, same] : against211) {
    EXPECT_EQ(isRunningVersion(published, 2, 1, 1), same) << published;
  }
  EXPECT_TRUE(isRunningVersion("2.1", 2, 1, 0));
  EXPECT_TRUE(isRunningVersion("", 0, 0, 0));
}

}  // namespace
}  // namespace corvalta::update
