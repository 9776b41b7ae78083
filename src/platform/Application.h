#pragma once

#include <optional>

#include "platform/FolderItem.h"
#include "platform/String.h"

namespace vintrace {

/// The application object, which receives what the operating system has for the program as a whole.
/// One instance, registered with the host, lives as long as the process.
class Application {
 public:
  Application() = default;
  Application(const Application&) = delete;
  Application& operator=(const Application&) = delete;
  virtual ~Application() = default;

  /// The version record. `LongVersion` is the text for the user, such as "1.20".
  int MajorVersion() const;
  int MinorVersion() const;
  int BugVersion() const;
  String LongVersion() const;

  /// Raised by the host, in this order of time: `Open` once when the loop has started, then
  /// `OpenDocument` for each document that the system hands over. Nil: the system named none.
  void RaiseOpen();
  void RaiseOpenDocument(const std::optional<FolderItem>& item);

 protected:
  virtual void Event_EnableMenuItems() {}
  virtual void Event_OpenDocument(const std::optional<FolderItem>&) {}
  virtual void Event_Open() {}
};

}  // namespace vintrace
