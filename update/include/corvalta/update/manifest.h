#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// The update manifest: four tagged values in a page of text. The page looks like XML but is
// read as plain text: a tag is a run of characters found wherever it stands, and a value is
// what lies between a start tag and the next end tag behind it, character for character.
namespace corvalta::update {

struct Manifest {
  std::string CurrentVersion;  // dotted numbers, major first
  std::string Description;
  bool Free = false;           // the value is exactly "Yes"
  std::string DownloadURLOSX;
};

// "<name>" and "</name>".
[[nodiscard]] std::string startTag(std::string_view name);
[[nodiscard]] std::string endTag(std::string_view name);

// The value of the first start tag of `name` in `page`: the text behind it up to the next end
// tag. The empty text when no end tag follows. Without a start tag the value begins where the
// start tag's length points, so a page that holds only the end tag still gives text.
[[nodiscard]] std::string returnValue(std::string_view page, std::string_view name);

// All four values, each read from the whole page; missing ones are empty, and nothing is
// trimmed, decoded or checked.
[[nodiscard]] Manifest readManifest(std::string_view page);

// Whether the published version text names the running version. Only its first three
// dot-separated fields count, each read as a number (a missing or non-numeric field reads
// as 0), so "02.01.01", "2.1.1.7" and "2.1.1 UB" are all 2.1.1. Any difference, lower as
// well as higher, is a version on offer.
[[nodiscard]] bool isRunningVersion(std::string_view published, std::int32_t major,
                                    std::int32_t minor, std::int32_t bug);

}  // namespace corvalta::update
