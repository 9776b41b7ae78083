#pragma once

#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <utility>

#include "platform/files/FolderItem.h"
#include "platform/text/String.h"
#include "platform/ui/Commands.h"

namespace vintrace {

class MenuBar;

/// The application object, which gets the system's events for the program as a whole and the
/// commands that work whichever window is in front. The host owns the only instance.
class Application : public CommandTarget {
 public:
  /// The version of the program. `LongVersion` is the text for the user, such as "1.20".
  int MajorVersion() const;
  int MinorVersion() const;
  int BugVersion() const;
  String LongVersion() const;

  /// The menu bar; nil until the program sets it, before the event loop runs.
  const std::shared_ptr<vintrace::MenuBar>& MenuBar() const { return menuBar_; }
  void SetMenuBar(std::shared_ptr<vintrace::MenuBar> menuBar) { menuBar_ = std::move(menuBar); }

  /// Called by the host to raise `Open` once, when the program has started, and `OpenDocument` for
  /// each document that the system hands over, before `Open` if the program was started with it.
  /// A nil `item` means that the system named no document.
  void RaiseOpen();
  void RaiseOpenDocument(const std::optional<FolderItem>& item);

 protected:
  virtual void Event_OpenDocument(const std::optional<FolderItem>&) {}
  virtual void Event_Open() {}

 private:
  std::shared_ptr<vintrace::MenuBar> menuBar_;
};

/// The program's top-level exception handler: calls `function` and passes a `std::exception` that
/// it throws to `_UnhandledException`. The program continues.
void _CallFunctionWithExceptionHandling(const std::function<void()>& function);

/// Shows a message box with a general text and, on a line of its own, the reason.
void _UnhandledException(const std::exception& exception);

}  // namespace vintrace
