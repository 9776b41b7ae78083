#pragma once

#include <memory>
#include <optional>

#include "platform/files/FolderItem.h"
#include "platform/text/String.h"
#include "platform/ui/Application.h"
#include "platform/ui/OpenDialog.h"
#include "platform/ui/WindowList.h"

namespace vintrace {

class Network;
class RectControl;
class Window;

/// The services the program needs from the desktop. The application, windows and controls hold
/// their own state and raise their own events; the host shows them and reports the user's actions
/// to them. One host exists at a time. It owns the application and, in its list, the open windows,
/// whose destructors must not call it. All calls are made on the main thread.
class Host {
 public:
  /// The exit status of a program that the user quits.
  static constexpr int NormalEnd = 0;

  /// Makes this object the current host.
  Host();
  Host(const Host&) = delete;
  Host& operator=(const Host&) = delete;
  virtual ~Host();

  /// The current host, which must exist.
  static Host& Current();

  /// The open windows.
  WindowList& Windows() { return windows_; }

  /// Sets the application object, which lives as long as the host.
  void _RuntimeRegisterAppObject(std::unique_ptr<vintrace::Application> application);
  /// The application object. Raises `NilObjectException` if none has been set.
  vintrace::Application& Application() const;

  /// Shows the complete `window` in front of the others, or brings it to the front if it is on the
  /// screen already. The window may appear only after the running handler has returned.
  virtual void Show(Window& window) = 0;
  /// Updates the screen after a property of an open window, or of its control, has changed.
  virtual void Changed(Window& window) = 0;
  virtual void Changed(RectControl& control) = 0;
  /// Removes the closed `window` from the screen and raises no more events in it.
  virtual void Closed(Window& window) = 0;

  /// Shows `text`, UTF-8 of one or more lines, in a message box and returns when the user has
  /// dismissed it. `OpenDocument` is not raised meanwhile.
  virtual void ShowMessage(const String& text) = 0;
  /// Asks the user for a file and returns it, or nil on cancel. `OpenDocument` is not raised
  /// meanwhile.
  virtual std::optional<FolderItem> AskForFile(const FileRequest& request) = 0;
  /// Replaces the clipboard's contents with plain text. `text`: valid UTF-8.
  virtual void SetClipboardText(const String& text) = 0;
  /// Opens an address in the default browser or mail client. Failures are not reported.
  virtual void ShowURL(const String& url) = 0;
  /// Leaves the focus to an application that was just started: a window that the host itself shows
  /// next doesn't take it.
  virtual void YieldFocus() {}

  /// The network, which lives as long as the host. Raises `RuntimeException` if a bundled part that
  /// it needs is missing.
  virtual vintrace::Network& Network() = 0;

  /// Runs the event loop until `Quit`. First raises the application's `OpenDocument` for each
  /// document that the program was started with, in order. Raises `Open` once when their windows
  /// are on the screen, then `OpenDocument` for each further document that the system hands over.
  /// User input is handled after `Open`.
  virtual void Run() = 0;
  /// Ends the loop when the running handler has returned. Raises no further event. An open message
  /// or question returns as dismissed or cancelled; later ones do so without being shown.
  /// `exitStatus` becomes the exit status of the process. Later calls are ignored.
  virtual void Quit(int exitStatus) = 0;

 private:
  WindowList windows_;
  std::unique_ptr<vintrace::Application> application_;
};

}  // namespace vintrace
