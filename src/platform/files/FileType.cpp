#include "platform/files/FileType.h"

#include <functional>
#include <map>
#include <sstream>

namespace vintrace {
namespace {

std::map<String, FileType, std::less<>>& Registry() {
  static std::map<String, FileType, std::less<>> registry;
  return registry;
}

}  // namespace

String FileType::Register() const {
  Registry().insert_or_assign(Name, *this);
  return Name;
}

std::vector<String> FileType::Suffixes() const {
  std::vector<String> suffixes;
  std::istringstream endings(Extensions);
  for (String ending; std::getline(endings, ending, ';');) suffixes.push_back(ending);
  return suffixes;
}

std::optional<FileType> FileType::Registered(std::string_view name) {
  const auto found = Registry().find(name);
  if (found == Registry().end()) return std::nullopt;
  return found->second;
}

}  // namespace vintrace
