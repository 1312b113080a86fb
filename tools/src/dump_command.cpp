// The dump command: the view state, Module1 and what the services logged, as one JSON line.
#include <corvalta/core/module1.h>
#include <corvalta/platform/controls.h>
#include <corvalta/platform/timer.h>
#include <corvalta/platform/headless/script.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <ostream>

namespace corvalta::tools {
namespace {

using platform::headless::CommandRegistration;

QString text(const std::string& s) { return QString::fromUtf8(s.data(), static_cast<qsizetype>(s.size())); }

QJsonValue json(const platform::PropertyValue& value) {
  return std::visit(
      [](const auto& v) -> QJsonValue {
        using T = std::decay_t<decltype(v)>;
        if constexpr (std::is_same_v<T, std::string>) {
          return text(v);
        } else if constexpr (std::is_same_v<T, platform::Color>) {
          return QString::asprintf("%02X%02X%02X", v.red, v.green, v.blue);
        } else {
          return v;
        }
      },
      value);
}

QJsonObject json(const platform::PropertyList& properties) {
  QJsonObject object;
  for (const auto& [name, value] : properties) object.insert(text(name), json(value));
  return object;
}

QJsonObject json(const platform::PaneChild& child) {
  QJsonObject object{{"name", text(child.key())}, {"class", text(child.className())},
                     {"properties", json(child.properties())}};
  if (const auto* list = dynamic_cast<const platform::Listbox*>(&child)) {
    QJsonArray rows;
    for (const auto& row : list->rows()) {
      QJsonArray cells;
      for (const auto& cell : row) cells.append(text(cell));
      rows.append(cells);
    }
    object.insert("rows", rows);
  }
  return object;
}

QJsonObject json(const platform::Window& window) {
  QJsonArray controls;
  for (const auto* child : window.controls()) controls.append(json(*child));
  const auto* focus = window.focus();
  return {{"class", text(window.className())},
          {"modal", window.isModal()},
          {"focus", focus != nullptr ? QJsonValue(text(focus->key())) : QJsonValue()},
          {"properties", json(window.properties())},
          {"controls", controls}};
}

QJsonObject module1() {
  const auto& m = core::Module1;
  return {{"SoundFlag", m.SoundFlag}, {"High", m.High}, {"Difficulty", text(m.Difficulty)},
          {"First", m.First}, {"Second", m.Second}, {"Third", m.Third}, {"Temp", m.Temp},
          {"RandomOp1", m.RandomOp1}, {"RandomOp2", m.RandomOp2}, {"X", m.X}, {"Y", m.Y},
          {"MyAnswer", m.MyAnswer}, {"HisAnswer", m.HisAnswer}, {"Points", m.Points},
          {"Seconds", m.Seconds}, {"NewHighScoreFlag", m.NewHighScoreFlag}, {"Name", text(m.Name)}};
}

const CommandRegistration dump("dump", "dump", [](platform::headless::Script& s, const std::string&) {
  auto& services = s.services();
  QJsonArray windows;
  for (const auto* window : s.app().windows()) windows.append(json(*window));
  QJsonArray sounds;
  for (const auto& played : services.sounds.played()) {
    sounds.append(QJsonObject{{"number", played.number},
                              {"start", static_cast<qint64>(played.start.count())},
                              {"end", static_cast<qint64>(played.end.count())}});
  }
  QJsonArray dialogs;
  for (const auto& shown : services.dialogs.shown()) {
    dialogs.append(QJsonObject{{"title", text(shown.title)}, {"text", text(shown.text)}, {"answer", text(shown.answer)}});
  }
  QJsonArray urls;
  for (const auto& url : services.urls.opened()) urls.append(text(url));
  QJsonArray beeps;
  for (const auto& beep : services.sounds.beeps()) beeps.append(static_cast<qint64>(beep.count()));
  const QJsonObject state{{"time", static_cast<qint64>(services.loop.elapsed().count())},
                          {"windows", windows},
                          {"Module1", module1()},
                          {"sounds", sounds},
                          {"dialogs", dialogs},
                          {"urls", urls},
                          {"beeps", beeps}};
  s.out() << QJsonDocument(state).toJson(QJsonDocument::Compact).toStdString() << '\n';
});

}  // namespace
}  // namespace corvalta::tools
