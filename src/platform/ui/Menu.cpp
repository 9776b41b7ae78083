#include "platform/ui/Menu.h"

#include <utility>

#include "platform/text/Exceptions.h"

namespace vintrace {

MenuItem::MenuItem(String name, String text, String keyboardShortcut)
    : name_(std::move(name)),
      text_(std::move(text)),
      keyboardShortcut_(std::move(keyboardShortcut)) {}

MenuItem* MenuItem::Find(std::string_view name) {
  if (name_ == name) return this;
  for (const auto& item : items_) {
    if (MenuItem* found = item->Find(name)) return found;
  }
  return nullptr;
}

void MenuItem::_Reset(const HandlerTest& hasHandler) {
  enabled_ = !items_.empty() || (AutoEnable && hasHandler(name_));
  for (const auto& item : items_) item->_Reset(hasHandler);
}

void MenuBar::_Reset(const HandlerTest& hasHandler) {
  for (const auto& menu : menus_) menu->_Reset(hasHandler);
}

MenuItem* MenuBar::Find(std::string_view name) const {
  for (const auto& menu : menus_) {
    if (MenuItem* found = menu->Find(name)) return found;
  }
  return nullptr;
}

void MenuBar::RaiseNil(std::string_view name) { throw NilObjectException(String(name)); }

}  // namespace vintrace
