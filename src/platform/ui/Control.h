#pragma once

#include <functional>
#include <memory>
#include <string_view>

#include "platform/text/String.h"
#include "platform/ui/Color.h"

namespace vintrace {

class Picture;
class Window;
class Label;
class PushButton;
class Canvas;

/// A place in a window, in pixels from the window's top left corner.
struct Rect {
  int left;
  int top;
  int width;
  int height;
};

/// What a layout fixes of a control for good. The texts are literals, or live as long.
struct ControlDesign {
  std::string_view name;
  Rect place;
  int tabIndex;               ///< The control's turn when the Tab key goes round.
  std::string_view textFont;  ///< "System" and size 0 stand for the platform's own.
  int textSize;               ///< Pixels.
  /// What tells of a control without a text to one who doesn't see it.
  std::string_view description = {};
};

/// Goes to each control by its class.
class ControlVisitor {
 public:
  virtual ~ControlVisitor() = default;
  virtual void Visit(Label& label) = 0;
  virtual void Visit(PushButton& button) = 0;
  virtual void Visit(Canvas& canvas) = 0;
};

/// A control of a window, which owns it. It holds its properties and raises its events; each change
/// of a property on a window that is shown reaches the host at once.
class RectControl {
 public:
  RectControl(Window& window, const ControlDesign& design) : window_(window), design_(design) {}
  RectControl(const RectControl&) = delete;
  RectControl& operator=(const RectControl&) = delete;
  virtual ~RectControl() = default;

  virtual void Accept(ControlVisitor& visitor) = 0;

  const ControlDesign& Design() const { return design_; }
  Window& Owner() const { return window_; }

  bool Visible() const { return visible_; }
  void SetVisible(bool visible);
  bool Enabled() const { return enabled_; }
  void SetEnabled(bool enabled);

 protected:
  /// Tells the host that a property of this control has changed.
  void Changed();
  /// As `Window::_Raise`; an empty handler is no handler.
  void Raise(const std::function<void()>& handler);

 private:
  Window& window_;
  ControlDesign design_;
  bool visible_ = true;
  bool enabled_ = true;
};

/// Where in its place the lines of a text stand.
enum class TextAlign { Left, Center };

/// A text. It is drawn at the top of its place, in one line unless `Multiline`.
class Label : public RectControl {
 public:
  using RectControl::RectControl;
  void Accept(ControlVisitor& visitor) override { visitor.Visit(*this); }

  /// Any bytes; they are given back as they were set.
  const String& Text() const { return text_; }
  void SetText(String text);
  Color TextColor() const { return textColor_; }
  void SetTextColor(Color color);
  bool Underline() const { return underline_; }
  void SetUnderline(bool underline);
  vintrace::TextAlign TextAlign() const { return textAlign_; }
  void SetTextAlign(vintrace::TextAlign align);
  bool Multiline() const { return multiline_; }
  void SetMultiline(bool multiline);

  std::function<void()> MouseEnter;
  std::function<void()> MouseExit;
  std::function<bool()> MouseDown;  ///< True: the press is taken, and the release comes here too.
  std::function<void()> MouseUp;    ///< Wherever the mouse is then.

  void RaiseMouseEnter() { Raise(MouseEnter); }
  void RaiseMouseExit() { Raise(MouseExit); }
  /// False when there is no handler.
  bool RaiseMouseDown();
  void RaiseMouseUp() { Raise(MouseUp); }

 private:
  String text_;
  Color textColor_ = Black;
  bool underline_ = false;
  vintrace::TextAlign textAlign_ = TextAlign::Left;
  bool multiline_ = false;
};

/// A button.
class PushButton : public RectControl {
 public:
  using RectControl::RectControl;
  void Accept(ControlVisitor& visitor) override { visitor.Visit(*this); }

  const String& Caption() const { return caption_; }
  void SetCaption(String caption);
  /// The button that Return presses, whatever has the focus. A window has one at most.
  bool Default() const { return default_; }
  void SetDefault(bool isDefault);

  std::function<void()> Action;  ///< The button was pressed.
  void RaiseAction() { Raise(Action); }

 private:
  String caption_;
  bool default_ = false;
};

/// A place for a picture, which is drawn at its top left. What has no picture shows the window.
class Canvas : public RectControl {
 public:
  using RectControl::RectControl;
  void Accept(ControlVisitor& visitor) override { visitor.Visit(*this); }

  const std::shared_ptr<const Picture>& Backdrop() const { return backdrop_; }
  void SetBackdrop(std::shared_ptr<const Picture> picture);

 private:
  std::shared_ptr<const Picture> backdrop_;
};

}  // namespace vintrace
