#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string_view>

#include "platform/text/String.h"

namespace vintrace {

class Picture;
class Window;
class Label;
class PushButton;
class Canvas;

/// A colour; each component is 0 (none) to 255 (full).
struct Color {
  std::uint8_t red = 0;
  std::uint8_t green = 0;
  std::uint8_t blue = 0;

  bool operator==(const Color&) const = default;
};

constexpr Color RGB(std::uint8_t red, std::uint8_t green, std::uint8_t blue) {
  return {red, green, blue};
}

inline constexpr Color Black = RGB(0, 0, 0);
inline constexpr Color White = RGB(255, 255, 255);

/// The fixed properties of a control. The texts must outlive it.
struct ControlDesign {
  std::string_view Name;
  int Left;  ///< In pixels from the top left corner of the window's content, like `Top`.
  int Top;
  int Width;
  int Height;
  int TabIndex;               ///< Position in the tab order, lowest first.
  std::string_view TextFont;  ///< "System": the desktop's font.
  int TextSize;               ///< In pixels; 0 means 13, for which the layouts were drawn.
  /// Accessible description of a control without text.
  std::string_view description = {};
};

/// A visitor for the classes of controls.
class ControlVisitor {
 public:
  virtual ~ControlVisitor() = default;
  virtual void Visit(Label& label) = 0;
  virtual void Visit(PushButton& button) = 0;
  virtual void Visit(Canvas& canvas) = 0;
};

/// A control, which its window owns. It holds its properties and raises its events. While the
/// window is open, each change of a property is reported to the host at once.
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
  /// Reports a changed property to the host if the window is open.
  void Changed();
  /// Calls `Window::_Raise` unless `handler` is empty.
  void Raise(const std::function<void()>& handler);

 private:
  Window& window_;
  ControlDesign design_;
  bool visible_ = true;
  bool enabled_ = true;
};

/// The horizontal alignment of the lines of a text.
enum class TextAlign { Left, Center };

/// A text, drawn at the top of the control's rectangle, in one line unless `Multiline`.
class Label : public RectControl {
 public:
  using RectControl::RectControl;
  void Accept(ControlVisitor& visitor) override { visitor.Visit(*this); }

  /// Any bytes, returned as they were set.
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
  /// If false, the control's rectangle is filled with the window's background colour.
  bool Transparent() const { return transparent_; }
  void SetTransparent(bool transparent);

  std::function<void()> MouseEnter;
  std::function<void()> MouseExit;
  std::function<bool()> MouseDown;  ///< Returns true to take the press, and the release with it.
  std::function<void()> MouseUp;    ///< The release, wherever the mouse is then.

  void RaiseMouseEnter() { Raise(MouseEnter); }
  void RaiseMouseExit() { Raise(MouseExit); }
  /// True if a handler took the press.
  bool RaiseMouseDown();
  void RaiseMouseUp() { Raise(MouseUp); }

 private:
  String text_;
  Color textColor_ = Black;
  bool underline_ = false;
  vintrace::TextAlign textAlign_ = TextAlign::Left;
  bool multiline_ = false;
  bool transparent_ = false;
};

class PushButton : public RectControl {
 public:
  using RectControl::RectControl;
  void Accept(ControlVisitor& visitor) override { visitor.Visit(*this); }

  const String& Caption() const { return caption_; }
  void SetCaption(String caption);
  /// True for the button that Return presses, whichever control has the focus. At most one in a
  /// window.
  bool Default() const { return default_; }
  void SetDefault(bool isDefault);

  std::function<void()> Action;  ///< Called when the button is pressed.
  void RaiseAction() { Raise(Action); }

 private:
  String caption_;
  bool default_ = false;
};

/// A picture, drawn at the top left of the control's rectangle. The rest shows the background.
class Canvas : public RectControl {
 public:
  using RectControl::RectControl;
  void Accept(ControlVisitor& visitor) override { visitor.Visit(*this); }

  const std::shared_ptr<const Picture>& Backdrop() const { return backdrop_; }
  void SetBackdrop(std::shared_ptr<const Picture> picture);
  /// As in `Label`.
  bool Transparent() const { return transparent_; }
  void SetTransparent(bool transparent);

 private:
  bool transparent_ = false;
  std::shared_ptr<const Picture> backdrop_;
};

}  // namespace vintrace
