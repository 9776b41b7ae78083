#include "shell/Startup.h"

#include <exception>
#include <memory>
#include <utility>

#include "platform/ExceptionHandling.h"
#include "platform/Host.h"
#include "resources/FileTypes1.h"
#include "shell/App.h"

namespace vintrace {

void _Main() {
  try {
    _EarlyStartup();
    _LateStartup();
    Host::Current().Run();
  } catch (const std::exception& exception) {
    _UnhandledException(exception);
    Host::Current().Quit(1);
  }
}

void _EarlyStartup() {
  _InitFileTypes();
  _NewAppInstance();
  _ApplicationAddMenuHandlers();
}

void _InitFileTypes() { FileTypes1::_Initialize(); }

void _NewAppInstance() {
  auto app = std::make_unique<App>();
  app->Constructor();
  Host::Current()._RuntimeRegisterAppObject(std::move(app));
}

void _ApplicationAddMenuHandlers() {}

void _LateStartup() {}

}  // namespace vintrace
