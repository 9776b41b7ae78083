#include "platform/net/qt/MakeNetwork.h"
#include "platform/net/qt/QtNetwork.h"

extern "C" vintrace::Network* MakeModuleNetwork(const vintrace::WaitHooks& hooks) {
  return new vintrace::qt::QtNetwork(hooks);
}
