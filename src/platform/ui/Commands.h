#pragma once

#include <functional>
#include <map>
#include <string_view>

#include "platform/text/String.h"

namespace vintrace {

class MenuItem;

/// Runs a command. The result is ignored; handlers return false.
using MenuHandler = std::function<bool()>;

/// An object that enables menu items and handles the commands of some of them.
class CommandTarget {
 public:
  CommandTarget() = default;
  CommandTarget(const CommandTarget&) = delete;
  CommandTarget& operator=(const CommandTarget&) = delete;
  virtual ~CommandTarget() = default;

  /// Binds `handler` to the menu items with that name. Replaces a handler bound before.
  void AddMenuHandler(std::string_view itemName, MenuHandler handler);
  /// The handler bound to that name; nil if there is none.
  const MenuHandler* MenuHandlerOf(std::string_view itemName) const;

  /// Raises the event in which this target enables its menu items.
  void RaiseEnableMenuItems();

 protected:
  virtual void Event_EnableMenuItems() {}

 private:
  std::map<String, MenuHandler, std::less<>> handlers_;
};

/// Updates the application's menu bar: resets each item's state by `AutoEnable` and the handlers of
/// the front window and the application, then raises `EnableMenuItems` on both, which may enable
/// more.
void UpdateMenuItems();

/// Runs the command of `item`, which the user chose in the application's menu bar. Updates the menu
/// bar first, and does nothing if `item` is disabled then. Otherwise calls the handler of the front
/// window or, if that has none, of the application, under the top-level exception handler. A
/// `QuitMenuItem` quits the program instead.
void ChooseMenuItem(const MenuItem& item);

}  // namespace vintrace
