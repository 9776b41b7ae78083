#include "platform/ui/qt/Activation.h"

#include <xcb/xcb.h>

#include <QGuiApplication>
#include <QWidget>
#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <optional>
#include <string_view>

namespace vintrace::qt {
namespace {

struct Free {
  void operator()(void* memory) const { std::free(memory); }
};

/// Sends messages to the window manager and to listeners on the root window, over Qt's
/// connection to the X server.
class X11 {
 public:
  /// Nil if the program doesn't run on X11.
  static std::optional<X11> Here() {
    auto* application = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (application == nullptr || application->connection() == nullptr) return std::nullopt;
    return X11(application->connection());
  }

  /// Sends "_NET_ACTIVE_WINDOW" (Extended Window Manager Hints) as an application.
  void Activate(xcb_window_t window, std::uint32_t time) const {
    constexpr std::uint32_t FromAnApplication = 1;
    auto message = MessageOf(window, Atom("_NET_ACTIVE_WINDOW"), 32);
    message.data.data32[0] = FromAnApplication;
    message.data.data32[1] = time;
    Send(message, XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY);
    xcb_flush(connection_);
  }

  /// Sends a message of the startup notification protocol: its text and a final zero byte, in
  /// pieces of 20 bytes.
  void BroadcastStartupInfo(std::string_view text) const {
    const xcb_window_t sender = xcb_generate_id(connection_);
    xcb_create_window(connection_, XCB_COPY_FROM_PARENT, sender, root_, -1, -1, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    const xcb_atom_t more = Atom("_NET_STARTUP_INFO");
    xcb_atom_t type = Atom("_NET_STARTUP_INFO_BEGIN");
    const String whole = String(text) + '\0';
    for (std::size_t sent = 0; sent < whole.size(); type = more) {
      auto message = MessageOf(sender, type, 8);
      const std::string_view piece =
          std::string_view(whole).substr(sent, sizeof message.data.data8);
      std::ranges::copy(piece, message.data.data8);
      Send(message, XCB_EVENT_MASK_PROPERTY_CHANGE);
      sent += piece.size();
    }
    xcb_destroy_window(connection_, sender);
    xcb_flush(connection_);
  }

 private:
  explicit X11(xcb_connection_t* connection)
      : connection_(connection),
        root_(xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root) {}

  xcb_atom_t Atom(std::string_view name) const {
    const auto request =
        xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(name.size()), name.data());
    const std::unique_ptr<xcb_intern_atom_reply_t, Free> reply(
        xcb_intern_atom_reply(connection_, request, nullptr));
    return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
  }

  static xcb_client_message_event_t MessageOf(xcb_window_t window, xcb_atom_t type,
                                              std::uint8_t format) {
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = format;
    message.window = window;
    message.type = type;
    return message;
  }

  void Send(const xcb_client_message_event_t& message, std::uint32_t receivers) const {
    // All events of the X11 protocol have 32 bytes.
    char bytes[32]{};
    std::memcpy(bytes, &message, sizeof message);
    xcb_send_event(connection_, 0, root_, receivers, bytes);
  }

  xcb_connection_t* connection_;
  xcb_window_t root_;
};

/// The server time of the user's action that led to this start: the decimal number after "_TIME" at
/// the end of the id (startup notification protocol). Nil if there is none.
std::optional<std::uint32_t> TimeOf(std::string_view startupId) {
  constexpr std::string_view Mark = "_TIME";
  const auto mark = startupId.rfind(Mark);
  if (mark == std::string_view::npos) return std::nullopt;
  const std::string_view digits = startupId.substr(mark + Mark.size());
  std::uint32_t time = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), time);
  const bool whole = error == std::errc() && end == digits.data() + digits.size();
  return whole ? std::optional(time) : std::nullopt;
}

/// A value of a message, quoted as the startup notification protocol requires.
String Quoted(std::string_view value) {
  String quoted = "\"";
  for (const char c : value) {
    if (c == '"' || c == '\\') quoted += '\\';
    quoted += c;
  }
  return quoted + '"';
}

}  // namespace

void BringToFront(QWidget& window, const Activation& activation) {
  const auto x11 = X11::Here();
  // The Wayland platform plugin reads and unsets this variable.
  if (!x11 && !activation.token.empty()) {
    qputenv("XDG_ACTIVATION_TOKEN", QByteArray::fromStdString(activation.token));
  }
  window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
  window.raise();
  window.activateWindow();
  const auto time = TimeOf(activation.startupId);
  if (x11 && time) x11->Activate(static_cast<xcb_window_t>(window.winId()), *time);
}

void EndStartup(const Activation& activation) {
  if (activation.startupId.empty()) return;
  if (const auto x11 = X11::Here()) {
    x11->BroadcastStartupInfo("remove: ID=" + Quoted(activation.startupId));
  }
}

}  // namespace vintrace::qt
