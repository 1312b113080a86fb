#include <corvalta/platform/text.h>
#include <corvalta/update/manifest.h>

#include <array>

namespace corvalta::update {

using platform::InStr;
using platform::Len;
using platform::Mid;
using platform::NthField;
using platform::Val;

std::string startTag(std::string_view name) { return "<" + std::string(name) + ">"; }

std::string endTag(std::string_view name) { return "</" + std::string(name) + ">"; }

std::string returnValue(std::string_view page, std::string_view name) {
  const std::string start = startTag(name);
  const std::int32_t first = InStr(0, page, start) + Len(start);
  const std::int32_t last = InStr(first, page, endTag(name));
  // Mid would take the rest of the page for the negative length; a missing end tag is a
  // missing value.
  if (last == 0) return {};
  return Mid(page, first, last - first);
}

Manifest readManifest(std::string_view page) {
  Manifest manifest;
  manifest.CurrentVersion = returnValue(page, "CurrentVersion");
  manifest.Description = returnValue(page, "Description");
  manifest.Free = returnValue(page, "Free") == "Yes";
  manifest.DownloadURLOSX = returnValue(page, "DownloadURLOSX");
  return manifest;
}

bool isRunningVersion(std::string_view published, std::int32_t major, std::int32_t minor,
                      std::int32_t bug) {
  const std::array<std::int32_t, 3> running{major, minor, bug};
  for (std::int32_t field = 1; field <= 3; ++field) {
    const double number = Val(NthField(published, ".", field));
    if (number != static_cast<double>(running[static_cast<std::size_t>(field - 1)])) return false;
  }
  return true;
}

}  // namespace corvalta::update
