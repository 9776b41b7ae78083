#include "platform/ui/Application.h"

#include "platform/text/Exceptions.h"
#include "platform/text/VersionRecord.h"

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

}  // namespace vintrace
