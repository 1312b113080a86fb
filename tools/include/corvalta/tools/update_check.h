#pragma once

#include <string>

namespace corvalta::tools {

class Session;

// Registers selfTest, updateWindow and "Check Now" with the session's application, the check
// fetching `manifestURL` over real sockets. Registering again points later checks elsewhere.
void installUpdateCheck(Session& session, std::string manifestURL);

}  // namespace corvalta::tools
