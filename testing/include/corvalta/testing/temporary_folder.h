#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace corvalta::testing {

// A fresh folder under the system's temporary folder, removed with all it holds at the end,
// even where a test took its write permission away.
class TemporaryFolder {
 public:
  TemporaryFolder();
  ~TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  [[nodiscard]] const std::filesystem::path& path() const { return path_; }
  [[nodiscard]] std::string operator/(const std::string& name) const { return (path_ / name).string(); }

 private:
  std::filesystem::path path_;
};

// The file's bytes; "<missing>" when there is no file, "<folder>" for a folder, "<no file>" for
// anything else that is no regular file (a named pipe, a device).
std::string fileBytes(const std::filesystem::path& path);
void writeBytes(const std::filesystem::path& path, const std::string& bytes);
// The names in the folder, sorted.
std::vector<std::string> folderEntries(const std::filesystem::path& path);

}  // namespace corvalta::testing
