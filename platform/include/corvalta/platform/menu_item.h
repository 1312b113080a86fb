#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace corvalta::platform {

// An item of the menu tree; a menu bar is the root item. A command reaches its handler
// through the item's Name alone (Application::addMenuHandler).
class MenuItem {
 public:
  explicit MenuItem(std::string name, std::string text = {});
  virtual ~MenuItem() = default;
  MenuItem(const MenuItem&) = delete;
  MenuItem& operator=(const MenuItem&) = delete;

  std::string Name;
  std::string Text;
  std::string KeyboardShortcut;
  bool Checked = false;
  bool Enabled = true;
  bool Visible = true;
  bool AutoEnable = true;

  void Append(std::shared_ptr<MenuItem> item);
  [[nodiscard]] std::size_t Count() const { return children_.size(); }
  [[nodiscard]] MenuItem* Item(std::size_t index) const;
  // A direct child of that name, or nullptr.
  [[nodiscard]] MenuItem* Child(std::string_view name) const;
  // An item of that name anywhere below, or nullptr.
  [[nodiscard]] MenuItem* Lookup(std::string_view name) const;

 private:
  std::vector<std::shared_ptr<MenuItem>> children_;
};

}  // namespace corvalta::platform
