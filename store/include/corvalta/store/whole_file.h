#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "corvalta/store/system_calls.h"

namespace corvalta::store {

enum class ReadStatus {
  Read,        // the bytes are the file's
  Missing,     // there is no file of that name
  Unreadable,  // something stands there that could not be read: no permission, a folder, I/O
};

struct FileContents {
  ReadStatus status = ReadStatus::Missing;
  std::string bytes;
};

// The stored files are a few hundred bytes; reading stops here so that a huge file put in their
// place cannot exhaust memory.
inline constexpr std::size_t kMaxStoredFileSize = 1 << 20;

// The file's bytes, up to kMaxStoredFileSize.
FileContents readWholeFile(SystemCalls& calls, const std::string& path);

// Replaces the file at `path` with `bytes` so that at every instant the path names either the
// whole old file or the whole new one, even if the process dies or the machine loses power:
// the new text goes to a file beside the old one, is checked to be written in full and flushed
// to disk, and is renamed over the old one, then the folder is flushed. On false the old file
// is as it was and nothing of the attempt is left behind.
bool replaceWholeFile(SystemCalls& calls, const std::string& path, std::string_view bytes);

}  // namespace corvalta::store
