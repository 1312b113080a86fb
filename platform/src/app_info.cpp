#include <corvalta/platform/app_info.h>

// The build defines these from the project version.
#ifndef CORVALTA_VERSION
#error "CORVALTA_VERSION must be defined by the build"
#endif

namespace corvalta::platform::app_info {

std::string_view LongVersion() { return CORVALTA_VERSION " UB"; }
std::string_view ShortVersion() { return CORVALTA_VERSION; }
int MajorVersion() { return CORVALTA_VERSION_MAJOR; }
int MinorVersion() { return CORVALTA_VERSION_MINOR; }
int BugVersion() { return CORVALTA_VERSION_PATCH; }

}  // namespace corvalta::platform::app_info
