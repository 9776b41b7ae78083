#include "platform/qt/MakeNetwork.h"
#include "platform/qt/QtNetwork.h"

extern "C" vintrace::Network* MakeModuleNetwork(const vintrace::qt::WaitHooks& hooks) {
  return new vintrace::qt::QtNetwork(hooks);
}
