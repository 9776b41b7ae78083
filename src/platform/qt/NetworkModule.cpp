#include "platform/qt/MakeNetwork.h"
#include "platform/qt/QtNetwork.h"

extern "C" vintrace::Network* MakeModuleNetwork(const std::function<void(bool)>& waits) {
  return new vintrace::qt::QtNetwork(waits);
}
