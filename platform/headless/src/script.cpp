#include <corvalta/platform/headless/script.h>

#include <istream>
#include <ostream>

namespace corvalta::platform::headless {

Script::Script(Application& app, HeadlessServices& services, std::ostream& out, std::ostream& err)
    : app_(app), services_(services), out_(out), err_(err) {
  services_.loop.setInputSource([this] { return runNextLine(); });
}

Script::~Script() { services_.loop.setInputSource({}); }

int Script::run(std::istream& script) {
  std::istream* outer = script_;
  script_ = &script;
  while (runNextLine()) {
  }
  script_ = outer;
  return failures_;
}

bool Script::runNextLine() {
  if (script_ == nullptr || app_.quitRequested()) return false;
  std::string line;
  if (!std::getline(*script_, line)) return false;
  ++lineNumber_;
  runLine(line);
  return true;
}

void Script::runLine(const std::string& line) {
  const auto start = line.find_first_not_of(" \t\r");
  if (start == std::string::npos || line[start] == '#') return;
  const auto end = line.find_first_of(" \t\r", start);
  const std::string name = line.substr(start, end == std::string::npos ? end : end - start);
  std::string arguments = end == std::string::npos ? "" : line.substr(end + 1);
  if (!arguments.empty() && arguments.back() == '\r') arguments.pop_back();
  const auto found = commandTable().find(name);
  if (found == commandTable().end()) {
    fail("unknown command " + name);
    return;
  }
  try {
    found->second.run(*this, arguments);
  } catch (const std::exception& e) {
    fail(name + ": " + e.what() + " (usage: " + found->second.usage + ")");
  }
}

void Script::fail(const std::string& message) {
  ++failures_;
  err_ << "error: line " << lineNumber_ << ": " << message << '\n';
}

void Script::note(const std::string& message) {
  err_ << "note: line " << lineNumber_ << ": " << message << '\n';
}

}  // namespace corvalta::platform::headless
