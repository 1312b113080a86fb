#pragma once

#include <string>

namespace corvalta::platform {

// Hands addresses to the user's web browser or mail program.
class UrlOpener {
 public:
  virtual ~UrlOpener() = default;
  virtual void open(const std::string& url) = 0;
};

// Passes `url` on and returns; nothing comes back, whether or not anything opened.
void ShowURL(const std::string& url);

}  // namespace corvalta::platform
