#include "platform/process/BundledParts.h"

#include <dlfcn.h>

#include <filesystem>
#include <system_error>

#include "platform/text/Exceptions.h"

namespace vintrace::bundledParts {
namespace {

/// Empty if the folder doesn't exist.
String FolderBeside(const std::filesystem::path& program) {
  // Both are relative to the program's own folder.
  for (const char* place : {VINTRACE_PARTS_WHEN_BUILT, VINTRACE_PARTS_WHEN_INSTALLED}) {
    std::error_code error;
    const auto folder = std::filesystem::canonical(program.parent_path() / place, error);
    if (!error) return folder.native();
  }
  return {};
}

}  // namespace

String Folder() {
  std::error_code error;
  const auto program = std::filesystem::read_symlink("/proc/self/exe", error);
  String folder = error ? String() : FolderBeside(program);
  if (folder.empty()) throw RuntimeException("The program's own parts aren't beside it");
  return folder;
}

void* FunctionOf(const String& module, const String& name) {
  const String path = Folder() + '/' + module;
  std::error_code error;
  // The loader would wait for the other end of a FIFO.
  if (!std::filesystem::is_regular_file(path, error)) {
    throw RuntimeException(module + " is missing");
  }
  void* handle = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
  void* function = handle == nullptr ? nullptr : dlsym(handle, name.c_str());
  if (function == nullptr) throw RuntimeException(dlerror());
  return function;
}

}  // namespace vintrace::bundledParts
