#pragma once

#include <QByteArray>
#include <cstdint>
#include <optional>

#include "platform/String.h"

class QWidget;

namespace vintrace::qt {

/// What the desktop gave a start of the program so that its window may come to the front.
struct Activation {
  String token;      ///< Wayland's, as in XDG_ACTIVATION_TOKEN; empty: none.
  String startupId;  ///< X11's, as in DESKTOP_STARTUP_ID; empty: none.

  /// True when there is any.
  explicit operator bool() const { return !token.empty() || !startupId.empty(); }
};

/// Brings a window that is on the screen to the front, on behalf of the start that was given
/// `activation`. Without one the window manager may prefer to leave the user where he is.
void BringToFront(QWidget& window, const Activation& activation);

/// Tells the desktop that the start which was given `activation` has come to its end, so that it
/// shows no clock for it any more.
void EndStartup(const Activation& activation);

/// That a key was pressed.
struct KeyPress {
  std::uint32_t time;  ///< Milliseconds, on the server's clock.
  quintptr window;     ///< The `WId` of the window which had the focus then.
};

/// The key that was pressed, if that is what a message of the window system tells, which is as
/// `QAbstractNativeEventFilter` has it; nothing where windows aren't X11's.
std::optional<KeyPress> KeyPressIn(const QByteArray& type, const void* message);

}  // namespace vintrace::qt
