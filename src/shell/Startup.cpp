#include "shell/Startup.h"

#include <exception>
#include <memory>
#include <utility>

#include "platform/text/Exceptions.h"
#include "platform/ui/Application.h"
#include "platform/ui/Host.h"
#include "shell/App.h"
#include "shell/FileTypes1.h"
#include "shell/MainMenuBar.h"

namespace vintrace {

void _Main() {
  _RuntimeSetExceptionHelper(_CallFunctionWithExceptionHandling);
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
  app->SetMenuBar(MainMenuBar::Instance());
  Host::Current()._RuntimeRegisterAppObject(std::move(app));
}

void _ApplicationAddMenuHandlers() {
  App& app = App::Instance();
  app.AddMenuHandler("hiraku", [&app] { return app._hiraku_Action(); });
  app.AddMenuHandler("kono", [&app] { return app._kono_Action(); });
  app.AddMenuHandler("upchk", [&app] { return app._upchk_Action(); });
  app.AddMenuHandler("EditAllCopy", [&app] { return app._EditAllCopy_Action(); });
  app.AddMenuHandler("AllClose", [&app] { return app._AllClose_Action(); });
}

void _LateStartup() {}

}  // namespace vintrace
