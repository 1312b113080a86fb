#include <corvalta/platform/application.h>
#include <corvalta/platform/pane_child.h>
#include <corvalta/platform/window.h>


namespace corvalta::platform {

PaneChild::PaneChild(std::string className) : className_(std::move(className)) {}

PaneChild::~PaneChild() = default;

const PropertyValue* PaneChild::property(std::string_view name) const {
  return findProperty(properties_, name);
}

void PaneChild::setProperty(std::string_view name, PropertyValue value) {
  if (!assignProperty(properties_, name, std::move(value))) return;
  propertyChanged(name);
  if (window_ != nullptr) window_->application().observer().propertyChanged(*this, name);
}

void PaneChild::applyProperties(const PropertyList& properties) {
  for (const auto& [name, value] : properties) setProperty(name, value);
}

void PaneChild::installHandler(std::string event, Handler handler) {
  handlers_[std::move(event)] = std::move(handler);
}

void PaneChild::installHandler(std::string event, std::function<void()> handler) {
  installHandler(std::move(event), Handler([handler = std::move(handler)](const EventArgs&) { handler(); }));
}

bool PaneChild::hasHandler(std::string_view event) const {
  return handlers_.find(event) != handlers_.end();
}

void PaneChild::raise(std::string_view event, const EventArgs& args) {
  const auto found = handlers_.find(event);
  if (found == handlers_.end()) return;
  // The handler may replace itself; run a copy.
  const Handler handler = found->second;
  handler(args);
}

bool PaneChild::boolProperty(std::string_view name, bool fallback) const {
  return valueOr(property(name), fallback);
}

std::int32_t PaneChild::intProperty(std::string_view name, std::int32_t fallback) const {
  return valueOr(property(name), fallback);
}

std::string PaneChild::textProperty(std::string_view name) const {
  return valueOr<std::string>(property(name), {});
}

void PaneChild::attach(Window* window, std::string key) {
  window_ = window;
  key_ = std::move(key);
}

}  // namespace corvalta::platform
