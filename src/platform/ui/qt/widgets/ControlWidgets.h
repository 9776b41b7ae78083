#pragma once

class QWidget;

namespace vintrace {
class RectControl;
}

namespace vintrace::qt {

/// The view of a control. Every implementation is a `QWidget`.
class ControlView {
 public:
  virtual ~ControlView() = default;
  virtual QWidget& Widget() = 0;
  /// Updates the widget to the control's properties.
  virtual void Refresh() = 0;
  /// Sets whether another control covers this one.
  virtual void SetCovered(bool /*covered*/) {}
};

/// Presents links, pictures and windows to assistive technology as what they are. To be called once
/// for each application object of Qt.
void InstallAccessibility();

/// Makes the view of `control` as a child of `parent`, which owns it. The view raises the control's
/// events. `control` must outlive it.
ControlView* MakeView(RectControl& control, QWidget& parent);

}  // namespace vintrace::qt
