#include <corvalta/platform/application.h>
#include <corvalta/platform/controls.h>
#include <corvalta/platform/record_names.h>
#include <corvalta/platform/window.h>


namespace corvalta::platform {

Window::Window(std::string className)
    : className_(std::move(className)), application_(Application::current()) {}

Window::~Window() {
  for (auto& child : children_) child->attach(nullptr, child->key());
}

const PropertyValue* Window::property(std::string_view name) const {
  return findProperty(properties_, name);
}

void Window::setProperty(std::string_view name, PropertyValue value) {
  if (!assignProperty(properties_, name, std::move(value))) return;
  application_.observer().windowPropertyChanged(*this, name);
}

std::string Window::Title() const { return valueOr<std::string>(property(property::Title), {}); }

bool Window::Visible() const { return valueOr(property(property::Visible), false); }

void Window::build(const WindowPlan& plan) {
  for (const auto& [name, value] : plan.properties) setProperty(name, value);
  for (const auto& controlPlan : plan.controls) {
    std::unique_ptr<PaneChild> child = makePaneChild(controlPlan.className);
    if (child == nullptr) child = makeChild(controlPlan.className);
    if (child == nullptr) {
      throw NilObjectException("no control class " + controlPlan.className + " for " +
                               controlPlan.name);
    }
    PaneChild& added = addControl(controlPlan.name, std::move(child));
    added.applyProperties(controlPlan.properties);
    for (const auto& event : controlPlan.events) {
      Handler handler = handlerFor(controlPlan.name, event);
      if (!handler) {
        throw NilObjectException(className_ + " has no handler for " + controlPlan.name + "." + event);
      }
      added.installHandler(event, std::move(handler));
    }
  }
}

PaneChild& Window::addControl(std::string name, std::unique_ptr<PaneChild> child) {
  child->attach(this, std::move(name));
  order_.push_back(child.get());
  children_.push_back(std::move(child));
  return *children_.back();
}

PaneChild* Window::controlByName(std::string_view name) const {
  for (PaneChild* child : order_) {
    if (child->key() == name) return child;
  }
  return nullptr;
}

void Window::SetFocus() { setFocusControl(nullptr); }

void Window::setFocusControl(Control* control) {
  if (focus_ == control) return;
  focus_ = control;
  application_.observer().focusChanged(*this);
}

void Window::Show() {
  if (closed_) return;
  setProperty(property::Visible, true);
  application_.observer().windowShown(*this, false);
}

void Window::ShowModal() {
  if (closed_) return;
  setProperty(property::Visible, true);
  modal_ = true;
  application_.observer().windowShown(*this, true);
  application_.dispatcher().waitUntil([this] { return closed_ || !Visible(); },
                                      {.deliverInput = true, .deadline = std::nullopt},
                                      className_);
  modal_ = false;
}

void Window::Hide() {
  if (closed_ || !Visible()) return;
  setProperty(property::Visible, false);
  application_.observer().windowHidden(*this);
  application_.loop().wake();
}

void Window::Close() {
  if (closed_) return;
  closed_ = true;
  Event_Close();
  application_.observer().windowClosing(*this);
  for (PaneChild* child : order_) child->closing();
  // A closed window holds no controls: a late look-up finds nothing.
  order_.clear();
  focus_ = nullptr;
  // Outside any handler the application frees this window at once, members and all.
  Application& application = application_;
  application.windowClosed(*this);
  application.loop().wake();
}

Control* Window::defaultButton() const {
  for (PaneChild* child : order_) {
    auto* button = dynamic_cast<PushButton*>(child);
    if (button != nullptr && button->Default() && button->acceptsInput()) return button;
  }
  return nullptr;
}

Handler Window::handlerFor(std::string_view /*control*/, std::string_view /*event*/) { return {}; }

std::unique_ptr<PaneChild> Window::makeChild(std::string_view /*className*/) { return nullptr; }

void Window::open() {
  for (PaneChild* child : order_) child->raise("Open");
  Event_Open();
}

}  // namespace corvalta::platform
