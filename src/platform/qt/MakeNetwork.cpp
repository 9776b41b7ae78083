#include "platform/qt/MakeNetwork.h"

#include "platform/qt/QtNetwork.h"

namespace vintrace::qt {

std::unique_ptr<Network> MakeNetwork(const std::function<void(bool)>& waits) {
  return std::make_unique<QtNetwork>(waits);
}

}  // namespace vintrace::qt
