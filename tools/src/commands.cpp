#include <corvalta/tools/commands.h>

namespace corvalta::tools {

std::map<std::string, CommandEntry, std::less<>>& commandTable() {
  static std::map<std::string, CommandEntry, std::less<>> table;
  return table;
}

CommandRegistration::CommandRegistration(std::string name, std::string usage, Command run) {
  commandTable()[std::move(name)] = {std::move(usage), std::move(run)};
}

}  // namespace corvalta::tools
