#include "platform/ui/WindowList.h"

#include <utility>

#include "platform/ui/Window.h"

namespace vintrace {

std::shared_ptr<Window> WindowList::At(int index) const {
  return index >= 0 && index < Count() ? windows_[static_cast<std::size_t>(index)] : nullptr;
}

void WindowList::BringToFront(std::shared_ptr<Window> window) {
  Remove(*window);
  windows_.insert(windows_.begin(), std::move(window));
}

void WindowList::Remove(const Window& window) {
  std::erase_if(windows_, [&](const auto& listed) { return listed.get() == &window; });
}

}  // namespace vintrace
