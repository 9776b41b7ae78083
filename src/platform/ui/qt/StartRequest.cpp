#include <QByteArray>
#include <filesystem>
#include <system_error>

#include "platform/ui/qt/SingleInstance.h"

namespace vintrace::qt {

StartRequest StartRequestOf(int argc, char* argv[]) {
  std::error_code unknown;  // Leaves `folder` empty, and the paths as they are.
  const auto folder = std::filesystem::current_path(unknown).native();
  StartRequest request;
  for (int i = 1; i < argc; ++i) {
    if (*argv[i] != '\0') request.documents.push_back(ItemRelativeTo(folder, argv[i]));
  }
  request.activation = {.token = qgetenv("XDG_ACTIVATION_TOKEN").toStdString(),
                        .startupId = qgetenv("DESKTOP_STARTUP_ID").toStdString()};
  return request;
}

}  // namespace vintrace::qt
