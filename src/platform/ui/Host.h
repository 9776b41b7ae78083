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

/// The desktop, as far as the program asks it for something. The windows, controls and the
/// application hold their own state and raise their own events; a host shows them and tells them
/// what happened. There is one host at a time. It owns the application and, in its list, the open
/// windows, which ask nothing of it any more when it goes. Everything happens on the main thread.
class Host {
 public:
  /// The exit status of a program that ends as its user wants.
  static constexpr int NormalEnd = 0;

  /// The new object becomes the current host.
  Host();
  Host(const Host&) = delete;
  Host& operator=(const Host&) = delete;
  virtual ~Host();

  static Host& Current();

  /// The open windows.
  WindowList& Windows() { return windows_; }

  /// Makes `application` the application object, for the life of the host.
  void _RuntimeRegisterAppObject(std::unique_ptr<vintrace::Application> application);
  /// The application object. Raises `NilObjectException` before there is one.
  vintrace::Application& Application() const;

  /// Brings `window`, which is complete, onto the screen and to the front, or to the front alone if
  /// it is there already. It may come up as late as the end of the handler that is running.
  virtual void Show(Window& window) = 0;
  /// A property of a window that is shown, or of a control in one, has changed.
  virtual void Changed(Window& window) = 0;
  virtual void Changed(RectControl& control) = 0;
  /// `window` is closed: it leaves the screen, and the host raises nothing in it from now on.
  virtual void Closed(Window& window) = 0;

  /// Shows `text`, UTF-8 of one or more lines, in a box and returns when the user has dismissed it.
  /// No document is handed over meanwhile.
  virtual void ShowMessage(const String& text) = 0;
  /// Asks the user for an item and returns it, or nil on cancel. No document is handed over
  /// meanwhile.
  virtual std::optional<FolderItem> AskForFile(const FileRequest& request) = 0;
  /// Replaces what the clipboard holds by plain text. `text`: valid UTF-8.
  virtual void SetClipboardText(const String& text) = 0;
  /// Hands an address to the default browser or mail client. No result.
  virtual void ShowURL(const String& url) = 0;

  /// The network, which lives as long as the host. Raises `RuntimeException` when a part of the
  /// program is missing for it.
  virtual vintrace::Network& Network() = 0;

  /// Runs the event loop until `Quit`: raises the application's `OpenDocument` for each document
  /// that the program was started with, in order, then its `Open` once, with their windows on the
  /// screen, and from then on `OpenDocument` for each further one that the system hands over. What
  /// a user does is handled after `Open`.
  virtual void Run() = 0;
  /// Ends the loop when the handler that is running has returned. No further event is raised, and
  /// the user isn't told or asked anything any more: a message has been seen, a question cancelled.
  /// `exitStatus` becomes the exit status of the process; the first call counts.
  virtual void Quit(int exitStatus) = 0;

 private:
  WindowList windows_;
  std::unique_ptr<vintrace::Application> application_;
};

}  // namespace vintrace
