#include "platform/ui/Application.h"

#include "platform/text/Exceptions.h"
#include "platform/text/VersionRecord.h"
#include "platform/ui/Host.h"

namespace vintrace {

int Application::MajorVersion() const { return versionRecord::MajorVersion; }
int Application::MinorVersion() const { return versionRecord::MinorVersion; }
int Application::BugVersion() const { return versionRecord::BugVersion; }
String Application::LongVersion() const { return String(versionRecord::LongVersion); }

void Application::RaiseOpen() {
  _RuntimeCall([this] { Event_Open(); });
}

void Application::RaiseOpenDocument(const std::optional<FolderItem>& item) {
  _RuntimeCall([&] { Event_OpenDocument(item); });
}

void _CallFunctionWithExceptionHandling(const std::function<void()>& function) {
  try {
    function();
  } catch (const std::exception& exception) {
    _UnhandledException(exception);
  }
}

void _UnhandledException(const std::exception& exception) {
  Host::Current().ShowMessage(String("予期しないエラーが起こりました。")
                                  .append(EndOfLine)
                                  .append(OneLine(exception.what())));
}

}  // namespace vintrace
