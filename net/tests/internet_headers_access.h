#pragma once

#include <corvalta/net/internet_headers.h>

namespace corvalta::net {

// The class's internal operations, for tests and fuzzers.
struct InternetHeadersAccess {
  static void ParseHeaders(InternetHeaders& headers, std::string text) {
    headers.ParseHeaders(std::move(text));
  }
  static std::string FormatHTTPHeaders(const InternetHeaders& headers) {
    return headers.FormatHTTPHeaders();
  }
  static std::string FormatEmailHeaders(const InternetHeaders& headers) {
    return headers.FormatEmailHeaders();
  }
};

}  // namespace corvalta::net
