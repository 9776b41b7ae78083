#include "platform/process/Shell.h"

#include <string_view>

#include "platform/process/BundledParts.h"
#include "platform/process/posix/Process.h"
#include "platform/text/Exceptions.h"

namespace vintrace {
namespace {

/// The shell's own search path, if the environment has none.
constexpr std::string_view DefaultPath = "/usr/local/bin:/usr/bin:/bin";

void PutBundledCommandsFirst(posix::ProcessEnvironment& environment) {
  const String bundled = bundledParts::Folder();
  if (bundled.empty()) return;
  if (bundled.find(':') != String::npos) {  // It would be two folders of the search path.
    throw RuntimeException("The program lies in a folder with a colon in its path");
  }
  const String path = environment.Value("PATH");
  environment.Set("PATH", bundled + ':' + (path.empty() ? String(DefaultPath) : path));
}

}  // namespace

void Shell::Execute(const String& command) {
  posix::Command shell{.program = "/bin/sh", .arguments = {"sh", "-c", command}, .environment = {}};
  PutBundledCommandsFirst(shell.environment);
  errorCode_ = posix::AwaitEnd(posix::StartProcess(shell, posix::Session::Shared));
}

}  // namespace vintrace
