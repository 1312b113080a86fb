#pragma once

#include <string>

namespace corvalta::tools {

class Session;

// Registers "Check Now", selfTest (with the other windows of the shell) and updateWindow with
// the session's application, the check fetching `manifestURL` over real sockets. Installing
// again points later checks elsewhere.
void installUpdateCheck(Session& session, std::string manifestURL);

}  // namespace corvalta::tools
