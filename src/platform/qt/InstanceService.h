#pragma once

#include <QSocketNotifier>
#include <QTimer>
#include <functional>
#include <list>
#include <optional>

#include "platform/InstanceChannel.h"

namespace vintrace::qt {

/// Hears other starts of the program while the event loop runs, a message box's too. May be
/// destroyed at any time, also by `taken`; starts that haven't been answered then go elsewhere.
class InstanceService {
 public:
  /// Listens on `seat` from now on. `taken` is called on the main thread, from the loop, with each
  /// request that has been taken.
  InstanceService(InstanceSeat seat, std::function<void(StartRequest)> taken);
  InstanceService(const InstanceService&) = delete;
  InstanceService& operator=(const InstanceService&) = delete;
  ~InstanceService();

 private:
  /// A start that has come and hasn't said all yet.
  struct Peer {
    explicit Peer(InstanceConnection accepted);

    InstanceConnection connection;
    QSocketNotifier readable;
    QTimer patience;
  };
  using Place = std::list<Peer>::iterator;

  void Accept();
  void Serve(Place peer);
  void Drop(Place peer);
  void Breathe();
  void HearArrivals();

  InstanceSeat seat_;
  std::function<void(StartRequest)> taken_;
  std::list<Peer> peers_;
  std::optional<QSocketNotifier> arrival_;
  QTimer breath_;
};

}  // namespace vintrace::qt
