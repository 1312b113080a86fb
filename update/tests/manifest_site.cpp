#include "manifest_site.h"

#include <filesystem>

#ifndef CORVALTA_DEPLOY_DIR
#error "CORVALTA_DEPLOY_DIR must name the source's deploy folder"
#endif

namespace corvalta::update::testing {

ManifestSite::ManifestSite()
    : server_(root_.path(), "include " CORVALTA_DEPLOY_DIR "/nginx/corvalta-updates.conf;") {
  std::filesystem::create_directory(root_.path() / "Updates");
}

void ManifestSite::publish(const std::optional<std::string>& page) {
  const auto file = root_.path() / "Updates" / "corvalta.xml";
  if (page) {
    corvalta::testing::writeBytes(file, *page);
  } else {
    std::filesystem::remove(file);
  }
}

std::string manifest(const std::string& version, const std::string& description,
                     const std::string& free, const std::string& downloadURL) {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Corvalta>\n"
         "  <CurrentVersion>" + version + "</CurrentVersion>\n"
         "  <Description>" + description + "</Description>\n"
         "  <Free>" + free + "</Free>\n"
         "  <DownloadURLOSX>" + downloadURL + "</DownloadURLOSX>\n</Corvalta>\n";
}

}  // namespace corvalta::update::testing
