#include <corvalta/platform/app_info.h>

// The build defines these: the version from the project version, the update server from
// cmake/CorvaltaUpdateEndpoint.cmake.
#ifndef CORVALTA_VERSION
#error "CORVALTA_VERSION must be defined by the build"
#endif
#ifndef CORVALTA_UPDATE_AUTHORITY
#error "CORVALTA_UPDATE_AUTHORITY must be defined by the build"
#endif

namespace corvalta::platform::app_info {

std::string_view LongVersion() { return CORVALTA_VERSION " UB"; }
std::string_view ShortVersion() { return CORVALTA_VERSION; }
int MajorVersion() { return CORVALTA_VERSION_MAJOR; }
int MinorVersion() { return CORVALTA_VERSION_MINOR; }
int BugVersion() { return CORVALTA_VERSION_PATCH; }

std::string_view makerWebSite() { return "http://" CORVALTA_UPDATE_AUTHORITY "/"; }
std::string_view updateManifestURL() {
  return "http://" CORVALTA_UPDATE_AUTHORITY "/Updates/corvalta.xml";
}

}  // namespace corvalta::platform::app_info
