#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "platform/files/FolderItem.h"
#include "platform/ui/qt/Activation.h"

namespace vintrace::qt {

/// The documents of one start of the program, and what the desktop gave it for its window.
struct StartRequest {
  std::vector<FolderItem> documents;
  Activation activation;
};

/// The request of this process. All arguments are paths of documents, raw bytes, absolute or
/// relative to the working directory; none is an option. To be called before the toolkit starts,
/// which removes the desktop's variables from the environment.
StartRequest StartRequestOf(int argc, char* argv[]);

/// The one running instance of the program in a desktop session, and the way of later starts to it:
/// the interface `org.freedesktop.Application` on the session bus (Desktop Entry Specification,
/// "D-Bus Activation"). Without a bus, and on macOS, where the system keeps programs single, every
/// start is an instance of its own.
class SingleInstance {
 public:
  SingleInstance();
  SingleInstance(const SingleInstance&) = delete;
  SingleInstance& operator=(const SingleInstance&) = delete;
  ~SingleInstance();

  /// Hands `request` over to the running instance. True if that has taken it, and this process is
  /// done. False if there is none, and this process is the running instance from now on; also if
  /// the other one doesn't answer within two seconds, and this process runs beside it. Never
  /// raises.
  bool HandOver(const StartRequest& request);

  /// From now on, `taken` is called from the event loop with the request of each later start, those
  /// that came since `HandOver` included.
  void Serve(std::function<void(const StartRequest&)> taken);

  /// Leaves the requests that haven't been taken to later instances.
  void Release();

 private:
  class Bus;

  std::unique_ptr<Bus> bus_;  // Nil without a bus.
};

}  // namespace vintrace::qt
