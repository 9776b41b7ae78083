#include "platform/files/posix/UserFolders.h"

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>

namespace vintrace::posix {

std::optional<FolderItem> FolderOf(const char* variable) {
  const char* path = std::getenv(variable);
  return path == nullptr ? std::nullopt : GetFolderItem(path, PathMode::Native);
}

namespace {

std::optional<FolderItem> Home() {
  if (auto home = FolderOf("HOME")) return home;
  const passwd* user = getpwuid(geteuid());
  return user == nullptr ? std::nullopt : GetFolderItem(user->pw_dir, PathMode::Native);
}

}  // namespace

std::optional<FolderItem> InHome(std::string_view path) {
  const auto home = Home();
  return home ? std::optional(home->Child(path)) : std::nullopt;
}

std::optional<FolderItem> DefaultWinePrefix() {
  const auto named = FolderOf("WINEPREFIX");
  return named ? named : InHome(".wine");
}

}  // namespace vintrace::posix
