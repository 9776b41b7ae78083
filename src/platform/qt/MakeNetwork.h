#pragma once

#include <functional>
#include <memory>

namespace vintrace {
class Network;
}

namespace vintrace::qt {

/// Makes the network of the toolkit. `waits` is called with true when a wait begins, and with false
/// when it has ended. Raises `RuntimeException` when a part of the program is missing.
std::unique_ptr<Network> MakeNetwork(const std::function<void(bool)>& waits);

/// What the module exports under the name `MakeModuleNetwork`: the same, for a caller who shares no
/// more than the standard library and the headers with it. The caller owns the result.
using ModuleNetworkMaker = Network* (*)(const std::function<void(bool)>& waits);

}  // namespace vintrace::qt
