#include "platform/Shell.h"

#include <string_view>

#include "platform/Exceptions.h"
#include "platform/OwnParts.h"
#include "platform/posix/Process.h"

namespace vintrace {
namespace {

/// Where the shell looks for commands by itself when no one tells it.
constexpr std::string_view UsualPath = "/usr/local/bin:/usr/bin:/bin";

/// Our own commands are found before others of their names.
void PutOwnCommandsFirst(posix::ProcessEnvironment& environment) {
  const String own = ownParts::CommandFolder();
  if (own.empty()) return;
  if (own.find(':') != String::npos) {  // Which divides the folders of a search path.
    throw RuntimeException("The program lies in a folder with a colon in its path");
  }
  const String path = environment.Value("PATH");
  environment.Set("PATH", own + ':' + (path.empty() ? String(UsualPath) : path));
}

}  // namespace

void Shell::Execute(const String& command) {
  posix::Command shell{.program = "/bin/sh", .arguments = {"sh", "-c", command}, .environment = {}};
  PutOwnCommandsFirst(shell.environment);
  errorCode_ = posix::AwaitEnd(posix::StartProcess(shell, posix::Ties::Kept));
}

}  // namespace vintrace
