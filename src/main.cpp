#include "platform/posix/StandardStreams.h"
#include "platform/qt/QtHost.h"
#include "resources/Pictures.h"
#include "shell/Startup.h"

int main(int argc, char* argv[]) {
  vintrace::posix::SecureStandardStreams();
  vintrace::qt::QtHost host(argc, argv);
  host.SetIcon(vintrace::pictures::icon48);
  vintrace::_Main();
  return host.ExitStatus();
}
