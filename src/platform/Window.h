#pragma once

#include <cassert>
#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

#include "platform/Control.h"
#include "platform/String.h"

namespace vintrace {

/// What a layout fixes of a window before it is shown. Sizes are those of the content, in pixels.
struct WindowDesign {
  int width = 0;
  int height = 0;
  int minWidth = 0;
  int minHeight = 0;
  int maxWidth = 32000;
  int maxHeight = 32000;
  bool closeButton = true;
  bool resizeable = true;
  bool maximizeButton = false;
  bool minimizeButton = false;
};

/// A window: its properties and its controls, which it owns in the order of their creation. It
/// knows nothing of a screen; the host shows it. An open window is owned by the window list, and
/// one that is closed while a handler of its own runs lives until the handler returns.
class Window : public std::enable_shared_from_this<Window> {
 public:
  Window() = default;
  Window(const Window&) = delete;
  Window& operator=(const Window&) = delete;
  virtual ~Window() = default;

  /// Makes a window of class `W`, lays it out, puts it in front of the window list and has it
  /// shown.
  template <class W>
  static std::shared_ptr<W> New() {
    auto window = std::make_shared<W>();
    Open(window);
    return window;
  }

  const WindowDesign& Design() const { return design_; }

  /// Any bytes; they are given back as they were set.
  const String& Title() const { return title_; }
  void SetTitle(String title);

  /// The controls in creation order.
  const std::vector<std::unique_ptr<RectControl>>& Controls() const { return controls_; }
  /// The control of that 0-based index in creation order; nil if there is none.
  RectControl* Control(int index) const;

  /// True from the end of its layout until `Close`.
  bool IsOpen() const { return open_; }
  /// Takes the window off the screen and out of the window list. A second call does nothing.
  void Close();

 protected:
  /// Sets the properties of `design_` and what else the window has before its controls.
  virtual void Layout() = 0;
  virtual void CreateControls() = 0;
  virtual void AddMenuHandlers() {}
  /// The window is complete and about to be shown. One that closes itself here never is.
  virtual void Event_Open() {}

  template <class ControlClass>
  ControlClass& Add(const ControlDesign& design) {
    auto control = std::make_unique<ControlClass>(*this, design);
    ControlClass& added = *control;
    controls_.push_back(std::move(control));
    return added;
  }

  /// The control at a place where a `ControlClass` was added.
  template <class ControlClass>
  ControlClass& ControlAt(std::size_t index) const {
    auto& control = *controls_.at(index);
    assert(dynamic_cast<ControlClass*>(&control) != nullptr);
    return static_cast<ControlClass&>(control);
  }

  WindowDesign design_;

 private:
  static void Open(const std::shared_ptr<Window>& window);

  String title_;
  std::vector<std::unique_ptr<RectControl>> controls_;
  bool open_ = false;
};

}  // namespace vintrace
