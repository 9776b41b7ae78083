#include <unistd.h>

#include <cstdlib>
#include <filesystem>

#include "platform/InstanceChannel.h"
#include "platform/posix/RuntimeFolder.h"

namespace vintrace {
namespace {

#ifdef __APPLE__
constexpr const char* RuntimeVariable = "TMPDIR";
#else
constexpr const char* RuntimeVariable = "XDG_RUNTIME_DIR";
#endif

/// Empty when it isn't set.
String Variable(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? String() : value;
}

/// An X11 display without the number of a screen: ":0" and ":0.0" are one.
String WithoutScreen(const String& display) {
  const auto server = display.rfind(':');
  return server == String::npos ? display : display.substr(0, display.find('.', server));
}

}  // namespace

StartRequest StartRequestOf(int argc, char* argv[]) {
  std::error_code unknown;  // Leaves `folder` empty, and the paths as they came.
  const auto folder = std::filesystem::current_path(unknown).native();
  StartRequest request;
  for (int i = 1; i < argc; ++i) request.documents.push_back(ItemRelativeTo(folder, argv[i]));
  request.activationToken = Variable("XDG_ACTIVATION_TOKEN");
  request.startupId = Variable("DESKTOP_STARTUP_ID");
  return request;
}

ChannelPlace ChannelPlace::OfThisDesktop() {
  const String wayland = Variable("WAYLAND_DISPLAY");
  ChannelPlace place;
  place.folder = posix::RuntimeFolder(Variable(RuntimeVariable), "/tmp/vintrace-" + Str(geteuid()));
  place.name = posix::SocketName(wayland.empty() ? WithoutScreen(Variable("DISPLAY")) : wayland);
  return place;
}

}  // namespace vintrace
