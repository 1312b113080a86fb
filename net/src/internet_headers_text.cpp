// Turning header blocks into lists and lists back into text.
#include <corvalta/net/internet_headers.h>

#include "header_keys.h"
#include "text_scan.h"

#include <algorithm>

namespace corvalta::net {

using detail::baseName;
using detail::foldCase;
using detail::lineEndOf;

namespace {

constexpr std::string_view kCRLF = "\r\n";

// Joins folded lines: a line end followed by a blank or a tab becomes one blank. Only that first
// white-space character of the continuation goes; any further ones stay in the value.
std::string unfold(std::string_view text, std::string_view eol) {
  std::string joined;
  joined.reserve(text.size());
  std::size_t at = 0;
  while (at < text.size()) {
    const std::size_t next = text.find(eol, at);
    if (next == std::string_view::npos || next + eol.size() >= text.size()) {
      joined.append(text.substr(at));
      break;
    }
    const std::size_t behind = next + eol.size();
    joined.append(text.substr(at, next - at));
    if (text[behind] == ' ' || text[behind] == '\t') {
      joined += ' ';
      at = behind + 1;
    } else {
      joined.append(eol);
      at = behind;
    }
  }
  return joined;
}

std::string_view trimLeadingBlanks(std::string_view text) {
  const std::size_t first = text.find_first_not_of(" \t");
  return first == std::string_view::npos ? std::string_view() : text.substr(first);
}

void appendLine(std::string& block, std::string_view name, std::string_view value) {
  if (!block.empty()) {
    block.append(kCRLF);
  }
  block.append(name).append(": ").append(value);
}

}  // namespace

void InternetHeaders::ParseHeaders(std::string text) {
  DeleteAllHeaders();
  const std::string_view eol = lineEndOf(text);
  const std::string joined = unfold(text, eol);
  const std::string_view rest(joined);
  std::size_t at = 0;
  while (at <= rest.size()) {
    const std::size_t end = std::min(rest.find(eol, at), rest.size());
    const std::string_view line = rest.substr(at, end - at);
    // Lines without a colon (the status line, empty lines) are no headers. A colon further on
    // belongs to the value.
    if (const std::size_t colon = line.find(':'); colon != std::string_view::npos) {
      AppendHeader(line.substr(0, colon), std::string(trimLeadingBlanks(line.substr(colon + 1))));
    }
    at = end + eol.size();
  }
  rawHeaders_ = std::move(text);
}

std::string InternetHeaders::FormatHTTPHeaders() const {
  compact();
  std::string block;
  for (const Entry& entry : entries_) {
    appendLine(block, baseName(entry.key), entry.value);
  }
  return block;
}

std::string InternetHeaders::Source() const {
  return rawHeaders_.empty() ? FormatHTTPHeaders() : rawHeaders_;
}

std::string InternetHeaders::FormatEmailHeaders() const {
  std::string block;
  if (has("Return-Path")) {
    appendLine(block, "Return-Path", Value("Return-Path"));
  }
  const std::int32_t received = NameCount("Received");
  for (std::int32_t number = 0; number < received; ++number) {
    appendLine(block, "Received", Value("Received", number));
  }
  for (std::string_view name : {"Date", "Subject", "From"}) {
    if (has(name)) {
      appendLine(block, name, Value(name));
    }
  }
  for (std::string_view name : {"To", "CC"}) {
    if (NameCount(name) > 0) {
      appendLine(block, name, CommaSeparatedValues(name));
    }
  }
  // The names above, and BCC, which a mail never shows; the colons make it match whole names.
  constexpr std::string_view kWellKnown = ":date:subject:from:to:cc:bcc:received:return-path:";
  compact();
  for (const Entry& entry : entries_) {
    const std::string_view name = baseName(entry.key);
    std::string word = foldCase(name);
    word.insert(word.begin(), ':');
    word.push_back(':');
    if (kWellKnown.find(word) == std::string_view::npos) {
      appendLine(block, name, entry.value);
    }
  }
  return block;
}

}  // namespace corvalta::net
