#include "manifest_site.h"

#include <cstdlib>
#include <fstream>
#include <stdexcept>

#ifndef CORVALTA_DEPLOY_DIR
#error "CORVALTA_DEPLOY_DIR must name the source's deploy folder"
#endif

namespace corvalta::update::testing {

ManifestSite::ManifestSite() {
  std::string pattern = (std::filesystem::temp_directory_path() / "corvalta-site-XXXXXX").string();
  if (::mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("can't make a site folder");
  root_ = pattern;
  std::filesystem::create_directory(root_ / "Updates");
  const std::filesystem::path snippet =
      std::filesystem::path(CORVALTA_DEPLOY_DIR) / "nginx" / "corvalta-updates.conf";
  server_ = std::make_unique<corvalta::testing::NginxServer>(root_, "include " + snippet.string() + ";");
}

ManifestSite::~ManifestSite() {
  server_.reset();
  std::filesystem::remove_all(root_);
}

void ManifestSite::publish(const std::optional<std::string>& page) {
  const auto file = root_ / "Updates" / "corvalta.xml";
  if (!page) {
    std::filesystem::remove(file);
    return;
  }
  std::ofstream(file, std::ios::binary | std::ios::trunc) << *page;
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
