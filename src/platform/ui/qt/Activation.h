#pragma once

#include "platform/text/String.h"

class QWidget;

namespace vintrace::qt {

/// The desktop's permission for a start of the program to bring its window to the front.
struct Activation {
  String token;      ///< XDG_ACTIVATION_TOKEN, for Wayland; empty: none.
  String startupId;  ///< DESKTOP_STARTUP_ID, for X11; empty: none.

  /// True if there is a permission.
  explicit operator bool() const { return !token.empty() || !startupId.empty(); }
};

/// Brings a visible window to the front on behalf of the start with that permission. Without one,
/// the window manager may refuse to move the focus.
void BringToFront(QWidget& window, const Activation& activation);

/// Tells the desktop that the start with that permission is over, so that it stops showing a busy
/// cursor for it.
void EndStartup(const Activation& activation);

}  // namespace vintrace::qt
