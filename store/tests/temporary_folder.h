#pragma once

#include <string>
#include <vector>

namespace corvalta::store {

// A fresh folder under the system's temporary folder, removed with all it holds at the end.
class TemporaryFolder {
 public:
  TemporaryFolder();
  ~TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  [[nodiscard]] const std::string& path() const { return path_; }
  [[nodiscard]] std::string operator/(const std::string& name) const { return path_ + "/" + name; }

 private:
  std::string path_;
};

// The file's bytes; "<missing>" when there is no file, "<folder>" for a folder.
std::string fileBytes(const std::string& path);
void writeBytes(const std::string& path, const std::string& bytes);
// The file's inode number: a replaced file has a new one. 0 when there is no file.
unsigned long inodeOf(const std::string& path);
// The names in the folder, sorted.
std::vector<std::string> folderEntries(const std::string& path);

}  // namespace corvalta::store
