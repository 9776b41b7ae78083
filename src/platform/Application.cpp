#include "platform/Application.h"

#include "platform/ExceptionHandling.h"
#include "platform/VersionRecord.h"

namespace vintrace {

int Application::MajorVersion() const { return versionRecord::MajorVersion; }
int Application::MinorVersion() const { return versionRecord::MinorVersion; }
int Application::BugVersion() const { return versionRecord::BugVersion; }
String Application::LongVersion() const { return String(versionRecord::LongVersion); }

void Application::RaiseOpen() {
  _CallFunctionWithExceptionHandling([this] { Event_Open(); });
}

void Application::RaiseOpenDocument(const std::optional<FolderItem>& item) {
  _CallFunctionWithExceptionHandling([&] { Event_OpenDocument(item); });
}

}  // namespace vintrace
