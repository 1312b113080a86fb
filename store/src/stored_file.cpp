#include "corvalta/store/stored_file.h"

#include <utility>

#include "corvalta/store/whole_file.h"

namespace corvalta::store {

StoredFile::StoredFile(SystemCalls& calls, std::string path)
    : calls_(&calls), path_(std::move(path)) {}

TextInputStream StoredFile::OpenCreatingWith(std::string_view initialText) {
  removeTemporariesOfKilledSaves(*calls_, path_);
  FileContents contents = readWholeFile(*calls_, path_);
  switch (contents.status) {
    case ReadStatus::Read:
      return TextInputStream(std::move(contents.bytes));
    case ReadStatus::Missing:
      Replace(initialText);
      break;
    case ReadStatus::Unreadable:
      keepAsItIs_ = true;
      break;
  }
  return TextInputStream(std::string(initialText));
}

bool StoredFile::Replace(std::string_view text) {
  return !keepAsItIs_ && replaceWholeFile(*calls_, path_, text);
}

}  // namespace corvalta::store
