// The network's libraries are many, and loading them would hold the first window up. They come with
// a module, which is loaded when the network is asked for first.

#include "platform/Network.h"
#include "platform/OwnParts.h"
#include "platform/qt/MakeNetwork.h"

namespace vintrace::qt {

std::unique_ptr<Network> MakeNetwork(const WaitHooks& hooks) {
  static const auto make =
      reinterpret_cast<ModuleNetworkMaker>(ownParts::FunctionOf("network.so", "MakeModuleNetwork"));
  return std::unique_ptr<Network>(make(hooks));
}

}  // namespace vintrace::qt
