// Parses any bytes as a header block and checks what the list must always keep: every entry
// is counted once under its name, names hold no colon, and a parsed block is its own source.
#include "internet_headers_access.h"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string>

namespace {

void check(bool condition) {
  if (!condition) {
    __builtin_trap();
  }
}

// Names compare without regard to ASCII case: in the C locale, tolower changes nothing else.
std::string folded(std::string text) {
  std::ranges::transform(text, text.begin(), [](unsigned char c) { return std::tolower(c); });
  return text;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using corvalta::net::InternetHeaders;
  using corvalta::net::InternetHeadersAccess;
  const std::string block(reinterpret_cast<const char*>(data), size);
  InternetHeaders headers;
  InternetHeadersAccess::ParseHeaders(headers, block);
  check(headers.Source() == block);

  std::map<std::string, std::string> names;
  for (std::int32_t i = 0; i < headers.Count(); ++i) {
    const std::string name = headers.Name(i);
    check(name.find(':') == std::string::npos);
    names.emplace(folded(name), name);
  }
  std::int32_t counted = 0;
  for (const auto& [key, name] : names) {
    counted += headers.NameCount(name);
  }
  check(counted == headers.Count());

  InternetHeadersAccess::FormatHTTPHeaders(headers);
  InternetHeadersAccess::FormatEmailHeaders(headers);
  return 0;
}
