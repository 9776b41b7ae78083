#pragma once

#include <memory>

#include "platform/net/Network.h"

namespace vintrace::qt {

/// Qt's network. Raises `RuntimeException` if its module is missing.
std::unique_ptr<Network> MakeNetwork(const WaitHooks& hooks);

/// The type of `MakeModuleNetwork`, which the module exports. The caller owns the result.
using ModuleNetworkMaker = Network* (*)(const WaitHooks& hooks);

}  // namespace vintrace::qt
