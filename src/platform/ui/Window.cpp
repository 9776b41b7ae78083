#include "platform/ui/Window.h"

#include <utility>

#include "platform/text/Exceptions.h"
#include "platform/ui/Host.h"

namespace vintrace {

void Window::Open(const std::shared_ptr<Window>& window) {
  window->Layout();
  window->CreateControls();
  window->AddMenuHandlers();
  window->open_ = true;
  Host::Current().Windows().BringToFront(window);
  try {
    window->Event_Open();
    if (window->open_) Host::Current().Show(*window);
  } catch (...) {
    window->Close();  // Otherwise it would count as open and never be seen.
    throw;
  }
}

void Window::SetTitle(String title) {
  title_ = std::move(title);
  if (open_) Host::Current().Changed(*this);
}

void Window::Show() {
  if (!open_) return;
  Host::Current().Windows().BringToFront(shared_from_this());
  Host::Current().Show(*this);
}

bool Window::RaiseMouseDown() {
  bool taken = false;
  _Raise([&] { taken = Event_MouseDown(); });
  return taken;
}

void Window::RaiseMouseUp() {
  _Raise([this] { Event_MouseUp(); });
}

void Window::_Raise(const std::function<void()>& handler) {
  if (!open_) return;
  const auto alive = shared_from_this();
  _RuntimeCall(handler);
}

std::shared_ptr<Window> Window::At(int index) { return Host::Current().Windows().At(index); }

RectControl* Window::Control(int index) const {
  const auto position = static_cast<std::size_t>(index);
  return index >= 0 && position < controls_.size() ? controls_[position].get() : nullptr;
}

void Window::Close() {
  if (!open_) return;
  const auto alive = shared_from_this();
  open_ = false;
  Host::Current().Windows().Remove(*this);
  Host::Current().Closed(*this);
}

}  // namespace vintrace
