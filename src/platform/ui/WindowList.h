#pragma once

#include <memory>
#include <vector>

namespace vintrace {

class Window;

/// The open windows, front to back: the last activated stands first, whatever its frame. It owns
/// them.
class WindowList {
 public:
  int Count() const { return static_cast<int>(windows_.size()); }

  /// The window at the 0-based place `index` from the front; nil if there is none.
  std::shared_ptr<Window> At(int index) const;

  /// Puts `window` first, where it joins the list if it isn't in it.
  void BringToFront(std::shared_ptr<Window> window);

  /// Takes `window` out; the others keep their order.
  void Remove(const Window& window);

 private:
  std::vector<std::shared_ptr<Window>> windows_;
};

}  // namespace vintrace
