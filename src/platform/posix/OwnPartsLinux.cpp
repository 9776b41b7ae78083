#include "platform/OwnParts.h"

#include <dlfcn.h>

#include <filesystem>
#include <system_error>

#include "platform/Exceptions.h"

namespace vintrace::ownParts {
namespace {

/// Empty when the folder isn't there.
String FolderBeside(const std::filesystem::path& program) {
  // Both relative to the program's own folder.
  for (const char* place : {VINTRACE_COMMANDS_WHEN_BUILT, VINTRACE_COMMANDS_WHEN_INSTALLED}) {
    std::error_code error;
    const auto folder = std::filesystem::canonical(program.parent_path() / place, error);
    if (!error) return folder.native();
  }
  return {};
}

}  // namespace

String CommandFolder() {
  std::error_code error;
  const auto program = std::filesystem::read_symlink("/proc/self/exe", error);
  String folder = error ? String() : FolderBeside(program);
  if (folder.empty()) throw RuntimeException("The program's own parts aren't beside it");
  return folder;
}

void* FunctionOf(const String& module, const String& name) {
  const String path = CommandFolder() + '/' + module;
  std::error_code error;
  // What is no file, such as a FIFO, might be waited for.
  if (!std::filesystem::is_regular_file(path, error)) {
    throw RuntimeException(module + " is missing");
  }
  void* handle = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
  void* function = handle == nullptr ? nullptr : dlsym(handle, name.c_str());
  if (function == nullptr) throw RuntimeException(dlerror());
  return function;
}

}  // namespace vintrace::ownParts
