#include "platform/linux/Bundle.h"

#include <cstdint>
#include <string_view>

#include "platform/BinaryStream.h"
#include "platform/Exceptions.h"
#include "platform/linux/PropertyList.h"

namespace vintrace::open {
namespace {

constexpr std::int64_t LargestPropertyList = 1 << 20;
constexpr std::string_view BundleSuffix = ".app";

String NameInPropertyList(const FolderItem& file) {
  try {
    auto stream = BinaryStream::Open(file);
    return TextInPropertyList(stream.Read(LargestPropertyList), "CFBundleExecutable");
  } catch (const IOException&) {
    return {};
  }
}

bool IsLeafName(std::string_view name) {
  return !name.empty() && name != "." && name != ".." && name.find('/') == std::string_view::npos;
}

String OwnName(const FolderItem& bundle) {
  const String name = bundle.Name();
  return name.substr(0, name.size() - BundleSuffix.size());
}

}  // namespace

FolderItem ExecutableOfBundle(const FolderItem& bundle) {
  const FolderItem contents = bundle.Child("Contents");
  const String given = NameInPropertyList(contents.Child("Info.plist"));
  return contents.Child("MacOS").Child(IsLeafName(given) ? given : OwnName(bundle));
}

}  // namespace vintrace::open
