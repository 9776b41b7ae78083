#pragma once

#include <cassert>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "platform/text/String.h"
#include "platform/ui/Commands.h"
#include "platform/ui/Control.h"

namespace vintrace {

class MenuBar;

/// The kind of a window.
enum class Frame {
  Document,
  ModalDialog,     ///< While it is open, the application's other windows get no input.
  GlobalFloating,  ///< Stays above other windows, including those of other applications.
};

/// The initial position of a window.
enum class Placement {
  Default,  ///< Chosen by the desktop.
  CentreOfMainScreen,
};

/// The fixed properties of a window. Sizes are those of the content, in pixels. A modal dialog
/// can't be resized, and ignores the limits.
struct WindowDesign {
  int Width = 0;
  int Height = 0;
  int MinWidth = 0;
  int MinHeight = 0;
  int MaxWidth = 32000;
  int MaxHeight = 32000;
  vintrace::Frame Frame = vintrace::Frame::Document;
  vintrace::Placement Placement = vintrace::Placement::Default;
  bool CloseButton = true;
  bool Resizeable = true;
  bool MaximizeButton = false;
  bool MinimizeButton = false;
  bool HasBackColor = false;  ///< If false, the background has the host's default colour.
  Color BackColor = White;
};

/// A window with its properties and its controls, which it owns in creation order. It knows nothing
/// about screens; the host shows it. The window list owns it while it is open. A window that is
/// closed during one of its own handlers lives until the handler returns.
class Window : public CommandTarget, public std::enable_shared_from_this<Window> {
 public:
  /// Creates a window of class `W`, lays it out, puts it in front of the window list and shows it.
  /// Exceptions from its layout or its `Open` event pass through and leave no window.
  template <class W>
  static std::shared_ptr<W> New() {
    auto window = std::make_shared<W>();
    Open(window);
    return window;
  }

  /// The frontmost open window of class `W`, or a new one from `New` if there is none.
  template <class W>
  static std::shared_ptr<W> _GetImplicitWindow() {
    for (int i = 0; const auto window = At(i); ++i) {
      if (auto found = std::dynamic_pointer_cast<W>(window)) return found;
    }
    return New<W>();
  }

  const WindowDesign& Design() const { return design_; }
  /// The menu bar of this window; nil if it has none of its own.
  const std::shared_ptr<vintrace::MenuBar>& MenuBar() const { return menuBar_; }
  /// The picture behind the controls, at the top left; nil for none.
  const std::shared_ptr<const Picture>& Backdrop() const { return backdrop_; }

  /// Any bytes, returned as they were set.
  const String& Title() const { return title_; }
  void SetTitle(String title);

  /// The controls in creation order.
  const std::vector<std::unique_ptr<RectControl>>& Controls() const { return controls_; }
  /// The control at the 0-based `index` in creation order; nil if there is none.
  RectControl* Control(int index) const;

  /// Brings the window to the front. Does nothing once it is closed.
  void Show();

  /// Raises `MouseDown` for a press that no control took. True if the window took it; it then gets
  /// the release too, wherever the mouse is.
  bool RaiseMouseDown();
  void RaiseMouseUp();

  /// Calls `handler`, of the window or of one of its controls, under the top-level exception
  /// handler, keeping the window alive. Does nothing once the window is closed.
  void _Raise(const std::function<void()>& handler);

  /// True from the end of the layout until `Close`.
  bool IsOpen() const { return open_; }
  /// Removes the window from the screen and the window list. A second call does nothing.
  void Close();

 protected:
  /// Sets `design_` and the window's other properties, before its controls are created.
  virtual void Layout() = 0;
  virtual void CreateControls() = 0;
  virtual void AddMenuHandlers() {}
  /// Raised when the window is complete, before it is shown. If it closes itself, it isn't shown.
  virtual void Event_Open() {}
  virtual bool Event_MouseDown() { return false; }
  virtual void Event_MouseUp() {}

  template <class ControlClass>
  ControlClass& Add(const ControlDesign& design) {
    auto control = std::make_unique<ControlClass>(*this, design);
    ControlClass& added = *control;
    controls_.push_back(std::move(control));
    return added;
  }

  /// The control at the 0-based `index` in creation order, which must be a `ControlClass`.
  template <class ControlClass>
  ControlClass& ControlAt(std::size_t index) const {
    auto& control = *controls_.at(index);
    assert(dynamic_cast<ControlClass*>(&control) != nullptr);
    return static_cast<ControlClass&>(control);
  }

  void SetMenuBar(std::shared_ptr<vintrace::MenuBar> menuBar) { menuBar_ = std::move(menuBar); }
  void SetBackdrop(std::shared_ptr<const Picture> picture) { backdrop_ = std::move(picture); }

  WindowDesign design_;

 private:
  static void Open(const std::shared_ptr<Window>& window);
  static std::shared_ptr<Window> At(int index);

  String title_;
  std::shared_ptr<vintrace::MenuBar> menuBar_;
  std::shared_ptr<const Picture> backdrop_;
  std::vector<std::unique_ptr<RectControl>> controls_;
  bool open_ = false;
};

}  // namespace vintrace
