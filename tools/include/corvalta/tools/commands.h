#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>

namespace corvalta::tools {

class Session;

// A command of the driver's script: the rest of the line after the command's name, with the
// blank after the name taken off. A command reports a fault by throwing std::exception.
using Command = std::function<void(Session&, const std::string& arguments)>;

struct CommandEntry {
  std::string usage;
  Command run;
};

// Every command, by name. A file of commands adds its own with CommandRegistration objects
// at namespace scope; no central list names them.
[[nodiscard]] std::map<std::string, CommandEntry, std::less<>>& commandTable();

struct CommandRegistration {
  CommandRegistration(std::string name, std::string usage, Command run);
};

}  // namespace corvalta::tools
