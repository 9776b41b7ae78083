#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "platform/files/FolderItem.h"
#include "platform/ui/qt/Activation.h"

namespace vintrace::qt {

/// The documents of one start of the program, and the desktop's permission for its window.
struct StartRequest {
  std::vector<FolderItem> documents;
  Activation activation;
};

/// The request of this process. All arguments are paths of documents, raw bytes, absolute or
/// relative to the working directory; none is an option, and empty ones are skipped. To be called
/// before Qt starts, which removes the desktop's variables from the environment.
StartRequest StartRequestOf(int argc, char* argv[]);

/// The single running instance of the program in a desktop session. Later starts reach it through
/// the interface `org.freedesktop.Application` on the session bus (freedesktop.org, desktop
/// entries, "D-Bus Activation"). Without a bus, every start is an instance of its own. The same
/// holds on macOS, where the system itself starts a program only once.
class SingleInstance {
 public:
  SingleInstance();
  SingleInstance(const SingleInstance&) = delete;
  SingleInstance& operator=(const SingleInstance&) = delete;
  ~SingleInstance();

  /// Hands `request` over to the running instance. If that took it, returns true, and this process
  /// is done. If there is none, returns false, and this process becomes the running instance. Also
  /// returns false if the other one doesn't answer within two seconds; this process then runs
  /// beside it. Never raises.
  bool HandOver(const StartRequest& request);

  /// From now on, `taken` is called from the event loop with the request of each later start, those
  /// that came since `HandOver` included.
  void Serve(std::function<void(const StartRequest&)> taken);

  /// Stops taking requests and gives up the name, so that the next start becomes the running
  /// instance.
  void Release();

 private:
  class Bus;

  std::unique_ptr<Bus> bus_;  // Nil without a bus.
};

}  // namespace vintrace::qt
