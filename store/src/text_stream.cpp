#include "corvalta/store/text_stream.h"

#include <utility>

namespace corvalta::store {

TextInputStream::TextInputStream(std::string text) : text_(std::move(text)) {}

std::string TextInputStream::ReadLine() {
  if (position_ >= text_.size()) {
    return {};
  }
  const std::size_t end = text_.find_first_of("\r\n", position_);
  if (end == std::string::npos) {
    std::string line = text_.substr(position_);
    position_ = text_.size();
    return line;
  }
  std::string line = text_.substr(position_, end - position_);
  const bool crLf = text_[end] == '\r' && end + 1 < text_.size() && text_[end + 1] == '\n';
  position_ = end + (crLf ? 2 : 1);
  return line;
}

void TextOutputStream::WriteLine(std::string_view line) {
  text_.append(line);
  text_.push_back('\n');
}

}  // namespace corvalta::store
