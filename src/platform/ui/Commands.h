#pragma once

#include <functional>
#include <map>
#include <string_view>

#include "platform/text/String.h"

namespace vintrace {

class MenuItem;

/// Runs a command. The result has no meaning yet; handlers give false.
using MenuHandler = std::function<bool()>;

/// What commands go to: it enables menu items, and has handlers of some of them.
class CommandTarget {
 public:
  CommandTarget() = default;
  CommandTarget(const CommandTarget&) = delete;
  CommandTarget& operator=(const CommandTarget&) = delete;
  virtual ~CommandTarget() = default;

  /// Binds `handler` to the items of that name; the last one bound counts.
  void AddMenuHandler(std::string_view itemName, MenuHandler handler);
  /// Nil when none is bound to that name.
  const MenuHandler* MenuHandlerOf(std::string_view itemName) const;

  /// Has the items enabled that can be chosen with this target.
  void RaiseEnableMenuItems();

 protected:
  virtual void Event_EnableMenuItems() {}

 private:
  std::map<String, MenuHandler, std::less<>> handlers_;
};

/// Brings the items of the application's menu bar up to date: those are enabled that the
/// application or the front window enables.
void UpdateMenuItems();

/// The user has chosen `item` of the application's menu bar. Brings the items up to date; if this
/// one is enabled then, its command goes to the handler of the front window, to that of the
/// application when the window has none, and nowhere when neither has one. Handlers run as the
/// desktop's callbacks run.
void ChooseMenuItem(const MenuItem& item);

}  // namespace vintrace
