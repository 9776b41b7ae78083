#pragma once

#include <memory>
#include <vector>

namespace vintrace {

class Window;

/// Owns the open windows, from front to back. The front window is the one activated last, whatever
/// its `Frame`.
class WindowList {
 public:
  int Count() const { return static_cast<int>(windows_.size()); }

  /// The window at the 0-based position `index` from the front; nil if there is none.
  std::shared_ptr<Window> At(int index) const;

  /// Moves `window` to the front; adds it if it isn't in the list.
  void BringToFront(std::shared_ptr<Window> window);

  /// Removes `window`; the others keep their order.
  void Remove(const Window& window);

 private:
  std::vector<std::shared_ptr<Window>> windows_;
};

}  // namespace vintrace
