#include "platform/ui/Commands.h"

#include <utility>

#include "platform/text/Exceptions.h"
#include "platform/ui/Host.h"
#include "platform/ui/Menu.h"
#include "platform/ui/Window.h"

namespace vintrace {
namespace {

/// The handler for the item `itemName`; nil if there is none. `front`: the front window, or nil.
const MenuHandler* HandlerOf(std::string_view itemName, const Window* front) {
  const MenuHandler* handler = front != nullptr ? front->MenuHandlerOf(itemName) : nullptr;
  return handler != nullptr ? handler : Host::Current().Application().MenuHandlerOf(itemName);
}

}  // namespace

void CommandTarget::AddMenuHandler(std::string_view itemName, MenuHandler handler) {
  handlers_.insert_or_assign(String(itemName), std::move(handler));
}

const MenuHandler* CommandTarget::MenuHandlerOf(std::string_view itemName) const {
  const auto found = handlers_.find(itemName);
  return found == handlers_.end() ? nullptr : &found->second;
}

void CommandTarget::RaiseEnableMenuItems() {
  _RuntimeCall([this] { Event_EnableMenuItems(); });
}

void UpdateMenuItems() {
  Application& application = Host::Current().Application();
  if (!application.MenuBar()) return;
  const auto front = Host::Current().Windows().At(0);
  application.MenuBar()->_Reset(
      [&](std::string_view name) { return HandlerOf(name, front.get()) != nullptr; });
  application.RaiseEnableMenuItems();
  if (front) front->RaiseEnableMenuItems();
}

void ChooseMenuItem(const MenuItem& item) {
  UpdateMenuItems();
  if (!item.Enabled()) return;
  if (dynamic_cast<const QuitMenuItem*>(&item) != nullptr)
    return Host::Current().Quit(Host::NormalEnd);
  const auto front = Host::Current().Windows().At(0);  // Keeps the window alive.
  const MenuHandler* handler = HandlerOf(item.Name(), front.get());
  if (handler != nullptr) _RuntimeCall([=] { (*handler)(); });
}

}  // namespace vintrace
