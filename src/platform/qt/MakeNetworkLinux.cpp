// The libraries for the network are a dozen, and loading them would hold the first window up. They
// come with a module, which is loaded when the network is asked for first.

#include <QCoreApplication>
#include <QDir>
#include <QLibrary>

#include "platform/Exceptions.h"
#include "platform/Network.h"
#include "platform/qt/MakeNetwork.h"

namespace vintrace::qt {
namespace {

/// The module beside the program, in the build tree as when installed.
QString ModulePath() {
  const QDir folder(QCoreApplication::applicationDirPath());
  const QString built = folder.filePath(VINTRACE_COMMANDS_WHEN_BUILT "/network.so");
  return QFile::exists(built) ? built
                              : folder.filePath(VINTRACE_COMMANDS_WHEN_INSTALLED "/network.so");
}

ModuleNetworkMaker LoadMaker() {
  QLibrary module(ModulePath());
  const auto maker = reinterpret_cast<ModuleNetworkMaker>(module.resolve("MakeModuleNetwork"));
  if (maker == nullptr) throw RuntimeException(module.errorString().toStdString());
  return maker;
}

}  // namespace

std::unique_ptr<Network> MakeNetwork(const std::function<void(bool)>& waits) {
  static const ModuleNetworkMaker maker = LoadMaker();
  return std::unique_ptr<Network>(maker(waits));
}

}  // namespace vintrace::qt
