// A clipboard manager that keeps texts: it takes over what the clipboard holds when the program
// that put it there asks for that at its end, and never by itself. Says "ready" once it can be
// asked.

#include <xcb/xcb.h>

#include <cstdlib>
#include <iostream>
#include <memory>
#include <string>
#include <string_view>

namespace vintrace::test {
namespace {

struct Free {
  void operator()(void* memory) const { std::free(memory); }
};

class ClipboardManager {
 public:
  ClipboardManager() : server_(xcb_connect(nullptr, nullptr)), window_(xcb_generate_id(server_)) {
    if (xcb_connection_has_error(server_) != 0) return;
    const auto root = xcb_setup_roots_iterator(xcb_get_setup(server_)).data->root;
    xcb_create_window(server_, XCB_COPY_FROM_PARENT, window_, root, -1, -1, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
  }
  ClipboardManager(const ClipboardManager&) = delete;
  ClipboardManager& operator=(const ClipboardManager&) = delete;
  ~ClipboardManager() { xcb_disconnect(server_); }

  /// Works until the server ends.
  void Run() {
    if (!Own(manager_, XCB_CURRENT_TIME)) return;
    std::cout << "ready" << std::endl;
    while (const std::unique_ptr<xcb_generic_event_t, Free> event{xcb_wait_for_event(server_)}) {
      Handle(*event);
      xcb_flush(server_);
    }
  }

 private:
  void Handle(const xcb_generic_event_t& event) {
    switch (event.response_type & 0x7F) {
      case XCB_SELECTION_REQUEST:
        return IsAsked(reinterpret_cast<const xcb_selection_request_event_t&>(event));
      case XCB_SELECTION_NOTIFY:
        return HasFetched(reinterpret_cast<const xcb_selection_notify_event_t&>(event));
      default:
        return;
    }
  }

  void IsAsked(const xcb_selection_request_event_t& request) {
    if (request.selection == manager_ && request.target == saveTargets_) {
      saving_ = request;
      xcb_convert_selection(server_, window_, clipboard_, text_, text_, request.time);
    } else if (request.selection == clipboard_ && request.target == text_) {
      Answer(request, text_, kept_);
    } else {
      Notify(request, XCB_ATOM_NONE);
    }
  }

  void HasFetched(const xcb_selection_notify_event_t& fetched) {
    if (fetched.property == XCB_ATOM_NONE) return Notify(saving_, XCB_ATOM_NONE);
    constexpr std::uint32_t Most = 1 << 16;
    const auto request = xcb_get_property(server_, 1, window_, fetched.property, text_, 0, Most);
    const std::unique_ptr<xcb_get_property_reply_t, Free> reply(
        xcb_get_property_reply(server_, request, nullptr));
    if (!reply) return Notify(saving_, XCB_ATOM_NONE);
    kept_.assign(static_cast<const char*>(xcb_get_property_value(reply.get())),
                 static_cast<std::size_t>(xcb_get_property_value_length(reply.get())));
    Own(clipboard_, fetched.time);
    Answer(saving_, null_, {});
  }

  void Answer(const xcb_selection_request_event_t& request, xcb_atom_t type,
              std::string_view bytes) {
    xcb_change_property(server_, XCB_PROP_MODE_REPLACE, request.requestor, request.property, type,
                        8, static_cast<std::uint32_t>(bytes.size()), bytes.data());
    Notify(request, request.property);
  }

  void Notify(const xcb_selection_request_event_t& request, xcb_atom_t property) {
    // The events of the protocol have 32 bytes all of them.
    union {
      xcb_selection_notify_event_t event;
      char bytes[32];
    } message{};
    message.event.response_type = XCB_SELECTION_NOTIFY;
    message.event.time = request.time;
    message.event.requestor = request.requestor;
    message.event.selection = request.selection;
    message.event.target = request.target;
    message.event.property = property;
    xcb_send_event(server_, 0, request.requestor, XCB_EVENT_MASK_NO_EVENT, message.bytes);
  }

  bool Own(xcb_atom_t selection, xcb_timestamp_t time) {
    xcb_set_selection_owner(server_, window_, selection, time);
    const std::unique_ptr<xcb_get_selection_owner_reply_t, Free> reply(
        xcb_get_selection_owner_reply(server_, xcb_get_selection_owner(server_, selection),
                                      nullptr));
    return reply && reply->owner == window_;
  }

  xcb_atom_t Atom(std::string_view name) const {
    const auto request =
        xcb_intern_atom(server_, 0, static_cast<std::uint16_t>(name.size()), name.data());
    const std::unique_ptr<xcb_intern_atom_reply_t, Free> reply(
        xcb_intern_atom_reply(server_, request, nullptr));
    return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
  }

  xcb_connection_t* server_;
  xcb_window_t window_;
  xcb_atom_t manager_ = Atom("CLIPBOARD_MANAGER");
  xcb_atom_t saveTargets_ = Atom("SAVE_TARGETS");
  xcb_atom_t clipboard_ = Atom("CLIPBOARD");
  xcb_atom_t text_ = Atom("UTF8_STRING");
  xcb_atom_t null_ = Atom("NULL");
  xcb_selection_request_event_t saving_{};
  std::string kept_;
};

}  // namespace
}  // namespace vintrace::test

int main() {
  vintrace::test::ClipboardManager().Run();
  return 1;  // A manager ends by a signal, or there is another.
}
