#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace corvalta::store {

// Reads a stored file line by line. Files are written with LF; CR LF and a lone CR, as an
// editor on another system may leave them, end a line too.
class TextInputStream {
 public:
  explicit TextInputStream(std::string text);

  // The next line without its line end; the empty string once no line is left, so a reader
  // never has to test for the end.
  std::string ReadLine();

 private:
  std::string text_;
  std::size_t position_ = 0;
};

// Collects the lines of a stored file, each ending in LF, the last one too.
class TextOutputStream {
 public:
  void WriteLine(std::string_view line);
  [[nodiscard]] const std::string& text() const { return text_; }

 private:
  std::string text_;
};

}  // namespace corvalta::store
