#pragma once

#include <string_view>

// What the program says about itself: its version, from the build's project version, and the
// addresses it hands to the browser or mail program. Kept here, once, for every window.
namespace corvalta::platform::app_info {

[[nodiscard]] std::string_view LongVersion();   // "2.1.1 UB"
[[nodiscard]] std::string_view ShortVersion();  // "2.1.1"
[[nodiscard]] int MajorVersion();
[[nodiscard]] int MinorVersion();
[[nodiscard]] int BugVersion();

// The maker's order and support page, behind "Support Dunmere".
inline constexpr std::string_view supportPageAddress =
    "https://order.dunmere.example/store/CRVLT21?lang=en";
// The author, behind "Email Author".
inline constexpr std::string_view authorMailAddress = "mailto:nemkard@dunmere.example";
// The maker's web site, behind "Visit Web Site" and "Go to Website": the home page of the
// server that publishes the update manifest, "http://www.dunmere.example/" unless the build
// names another server (CORVALTA_UPDATE_HOST, CORVALTA_UPDATE_PORT).
[[nodiscard]] std::string_view makerWebSite();
// Where the update check fetches the manifest, on that same server:
// "http://www.dunmere.example/Updates/corvalta.xml" by default.
[[nodiscard]] std::string_view updateManifestURL();

}  // namespace corvalta::platform::app_info
