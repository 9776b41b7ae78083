#pragma once

class QWidget;

namespace vintrace {
class RectControl;
}

namespace vintrace::qt {

/// The view of one control on the screen. The objects are widgets.
class ControlView {
 public:
  virtual ~ControlView() = default;
  virtual QWidget& Widget() = 0;
  /// Takes over what the control says now.
  virtual void Refresh() = 0;
  /// Tells whether another control lies above this one.
  virtual void SetCovered(bool /*covered*/) {}
};

/// Makes the view of `control` as a child of `parent`, which owns it. It raises the control's
/// events. `control` outlives it.
ControlView* MakeView(RectControl& control, QWidget& parent);

}  // namespace vintrace::qt
