#include "spoken_name.h"

#include "control_widgets.h"

#include <corvalta/platform/record_names.h>
#include <corvalta/platform/window.h>

#include <QRect>

#include <algorithm>
#include <optional>

namespace corvalta::platform::qt {
namespace {

// How far a label may stand from the control it names.
constexpr int labelReach = 20;

std::int32_t number(const PaneChild& child, std::string_view name) {
  return valueOr(child.property(name), std::int32_t{0});
}

QRect placeOf(const PaneChild& child) {
  return {number(child, property::Left), number(child, property::Top), number(child, property::Width), number(child, property::Height)};
}

// A label's words: "Name:" names a field "Name"; a label of signs or digits alone ("+", "0")
// names nothing.
QString wordsOf(const PaneChild& label) {
  if (label.className() != record_class::StaticText || !valueOr(label.property(property::Visible), true)) {
    return {};
  }
  auto words = toDisplayText(valueOr<std::string>(label.property(property::Text), {})).simplified();
  while (words.endsWith(':')) words.chop(1);
  return std::any_of(words.begin(), words.end(), [](QChar c) { return c.isLetter(); }) ? words : QString();
}

// How far `label` stands before `control`: to its left on a line that they share, or above
// it over a stretch that they share; nothing when it stands elsewhere.
std::optional<int> distanceBefore(const QRect& label, const QRect& control) {
  const bool sameLine = label.top() <= control.bottom() && control.top() <= label.bottom();
  const bool sameColumn = label.left() <= control.right() && control.left() <= label.right();
  if (sameLine && label.center().x() < control.left()) {
    return std::max(control.left() - label.right() - 1, 0);
  }
  if (sameColumn && label.center().y() < control.top()) {
    return std::max(control.top() - label.bottom() - 1, 0);
  }
  return std::nullopt;
}

QString nearestLabel(const Window& window, const PaneChild& control) {
  const QRect place = placeOf(control);
  QString found;
  int nearest = labelReach + 1;
  for (const PaneChild* other : window.controls()) {
    const auto words = other != &control ? wordsOf(*other) : QString();
    const auto distance = words.isEmpty() ? std::nullopt : distanceBefore(placeOf(*other), place);
    if (distance && *distance < nearest) {
      nearest = *distance;
      found = words;
    }
  }
  return found;
}

// "SubAnswer1" as "Sub Answer 1": a word starts at a capital after a small letter and at a
// digit after a letter. Not a QRegularExpression: the main window names its fields at start-up,
// and compiling one touches a third of a megabyte of PCRE2.
QString inWords(const std::string& name) {
  const auto small = [](char c) { return c >= 'a' && c <= 'z'; };
  const auto capital = [](char c) { return c >= 'A' && c <= 'Z'; };
  const auto digit = [](char c) { return c >= '0' && c <= '9'; };
  std::string words;
  char previous = '\0';
  for (const char c : name) {
    if ((small(previous) && capital(c)) || ((small(previous) || capital(previous)) && digit(c))) {
      words += ' ';
    }
    words += c;
    previous = c;
  }
  return QString::fromStdString(words);
}

bool isNumberedClassName(const PaneChild& control) {
  const auto& name = control.key();
  const auto& className = control.className();
  return name.size() > className.size() && name.compare(0, className.size(), className) == 0 &&
         std::all_of(name.begin() + static_cast<std::ptrdiff_t>(className.size()), name.end(),
                     [](char c) { return c >= '0' && c <= '9'; });
}

}  // namespace

QString spokenName(const Window& window, const PaneChild& control) {
  const auto& className = control.className();
  if (className != record_class::EditField && className != record_class::Listbox && className != record_class::ProgressBar) {
    return {};
  }
  if (auto label = nearestLabel(window, control); !label.isEmpty()) {
    return label;
  }
  return inWords(isNumberedClassName(control) ? window.className() : control.key());
}

}  // namespace corvalta::platform::qt
