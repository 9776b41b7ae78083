#pragma once

#include <functional>
#include <memory>
#include <string_view>
#include <vector>

#include "platform/text/String.h"

namespace vintrace {

/// True if there is a handler for the item with that name.
using HandlerTest = std::function<bool(std::string_view itemName)>;

/// A menu of a menu bar, with items of its own, or an item that the user can choose. Code refers to
/// it by its name.
class MenuItem {
 public:
  /// `text`: "-" makes a separator. `keyboardShortcut`: keys joined by "+", such as "Cmd+Option+C",
  /// or empty for none. "Cmd" is the platform's command key (Control where there is none), "Option"
  /// is Alt, and the last key is a letter.
  MenuItem(String name, String text, String keyboardShortcut);
  MenuItem(const MenuItem&) = delete;
  MenuItem& operator=(const MenuItem&) = delete;
  virtual ~MenuItem() = default;

  const String& Name() const { return name_; }
  const String& Text() const { return text_; }
  const String& KeyboardShortcut() const { return keyboardShortcut_; }
  bool IsSeparator() const { return text_ == "-"; }

  /// True: an update enables the item if a handler for it is found.
  bool AutoEnable = true;
  /// Whether the item is shown.
  bool Visible = true;

  /// True if the item could be chosen when the menu bar was last updated.
  bool Enabled() const { return enabled_; }
  void Enable() { enabled_ = true; }

  /// Adds `item` after the others.
  void Append(std::unique_ptr<MenuItem> item) { items_.push_back(std::move(item)); }
  const std::vector<std::unique_ptr<MenuItem>>& Items() const { return items_; }
  /// This item, or the first below it, with that name; nil if there is none.
  MenuItem* Find(std::string_view name);

  /// Starts an update of this item and all items below it: enables menus, quit items, and items
  /// with `AutoEnable` for whose names `hasHandler` is true, and disables the others.
  virtual void _Reset(const HandlerTest& hasHandler);

 private:
  String name_;
  String text_;
  String keyboardShortcut_;
  std::vector<std::unique_ptr<MenuItem>> items_;
  bool enabled_ = false;
};

/// Quits the application without a handler, and is always enabled. It is shown where the platform
/// has its quit item.
class QuitMenuItem : public MenuItem {
 public:
  using MenuItem::MenuItem;
  void _Reset(const HandlerTest& /*hasHandler*/) override { Enable(); }
};

/// An item about the application itself. It is shown in the application's own menu if the platform
/// has one.
class ApplicationMenuItem : public MenuItem {
 public:
  using MenuItem::MenuItem;
};

/// A menu bar, which owns its menus.
class MenuBar {
 public:
  MenuBar() = default;
  MenuBar(const MenuBar&) = delete;
  MenuBar& operator=(const MenuBar&) = delete;
  virtual ~MenuBar() = default;

  /// Adds `menu` after the others.
  void Append(std::unique_ptr<MenuItem> menu) { menus_.push_back(std::move(menu)); }
  const std::vector<std::unique_ptr<MenuItem>>& Menus() const { return menus_; }

  /// The menu or item with that name. Raises `NilObjectException` if there is none, or if it isn't
  /// an `ItemClass`.
  template <class ItemClass = MenuItem>
  ItemClass& Item(std::string_view name) const {
    auto* item = dynamic_cast<ItemClass*>(Find(name));
    if (item == nullptr) RaiseNil(name);
    return *item;
  }

  /// Calls `MenuItem::_Reset` for all menus.
  void _Reset(const HandlerTest& hasHandler);

 private:
  MenuItem* Find(std::string_view name) const;
  [[noreturn]] static void RaiseNil(std::string_view name);

  std::vector<std::unique_ptr<MenuItem>> menus_;
};

}  // namespace vintrace
