// The script commands that act as the user and move the clock. The command table lives here,
// so that every program that runs a script links these commands with it.
#include <corvalta/platform/headless/script.h>
#include <corvalta/platform/user_input.h>

#include <QString>

#include <charconv>
#include <chrono>
#include <sstream>
#include <stdexcept>

namespace corvalta::platform::headless {

std::map<std::string, CommandEntry, std::less<>>& commandTable() {
  static std::map<std::string, CommandEntry, std::less<>> table;
  return table;
}

CommandRegistration::CommandRegistration(std::string name, std::string usage, Command run) {
  commandTable()[std::move(name)] = {std::move(usage), std::move(run)};
}

namespace {

using platform::Dispatcher;

struct Target {
  std::string window;
  std::string control;
};

// "Window.Control", or a bare control of the modal window that is up, else of Window1.
Target target(Script& session, const std::string& text) {
  if (text.empty()) throw std::invalid_argument("a control is missing");
  const auto dot = text.find('.');
  if (dot != std::string::npos) return {text.substr(0, dot), text.substr(dot + 1)};
  std::string window = "Window1";
  for (platform::Window* open : session.app().windows()) {
    if (open->isModal()) window = open->className();
  }
  return {window, text};
}

// The first word and the rest of the line after one blank.
std::pair<std::string, std::string> firstWord(const std::string& arguments) {
  const auto blank = arguments.find(' ');
  if (blank == std::string::npos) return {arguments, ""};
  return {arguments.substr(0, blank), arguments.substr(blank + 1)};
}

std::int64_t number(const std::string& text) {
  std::int64_t value = 0;
  const auto* end = text.data() + text.size();
  const auto result = std::from_chars(text.data(), end, value);
  if (result.ec != std::errc() || result.ptr != end) throw std::invalid_argument("not a number: " + text);
  return value;
}

void report(Script& session, const std::string& what, Dispatcher::Delivery delivery) {
  if (delivery == Dispatcher::Delivery::Held) session.note(what + " held until the running handler returns");
  if (delivery == Dispatcher::Delivery::Refused) session.note(what + " refused: a modal window is up");
}

const CommandRegistration press("press", "press [WINDOW.]CONTROL", [](Script& s, const std::string& a) {
  const Target t = target(s, a);
  report(s, "press " + a, platform::pressControl(s.app(), t.window, t.control));
});

const CommandRegistration type("type", "type [WINDOW.]FIELD TEXT (the rest of the line; none empties)",
                               [](Script& s, const std::string& a) {
  const auto [field, text] = firstWord(a);
  const Target t = target(s, field);
  // Composed as the desktop view hands typing over (NFC).
  const std::string composed = QString::fromStdString(text).normalized(QString::NormalizationForm_C).toStdString();
  report(s, "type " + field, platform::typeText(s.app(), t.window, t.control, composed));
});

const CommandRegistration key("key", "key Return [WINDOW]", [](Script& s, const std::string& a) {
  const auto [name, window] = firstWord(a);
  if (name != "Return") throw std::invalid_argument("only the Return key is known");
  const std::string w = window.empty() ? target(s, "x").window : window;
  report(s, "key Return", platform::pressReturn(s.app(), w));
});

const CommandRegistration edit("edit", "edit [WINDOW.]LIST ROW COLUMN TEXT",
                               [](Script& s, const std::string& a) {
  std::istringstream in(a);
  std::string list, row, column;
  in >> list >> row >> column;
  std::string text;
  std::getline(in >> std::ws, text);
  const Target t = target(s, list);
  report(s, "edit " + list,
         platform::editCell(s.app(), t.window, t.control, static_cast<std::int32_t>(number(row)),
                            static_cast<std::int32_t>(number(column)), text));
});

const CommandRegistration close("close", "close WINDOW", [](Script& s, const std::string& a) {
  report(s, "close " + a, platform::closeWindow(s.app(), a));
});

const CommandRegistration menu("menu", "menu ITEM (SoundSoundOn, ...)", [](Script& s, const std::string& a) {
  if (!s.app().hasMenuHandler(a)) throw std::invalid_argument("no command for menu item " + a);
  report(s, "menu " + a, platform::chooseMenuItem(s.app(), a));
});

const CommandRegistration advance("advance", "advance MILLISECONDS", [](Script& s, const std::string& a) {
  const std::int64_t span = number(a);
  if (span < 0) throw std::invalid_argument("time runs forward only");
  s.services().loop.advanceBy(std::chrono::milliseconds(span));
});

const CommandRegistration answer("answer", "answer BUTTON (for the next dialog: OK, Cancel, Yes, Action, ...)",
                                 [](Script& s, const std::string& a) {
  if (a.empty()) throw std::invalid_argument("a button is missing");
  s.services().dialogs.queueAnswer(a);
});

const CommandRegistration queue("queue", "queue N [N ...] (the next random draws)",
                                [](Script& s, const std::string& a) {
  std::istringstream in(a);
  std::string word;
  std::vector<std::int32_t> values;
  while (in >> word) {
    const std::int64_t value = number(word);
    if (value < INT32_MIN || value > INT32_MAX) throw std::invalid_argument("out of range: " + word);
    values.push_back(static_cast<std::int32_t>(value));
  }
  if (values.empty()) throw std::invalid_argument("no values");
  for (std::int32_t value : values) s.services().random->queue(value);
});

}  // namespace
}  // namespace corvalta::platform::headless
