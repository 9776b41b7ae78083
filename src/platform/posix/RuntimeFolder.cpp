#include "platform/posix/RuntimeFolder.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>

namespace vintrace::posix {
namespace {

bool IsPrivate(const String& folder) {
  struct stat status {};
  return lstat(folder.c_str(), &status) == 0 && S_ISDIR(status.st_mode) &&
         status.st_uid == geteuid() && (status.st_mode & (S_IRWXG | S_IRWXO)) == 0;
}

bool IsPlain(char byte) {
  constexpr std::string_view Plain =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-.:_";
  return Plain.find(byte) != std::string_view::npos;
}

}  // namespace

String RuntimeFolder(std::string_view preferred, const String& fallback) {
  // With a slash at its end, a link would be taken for the folder that it leads to.
  String folder(preferred.substr(0, preferred.find_last_not_of('/') + 1));
  if (folder.starts_with('/')) {
    // The toolkit makes it too if it isn't there, and then the next start would find it.
    mkdir(folder.c_str(), S_IRWXU);
    if (IsPrivate(folder)) return folder;
  }
  mkdir(fallback.c_str(), S_IRWXU);
  return IsPrivate(fallback) ? fallback : String();
}

String SocketName(std::string_view display) {
  String name("vintrace-");
  name += display;
  std::replace_if(
      name.begin(), name.end(), [](char byte) { return !IsPlain(byte); }, '_');
  return name;
}

}  // namespace vintrace::posix
