#pragma once

#include <string>
#include <string_view>

#include "corvalta/store/system_calls.h"
#include "corvalta/store/text_stream.h"

namespace corvalta::store {

// One file of the preferences folder, read once and replaced as a whole.
class StoredFile {
 public:
  StoredFile(SystemCalls& calls, std::string path);

  // The file for reading. A missing file is first created holding `initialText`, and the
  // reading then goes over that text, so a first run has no path of its own, also when the
  // file can't be created. A file that is there but can't be read reads as `initialText` too.
  // Temporary files that killed saves of this file left behind are removed first.
  TextInputStream OpenCreatingWith(std::string_view initialText);

  // Replaces the file with `text`; false leaves the file as it was. A file that was there
  // but could not be read is never replaced: what it holds may be the user's data that a
  // passing fault hid.
  bool Replace(std::string_view text);

  [[nodiscard]] const std::string& path() const { return path_; }

 private:
  SystemCalls* calls_;
  std::string path_;
  bool keepAsItIs_ = false;
};

}  // namespace corvalta::store
