#include "platform/linux/Bundle.h"

#include <plist/plist.h>

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string_view>

#include "platform/BinaryStream.h"
#include "platform/Exceptions.h"

namespace vintrace::open {
namespace {

constexpr std::int64_t LargestPropertyList = 1 << 20;
constexpr std::string_view BundleSuffix = ".app";

struct FreePropertyList {
  void operator()(void* list) const { plist_free(list); }
};
using PropertyList = std::unique_ptr<void, FreePropertyList>;

PropertyList Parsed(const String& bytes) {
  plist_t list = nullptr;
  const auto size = static_cast<std::uint32_t>(bytes.size());
  if (plist_is_binary(bytes.data(), size) != 0) {
    plist_from_bin(bytes.data(), size, &list);
  } else {
    plist_from_xml(bytes.data(), size, &list);
  }
  return PropertyList(list);
}

/// Empty when the list has no text under `key`.
String TextIn(const PropertyList& list, const char* key) {
  if (plist_get_node_type(list.get()) != PLIST_DICT) return {};
  plist_t node = plist_dict_get_item(list.get(), key);
  if (plist_get_node_type(node) != PLIST_STRING) return {};
  char* text = nullptr;
  plist_get_string_val(node, &text);
  const std::unique_ptr<char, decltype(&std::free)> owner(text, std::free);
  return text == nullptr ? String() : String(text);
}

String NameInPropertyList(const FolderItem& file) {
  try {
    auto stream = BinaryStream::Open(file);
    return TextIn(Parsed(stream.Read(LargestPropertyList)), "CFBundleExecutable");
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
