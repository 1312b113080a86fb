#include <corvalta/platform/menu_item.h>

namespace corvalta::platform {

MenuItem::MenuItem(std::string name, std::string text) : Name(std::move(name)), Text(std::move(text)) {}

void MenuItem::Append(std::shared_ptr<MenuItem> item) { children_.push_back(std::move(item)); }

MenuItem* MenuItem::Item(std::size_t index) const {
  return index < children_.size() ? children_[index].get() : nullptr;
}

MenuItem* MenuItem::Child(std::string_view name) const {
  for (const auto& child : children_) {
    if (child->Name == name) return child.get();
  }
  return nullptr;
}

MenuItem* MenuItem::Lookup(std::string_view name) const {
  for (const auto& child : children_) {
    if (child->Name == name) return child.get();
    if (MenuItem* found = child->Lookup(name)) return found;
  }
  return nullptr;
}

}  // namespace corvalta::platform
