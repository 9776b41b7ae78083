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
  GlobalFloating,  ///< Stays above other windows, also those of other applications.
};

/// The place where a window comes up.
enum class Placement {
  Default,  ///< Chosen by the desktop.
  CentreOfMainScreen,
};

/// The properties of a window that its layout sets for good. Sizes are those of the content, in
/// pixels. A modal dialog keeps its width and height, and ignores the limits.
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
  bool HasBackColor = false;  ///< If not, the background is that of the desktop's windows.
  Color BackColor = White;
};

/// A window: its properties and its controls, which it owns in the order of their creation. It
/// knows nothing of a screen; the host shows it. An open window is owned by the window list, and
/// one that is closed while a handler of its own runs lives until the handler returns.
class Window : public CommandTarget, public std::enable_shared_from_this<Window> {
 public:
  /// Makes a window of class `W`, lays it out, puts it in front of the window list and has it
  /// shown. What its layout or its `Open` event raises passes through, and no window is left.
  template <class W>
  static std::shared_ptr<W> New() {
    auto window = std::make_shared<W>();
    Open(window);
    return window;
  }

  /// The open window of class `W`, if there are several the front one; if there is none, a new one
  /// as of `New`.
  template <class W>
  static std::shared_ptr<W> _GetImplicitWindow() {
    for (int i = 0; const auto window = At(i); ++i) {
      if (auto found = std::dynamic_pointer_cast<W>(window)) return found;
    }
    return New<W>();
  }

  const WindowDesign& Design() const { return design_; }
  /// The bar that serves this window; nil for none of its own.
  const std::shared_ptr<vintrace::MenuBar>& MenuBar() const { return menuBar_; }
  /// The picture behind the controls, at the top left; nil for none.
  const std::shared_ptr<const Picture>& Backdrop() const { return backdrop_; }

  /// Any bytes; they are given back as they were set.
  const String& Title() const { return title_; }
  void SetTitle(String title);

  /// The controls in creation order.
  const std::vector<std::unique_ptr<RectControl>>& Controls() const { return controls_; }
  /// The control of that 0-based index in creation order; nil if there is none.
  RectControl* Control(int index) const;

  /// Brings the window to the front. Does nothing once it is closed.
  void Show();

  /// The mouse was pressed where no control takes it. True: the release comes here too, wherever
  /// the mouse is then.
  bool RaiseMouseDown();
  void RaiseMouseUp();

  /// Runs a handler of the window or of one of its controls as the desktop's callbacks run, with
  /// the window kept alive. A closed window raises no events.
  void _Raise(const std::function<void()>& handler);

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
  virtual bool Event_MouseDown() { return false; }
  virtual void Event_MouseUp() {}

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
