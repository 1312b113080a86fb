#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "corvalta/store/system_calls.h"

namespace corvalta::store {

enum class ReadStatus {
  Read,        // the bytes are the file's
  Missing,     // there is no file of that name
  Unreadable,  // something stands there that could not be read: no permission, I/O, or no
               // regular file (a folder, a named pipe, a device)
};

struct FileContents {
  ReadStatus status = ReadStatus::Missing;
  std::string bytes;
};

// The stored files are a few hundred bytes; reading stops here so that a huge file put in their
// place cannot exhaust memory.
inline constexpr std::size_t kMaxStoredFileSize = 1 << 20;

// The file's bytes, up to kMaxStoredFileSize. It never blocks: what is no regular file is
// Unreadable without being read.
FileContents readWholeFile(SystemCalls& calls, const std::string& path);

// Replaces the file at `path` with `bytes` so that at every instant the path names either the
// whole old file or the whole new one, even if the process dies or the machine loses power:
// the new text goes to a file beside the old one, is checked to be written in full and flushed
// to disk, and is renamed over the old one, then the folder is flushed. A symbolic link stays:
// the file it points to is the one replaced, in that file's folder. The new file keeps the old
// one's permission bits. What is there but is no regular file is not replaced. On false the
// old file is as it was and nothing of the attempt is left behind.
bool replaceWholeFile(SystemCalls& calls, const std::string& path, std::string_view bytes);

// Removes what saves of `path` that were killed midway left behind: their temporary files,
// beside the path and beside the file its links point to, of processes that no longer run.
void removeTemporariesOfKilledSaves(SystemCalls& calls, const std::string& path);

}  // namespace corvalta::store
