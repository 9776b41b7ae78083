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

/// The application object, which receives what the operating system has for the program as a whole.
/// One instance, registered with the host, lives as long as the process. It is the target of the
/// commands that work whatever window is in front.
class Application : public CommandTarget {
 public:
  /// The version record. `LongVersion` is the text for the user, such as "1.20".
  int MajorVersion() const;
  int MinorVersion() const;
  int BugVersion() const;
  String LongVersion() const;

  /// The menu bar; nil until the program has set it, which it does before the loop runs.
  const std::shared_ptr<vintrace::MenuBar>& MenuBar() const { return menuBar_; }
  void SetMenuBar(std::shared_ptr<vintrace::MenuBar> menuBar) { menuBar_ = std::move(menuBar); }

  /// Raised by the host: `Open` once when the program has started, and `OpenDocument` for each
  /// document that the system hands over, before that if the program was started with it. Nil: the
  /// system named none.
  void RaiseOpen();
  void RaiseOpenDocument(const std::optional<FolderItem>& item);

 protected:
  virtual void Event_OpenDocument(const std::optional<FolderItem>&) {}
  virtual void Event_Open() {}

 private:
  std::shared_ptr<vintrace::MenuBar> menuBar_;
};

/// The exception helper of the program: runs `function`, and passes what it throws to
/// `_UnhandledException`, after which the program goes on.
void _CallFunctionWithExceptionHandling(const std::function<void()>& function);

/// The report of last resort: a message box with a general text and the reason.
void _UnhandledException(const std::exception& exception);

}  // namespace vintrace
