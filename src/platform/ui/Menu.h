#pragma once

#include <memory>
#include <string_view>
#include <vector>

#include "platform/text/String.h"

namespace vintrace {

/// An item of a menu bar: a menu, which has items of its own, or what a user chooses in one. Its
/// name is the handle by which it is found and handlers are bound.
class MenuItem {
 public:
  /// `text`: "-" makes it a separator. `keyboardShortcut`: keys joined by "+", the last a letter;
  /// "Cmd" stands for the platform's command key (Control where there is none) and "Option" for
  /// Alt; such as "Cmd+Option+C". Empty for none.
  MenuItem(String name, String text, String keyboardShortcut);
  MenuItem(const MenuItem&) = delete;
  MenuItem& operator=(const MenuItem&) = delete;
  virtual ~MenuItem() = default;

  const String& Name() const { return name_; }
  const String& Text() const { return text_; }
  const String& KeyboardShortcut() const { return keyboardShortcut_; }
  bool IsSeparator() const { return text_ == "-"; }

  /// An item can be chosen when a handler enabled it as the menus were last brought up to date.
  bool Enabled() const { return enabled_; }
  void Enable() { enabled_ = true; }

  /// Adds `item` behind the others.
  void Append(std::unique_ptr<MenuItem> item) { items_.push_back(std::move(item)); }
  const std::vector<std::unique_ptr<MenuItem>>& Items() const { return items_; }
  /// This item, or the one below it, of that name; nil if there is none.
  MenuItem* Find(std::string_view name);

  /// Makes this item and all below it what they are before any handler has enabled them.
  virtual void _Reset();

 private:
  String name_;
  String text_;
  String keyboardShortcut_;
  std::vector<std::unique_ptr<MenuItem>> items_;
  bool enabled_ = false;
};

/// Quits the application, without a handler and at any time. It stands where the platform keeps its
/// quit item.
class QuitMenuItem : public MenuItem {
 public:
  using MenuItem::MenuItem;
  void _Reset() override { Enable(); }
};

/// An item about the application itself. It stands in the application's own menu where the platform
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

  /// Adds `menu` behind the others.
  void Append(std::unique_ptr<MenuItem> menu) { menus_.push_back(std::move(menu)); }
  const std::vector<std::unique_ptr<MenuItem>>& Menus() const { return menus_; }

  /// The menu or item of that name. Raises `NilObjectException` when there is none, or when it is
  /// of another class than `ItemClass`.
  template <class ItemClass = MenuItem>
  ItemClass& Item(std::string_view name) const {
    auto* item = dynamic_cast<ItemClass*>(Find(name));
    if (item == nullptr) RaiseNil(name);
    return *item;
  }

  /// Makes all items what they are before any handler has enabled them.
  void _Reset();

 private:
  MenuItem* Find(std::string_view name) const;
  [[noreturn]] static void RaiseNil(std::string_view name);

  std::vector<std::unique_ptr<MenuItem>> menus_;
};

}  // namespace vintrace
