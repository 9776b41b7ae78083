#pragma once

#include <functional>
#include <memory>

namespace vintrace {
class Network;
}

namespace vintrace::qt {

/// What goes on around a wait for the network.
struct WaitHooks {
  /// Called with true when a wait begins, and with false when it has ended.
  std::function<void(bool)> waits = [](bool) {};
  /// True when the program ends, which nobody waits for any more.
  std::function<bool()> quits = [] { return false; };
};

/// Makes the network of the toolkit. Raises `RuntimeException` when a part of the program is
/// missing.
std::unique_ptr<Network> MakeNetwork(const WaitHooks& hooks);

/// What the module exports under the name `MakeModuleNetwork`: the same, for a caller who shares no
/// more than the standard library and the headers with it. The caller owns the result.
using ModuleNetworkMaker = Network* (*)(const WaitHooks& hooks);

}  // namespace vintrace::qt
