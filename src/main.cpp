#include "platform/net/qt/MakeNetwork.h"
#include "platform/process/posix/HardenProcess.h"
#include "platform/ui/qt/QtHost.h"
#include "platform/ui/qt/SingleInstance.h"
#include "resources/Pictures.h"
#include "shell/Startup.h"

int main(int argc, char* argv[]) {
  using namespace vintrace;
  posix::HardenProcess();
  const auto request = qt::StartRequestOf(argc, argv);
  qt::SingleInstance instance;
  if (instance.HandOver(request)) return 0;
  qt::QtHost host(argv);
  host.SetIcon(pictures::icon48);
  host.SetNetworkMaker(qt::MakeNetwork);
  host.Serve(instance);
  for (const FolderItem& document : request.documents) host.HandOver(document);
  _Main();
  return host.ExitStatus();
}
