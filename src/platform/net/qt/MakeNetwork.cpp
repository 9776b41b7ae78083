#include "platform/net/qt/MakeNetwork.h"

#include "platform/net/qt/QtNetwork.h"

namespace vintrace::qt {

std::unique_ptr<Network> MakeNetwork(const WaitHooks& hooks) {
  return std::make_unique<QtNetwork>(hooks);
}

}  // namespace vintrace::qt
