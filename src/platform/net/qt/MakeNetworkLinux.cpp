// Loading the many libraries of the network would delay the first window. They are linked to a
// module that is loaded at the first request.

#include "platform/net/qt/MakeNetwork.h"
#include "platform/process/BundledParts.h"

namespace vintrace::qt {

std::unique_ptr<Network> MakeNetwork(const WaitHooks& hooks) {
  static const auto make = reinterpret_cast<ModuleNetworkMaker>(
      bundledParts::FunctionOf("network.so", "MakeModuleNetwork"));
  return std::unique_ptr<Network>(make(hooks));
}

}  // namespace vintrace::qt
