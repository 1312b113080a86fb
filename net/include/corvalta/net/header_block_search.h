#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace corvalta::net::detail {

// Where a header block ends. `position` is where its closing empty line's first line end
// starts, `lineEnd` that line end's length, so the block's text is bytes[0, position) and
// 2 * lineEnd bytes follow it.
struct HeaderBlockEnd {
  std::size_t position = 0;
  std::size_t lineEnd = 0;
};

// Looks for the end of a header block in the bytes of a response as they arrive. The bytes'
// own line end (CR LF if it occurs, else LF, else CR, else CR LF) written twice is searched
// first, then LF LF, CR LF CR LF and CR CR, each over all the bytes, and the first of these
// that occurs at all wins, wherever it lies. So with mixed line ends (LF headers, CR LF in the
// body) where the block ends depends on how much had arrived when its empty line did.
//
// Each call gets all bytes so far, the earlier ones unchanged, and looks only at what is new
// (and the three bytes before it, where an end may begin): no end was in the earlier bytes, or
// the search would be over. A block that comes a byte at a time is still searched in linear
// time.
class HeaderBlockSearch {
 public:
  std::optional<HeaderBlockEnd> find(std::string_view bytes) {
    const std::size_t from = searchedUpTo_ < 3 ? 0 : searchedUpTo_ - 3;
    const std::string_view fresh = bytes.substr(from);
    sawCRLF_ = sawCRLF_ || fresh.find("\r\n") != std::string_view::npos;
    sawLF_ = sawLF_ || fresh.find('\n') != std::string_view::npos;
    sawCR_ = sawCR_ || fresh.find('\r') != std::string_view::npos;
    searchedUpTo_ = bytes.size();
    const std::string_view own = sawCRLF_ ? kCRLFTwice
                                 : sawLF_ ? kLFTwice
                                 : sawCR_ ? kCRTwice
                                          : kCRLFTwice;
    for (const std::string_view twice : {own, kLFTwice, kCRLFTwice, kCRTwice}) {
      if (const std::size_t at = bytes.find(twice, from); at != std::string_view::npos) {
        return HeaderBlockEnd{at, twice.size() / 2};
      }
    }
    return std::nullopt;
  }

  void reset() { *this = HeaderBlockSearch(); }

 private:
  static constexpr std::string_view kCRLFTwice = "\r\n\r\n";
  static constexpr std::string_view kLFTwice = "\n\n";
  static constexpr std::string_view kCRTwice = "\r\r";

  std::size_t searchedUpTo_ = 0;
  bool sawCRLF_ = false;
  bool sawLF_ = false;
  bool sawCR_ = false;
};

}  // namespace corvalta::net::detail
