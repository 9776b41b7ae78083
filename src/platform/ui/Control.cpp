#include "platform/ui/Control.h"

#include <utility>

#include "platform/ui/Host.h"
#include "platform/ui/Window.h"

namespace vintrace {

void RectControl::SetVisible(bool visible) {
  visible_ = visible;
  Changed();
}

void RectControl::SetEnabled(bool enabled) {
  enabled_ = enabled;
  Changed();
}

void RectControl::Changed() {
  if (window_.IsOpen()) Host::Current().Changed(*this);
}

void RectControl::Raise(const std::function<void()>& handler) {
  if (handler) window_._Raise(handler);
}

void Label::SetText(String text) {
  text_ = std::move(text);
  Changed();
}

void Label::SetTextColor(Color color) {
  textColor_ = color;
  Changed();
}

void Label::SetUnderline(bool underline) {
  underline_ = underline;
  Changed();
}

void Label::SetTextAlign(vintrace::TextAlign align) {
  textAlign_ = align;
  Changed();
}

void Label::SetMultiline(bool multiline) {
  multiline_ = multiline;
  Changed();
}

void Label::SetTransparent(bool transparent) {
  transparent_ = transparent;
  Changed();
}

bool Label::RaiseMouseDown() {
  bool taken = false;
  if (MouseDown) Raise([&] { taken = MouseDown(); });
  return taken;
}

void PushButton::SetCaption(String caption) {
  caption_ = std::move(caption);
  Changed();
}

void PushButton::SetDefault(bool isDefault) {
  default_ = isDefault;
  Changed();
}

void Canvas::SetBackdrop(std::shared_ptr<const Picture> picture) {
  backdrop_ = std::move(picture);
  Changed();
}

void Canvas::SetTransparent(bool transparent) {
  transparent_ = transparent;
  Changed();
}

}  // namespace vintrace
