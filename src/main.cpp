#include <utility>

#include "platform/InstanceChannel.h"
#include "platform/posix/SecureStart.h"
#include "platform/qt/QtHost.h"
#include "resources/Pictures.h"
#include "shell/Startup.h"

int main(int argc, char* argv[]) {
  using namespace vintrace;
  posix::SecureStart();
  const StartRequest start = StartRequestOf(argc, argv);
  auto seat = InstanceSeat::Take(start, ChannelPlace::OfThisDesktop());
  if (!seat) return 0;  // The program runs already, and has taken what this start brings.
  qt::QtHost host(argv);
  host.SetIcon(pictures::icon48);
  host.Serve(std::move(*seat));
  for (const FolderItem& document : start.documents) host.HandOver(document);
  _Main();
  return host.ExitStatus();
}
