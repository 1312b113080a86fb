#pragma once

#include <corvalta/testing/nginx_server.h>
#include <corvalta/testing/temporary_folder.h>

#include <optional>
#include <string>

namespace corvalta::update::testing {

// The update endpoint as the maker serves it: nginx on 127.0.0.1 with the site snippet of
// deploy/ as it stands, over a folder of the test's own where the test publishes manifests.
class ManifestSite {
 public:
  ManifestSite();

  // Serves `page` as the manifest; nullopt removes it, so the server answers 404.
  void publish(const std::optional<std::string>& page);
  [[nodiscard]] std::string manifestURL() const { return server_.url("/Updates/corvalta.xml"); }

 private:
  corvalta::testing::TemporaryFolder root_;
  corvalta::testing::NginxServer server_;
};

// A manifest with the four values, one per line, inside a root element.
[[nodiscard]] std::string manifest(const std::string& version, const std::string& description,
                                   const std::string& free, const std::string& downloadURL);

}  // namespace corvalta::update::testing
