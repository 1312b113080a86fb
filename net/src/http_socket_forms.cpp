// HTTPSocket: form encoding and Basic authentication.
#include <corvalta/net/http_socket.h>

#include "http_socket_guard.h"

#include <algorithm>

namespace corvalta::net {
namespace {

// Characters that a form escapes. Letters, digits, the point, colon, semicolon, question mark,
// quotes, angle brackets, at sign, vertical bar, other control characters and every byte above
// 127 pass as they are; the blank becomes "+".
constexpr std::string_view kEscaped = "%&=,/\\][{}`~-_()*^$#!+\r\n";

std::string encodeBase64(std::string_view data) {
  constexpr std::string_view kDigits =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string encoded;
  encoded.reserve((data.size() + 2) / 3 * 4);
  for (std::size_t at = 0; at < data.size(); at += 3) {
    const std::size_t count = std::min<std::size_t>(3, data.size() - at);
    std::uint32_t group = 0;
    for (std::size_t i = 0; i < 3; ++i) {
      group <<= 8;
      if (i < count) {
        group |= static_cast<unsigned char>(data[at + i]);
      }
    }
    for (std::size_t i = 0; i < 4; ++i) {
      encoded += i <= count ? kDigits[(group >> (18 - 6 * i)) & 0x3F] : '=';
    }
  }
  return encoded;
}

}  // namespace

std::string HTTPSocket::EncodeURLString(std::string_view text) {
  constexpr std::string_view kHex = "0123456789ABCDEF";
  std::string encoded;
  encoded.reserve(text.size());
  for (const char c : text) {
    if (kEscaped.find(c) != std::string_view::npos) {
      const auto byte = static_cast<unsigned char>(c);
      encoded += '%';
      encoded += kHex[byte >> 4];
      encoded += kHex[byte & 0x0F];
    } else {
      encoded += c == ' ' ? '+' : c;
    }
  }
  return encoded;
}

std::string HTTPSocket::EncodeFormData(const FormData& form) {
  std::string encoded;
  for (const auto& [key, value] : form) {
    encoded += '&';
    encoded += EncodeURLString(key);
    encoded += '=';
    encoded += EncodeURLString(value);
  }
  return encoded.empty() ? encoded : encoded.substr(1);
}

void HTTPSocket::SetFormData(const FormData* form) {
  if (form == nullptr) {
    SetPostContent({}, {});
  } else {
    SetPostContent(EncodeFormData(*form), "application/x-www-form-urlencoded");
  }
}

// Asks the caller for a name and a password; on yes, they go with the next request only. The
// key stays on one line whatever its length: a header value can't hold a line end.
bool HTTPSocket::SetAuthentication() {
  std::string name;
  std::string password;
  bool answer = false;
  if (events.AuthenticationRequired) {
    const auto guard = liveness_.token();
    const auto handler = events.AuthenticationRequired;
    answer = handler(Headers(pageHeaders_), name, password);
    if (!guard.holds()) {
      return false;
    }
  }
  if (answer) {
    authenticationKey_ = "Basic " + encodeBase64(name + ":" + password);
  }
  return answer;
}

}  // namespace corvalta::net
