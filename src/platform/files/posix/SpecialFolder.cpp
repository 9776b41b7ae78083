#include "platform/files/SpecialFolder.h"

#include <sys/stat.h>

#include "platform/files/posix/UserFolders.h"

namespace vintrace::SpecialFolder {
namespace {

bool IsFolder(const String& path) {
  struct stat status {};
  return stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

/// Creates `path` and the missing folders above it. True if it is a folder afterwards.
bool MakeFolder(const String& path) {
  for (auto slash = path.find('/', 1); slash != String::npos; slash = path.find('/', slash + 1)) {
    mkdir(path.substr(0, slash).c_str(), S_IRWXU);
  }
  mkdir(path.c_str(), S_IRWXU);
  return IsFolder(path);
}

#ifdef __APPLE__

std::optional<FolderItem> DataFolder() { return posix::InHome("Library/Application Support"); }

#else

std::optional<FolderItem> DataFolder() {
  const auto named = posix::FolderOf("XDG_DATA_HOME");
  return named ? named : posix::InHome(".local/share");
}

/// The folder in which Wine installs programs.
std::optional<FolderItem> WinePrograms() {
  const auto prefix = posix::DefaultWinePrefix();
  if (!prefix) return std::nullopt;
  const FolderItem programs = prefix->Child("drive_c/Program Files");
  return IsFolder(programs.NativePath()) ? std::optional(programs) : std::nullopt;
}

#endif

}  // namespace

std::optional<FolderItem> ApplicationData() {
  const auto folder = DataFolder();
  return folder && MakeFolder(folder->NativePath()) ? folder : std::nullopt;
}

FolderItem Applications() {
#ifdef __APPLE__
  return FolderItem("/Applications");
#else
  return WinePrograms().value_or(FolderItem("/usr/share/applications"));
#endif
}

}  // namespace vintrace::SpecialFolder
